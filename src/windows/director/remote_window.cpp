#include "windows/director/remote_window.h"

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <iostream>

#include "director/configure.h"
#include "windows/com/wide_text.h"
#include "windows/director/screen_reader.h"

namespace windows {
namespace {

constexpr std::size_t kTextLength = 1024;

/// Memory in the process that owns a window, for messages whose parameters are addresses.
class RemoteMemory {
 public:
  RemoteMemory(HWND window, std::size_t size) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process);
    if (process_)
      address_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE);
  }
  ~RemoteMemory() {
    if (address_) VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
    if (process_) CloseHandle(process_);
  }
  RemoteMemory(const RemoteMemory&) = delete;
  RemoteMemory& operator=(const RemoteMemory&) = delete;

  void* At(std::size_t offset) const { return static_cast<char*>(address_) + offset; }
  LPARAM Parameter() const { return reinterpret_cast<LPARAM>(address_); }
  template <class T>
  void Write(const T& value) const {
    WriteProcessMemory(process_, address_, &value, sizeof value, nullptr);
  }
  std::string Text(std::size_t offset) const {
    std::array<wchar_t, kTextLength> text{};
    ReadProcessMemory(process_, At(offset), text.data(), sizeof text - sizeof(wchar_t), nullptr);
    return windows::ToUtf8(text.data());
  }

 private:
  HANDLE process_ = nullptr;
  void* address_ = nullptr;
};

template <class Item>
constexpr std::size_t kRemoteSize = sizeof(Item) + kTextLength * sizeof(wchar_t);

/// The text of a list item or tab.
template <class Item>
std::string ItemText(HWND window, const RemoteMemory& memory, UINT message, int index, Item item) {
  item.pszText = static_cast<wchar_t*>(memory.At(sizeof item));
  item.cchTextMax = kTextLength;
  memory.Write(item);
  SendMessageW(window, message, static_cast<WPARAM>(index), memory.Parameter());
  return memory.Text(sizeof item);
}

std::string ListCell(HWND list, const RemoteMemory& memory, int row, int column) {
  LVITEMW item{};
  item.iSubItem = column;
  return ItemText(list, memory, LVM_GETITEMTEXTW, row, item);
}

using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(4);
constexpr auto kPoll = std::chrono::milliseconds(40);

HWND BoxOf(DWORD process) {
  for (HWND box = nullptr; (box = FindWindowExW(nullptr, box, L"#32770", nullptr));) {
    DWORD owner = 0;
    GetWindowThreadProcessId(box, &owner);
    if (owner == process && IsWindowVisible(box)) return box;
  }
  return nullptr;
}

/// One message box while it is open.
class OpenBox {
 public:
  explicit OpenBox(HWND window) : window_(window), title_(TextOf(window)) {
    for (HWND child : ChildrenOf(window)) {
      if (Is(child, L"Button") && IsWindowVisible(child)) buttons_.push_back(GetDlgCtrlID(child));
      if (Is(child, L"Static") && text_.empty()) text_ = TextOf(child);
    }
  }

  HWND window() const { return window_; }
  director::Box box() const { return {title_, text_, buttons_}; }

  void Respond(std::optional<bool> answer) {
    const bool due = answer || Clock::now() - since_ > kPatience;
    if (due && !reported_) std::cerr << director::Report(box(), answer) << std::flush;
    reported_ = reported_ || due;
    if (!answer) return;
    // Repeated, as a new box may not accept messages yet.
    const int button = box().ButtonFor(*answer);
    PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(GetDlgItem(window_, button)));
  }

 private:
  HWND window_;
  std::string title_, text_;
  std::vector<int> buttons_;
  Clock::time_point since_ = Clock::now();
  bool reported_ = false;
};

}  // namespace

std::string TextOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(SendMessageW(window, WM_GETTEXTLENGTH, 0, 0)) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return windows::ToUtf8(text);
}

std::wstring ClassOf(HWND window) {
  std::array<wchar_t, 80> name{};
  GetClassNameW(window, name.data(), static_cast<int>(name.size()));
  return name.data();
}

bool Is(HWND window, const wchar_t* class_name) {
  return lstrcmpiW(ClassOf(window).c_str(), class_name) == 0;
}

std::vector<HWND> ChildrenOf(HWND window) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(window, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    children.push_back(child);
  return children;
}

std::vector<std::string> TabCaptions(HWND tab) {
  const RemoteMemory memory(tab, kRemoteSize<TCITEMW>);
  std::vector<std::string> captions;
  const auto count = static_cast<int>(SendMessageW(tab, TCM_GETITEMCOUNT, 0, 0));
  for (int i = 0; i < count; ++i) {
    TCITEMW item{};
    item.mask = TCIF_TEXT;
    captions.push_back(ItemText(tab, memory, TCM_GETITEMW, i, item));
  }
  return captions;
}

std::vector<std::string> StatusTexts(HWND status_bar) {
  std::vector<std::string> texts;
  const auto count = static_cast<int>(SendMessageW(status_bar, SB_GETPARTS, 0, 0));
  for (int i = 0; i < count; ++i) {
    // SB_GETTEXTW does not limit the length.
    const std::size_t length = LOWORD(SendMessageW(status_bar, SB_GETTEXTLENGTHW, static_cast<WPARAM>(i), 0));
    const RemoteMemory memory(status_bar, std::max(kTextLength, length + 1) * sizeof(wchar_t));
    SendMessageW(status_bar, SB_GETTEXTW, static_cast<WPARAM>(i), memory.Parameter());
    texts.push_back(memory.Text(0));
  }
  return texts;
}

std::vector<std::vector<std::string>> ListRows(HWND list) {
  const RemoteMemory memory(list, kRemoteSize<LVITEMW>);
  const auto header = reinterpret_cast<HWND>(SendMessageW(list, LVM_GETHEADER, 0, 0));
  const auto columns = static_cast<int>(SendMessageW(header, HDM_GETITEMCOUNT, 0, 0));
  const auto count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
  std::vector<std::vector<std::string>> rows;
  for (int row = 0; row < count; ++row) {
    rows.emplace_back();
    for (int column = 0; column < columns; ++column)
      rows.back().push_back(ListCell(list, memory, row, column));
  }
  return rows;
}

BoxWatch::BoxWatch(std::optional<bool> answer) : answer_(answer), thread_([this] { Watch(); }) {}

BoxWatch::~BoxWatch() {
  ended_ = true;
  thread_.join();
}

void BoxWatch::Watch() {
  std::optional<OpenBox> open;
  for (; !ended_; std::this_thread::sleep_for(kPoll)) {
    const DWORD process = PlugInProcess();
    const HWND box = process ? BoxOf(process) : nullptr;
    if (!box) {
      open.reset();
      continue;
    }
    if (!open || open->window() != box) open.emplace(box);
    if (!open->box().IsQuestion() || answer_ == false) saw_failure_ = true;
    open->Respond(answer_);
  }
}

}  // namespace windows
