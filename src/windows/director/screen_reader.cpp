#include "windows/director/screen_reader.h"

#include <commctrl.h>

#include <algorithm>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "text/strings.h"
#include "windows/director/remote_window.h"

namespace windows {
namespace {

constexpr wchar_t kMainCaption[] = L"Korvell QM5R-FC PIR Configure";
constexpr wchar_t kLogCaption[] = L"Network activity logging";
constexpr wchar_t kSurfaceClass[] = L"FormSurface";

struct Element {
  HWND window = nullptr;
  RECT place{};
  std::string text;
};

DWORD ButtonTypeOf(HWND window) {
  return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)) & BS_TYPEMASK;
}

bool IsFrame(HWND window) { return Is(window, L"Button") && ButtonTypeOf(window) == BS_GROUPBOX; }

std::string ButtonText(HWND window) {
  const std::string caption = text::WithoutAccelerator(TextOf(window));
  const bool disabled = (GetWindowLongW(window, GWL_STYLE) & WS_DISABLED) != 0;
  const bool checked = SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED;
  switch (ButtonTypeOf(window)) {
    case BS_AUTORADIOBUTTON:
    case BS_RADIOBUTTON:
      return (checked ? "(x) " : "( ) ") + caption;
    case BS_AUTOCHECKBOX:
    case BS_CHECKBOX:
      return (checked ? "[x] " : "[ ] ") + caption;
    default:
      return "<" + caption + (disabled ? ", disabled>" : ">");
  }
}

std::optional<std::string> TextShown(HWND window) {
  if (Is(window, L"Button")) return ButtonText(window);
  if (Is(window, L"Static")) {
    const bool data = (GetWindowLongW(window, GWL_STYLE) & SS_NOPREFIX) != 0;
    return data ? TextOf(window) : text::WithoutAccelerator(TextOf(window));
  }
  if (Is(window, L"Edit") || Is(window, L"ComboBox")) return TextOf(window);
  return std::nullopt;
}

bool HidesItself(HWND window) { return !(GetWindowLongW(window, GWL_STYLE) & WS_VISIBLE); }

bool Contains(const RECT& outer, const RECT& inner) {
  return outer.left <= inner.left && outer.top <= inner.top && outer.right >= inner.right &&
         outer.bottom >= inner.bottom;
}

/// Prints each group of elements that are side by side as one line, from left to right.
void PrintLines(std::vector<Element> elements, const std::string& indent, std::ostream& out) {
  std::ranges::stable_sort(elements, {}, [](const Element& e) { return (e.place.top + e.place.bottom) / 2; });
  while (!elements.empty()) {
    const LONG middle = (elements[0].place.top + elements[0].place.bottom) / 2;
    const auto beside = [middle](const Element& e) {
      return e.place.top <= middle && e.place.bottom >= middle;
    };
    const auto rest = std::stable_partition(elements.begin(), elements.end(), beside);
    std::sort(elements.begin(), rest,
              [](const Element& a, const Element& b) { return a.place.left < b.place.left; });
    out << indent;
    for (auto at = elements.begin(); at != rest; ++at)
      out << (at == elements.begin() ? "" : "\t") << at->text;
    out << '\n';
    elements.erase(elements.begin(), rest);
  }
}

/// A window's children, divided into frames and other elements.
struct Panel {
  std::vector<Element> frames;
  std::vector<Element> elements;
};

Panel PanelOf(HWND parent) {
  Panel panel;
  for (HWND child : ChildrenOf(parent)) {
    if (HidesItself(child)) continue;
    Element element{child, {}, {}};
    GetWindowRect(child, &element.place);
    if (IsFrame(child)) {
      element.text = text::WithoutAccelerator(TextOf(child));
      panel.frames.push_back(element);
    } else if (const auto text = TextShown(child)) {
      element.text = *text;
      panel.elements.push_back(element);
    }
  }
  return panel;
}

/// The innermost frame around an element; -1 for none.
int FrameAround(const Panel& panel, const Element& element) {
  int found = -1;
  for (int i = 0; i < static_cast<int>(panel.frames.size()); ++i) {
    const Element& frame = panel.frames[static_cast<std::size_t>(i)];
    if (frame.window == element.window || !Contains(frame.place, element.place)) continue;
    if (found < 0 || Contains(panel.frames[static_cast<std::size_t>(found)].place, frame.place)) found = i;
  }
  return found;
}

void PrintInside(const Panel& panel, int frame, const std::string& indent, std::ostream& out) {
  std::vector<Element> own;
  for (const Element& element : panel.elements)
    if (FrameAround(panel, element) == frame) own.push_back(element);
  PrintLines(std::move(own), indent, out);
  for (int i = 0; i < static_cast<int>(panel.frames.size()); ++i) {
    const Element& inner = panel.frames[static_cast<std::size_t>(i)];
    if (FrameAround(panel, inner) != frame) continue;
    out << indent << '[' << inner.text << "]\n";
    PrintInside(panel, i, indent + "  ", out);
  }
}

void PrintPlace(HWND window, std::ostream& out) {
  // The plug-in creates a page only when it is first shown.
  SendMessageW(window, RegisterWindowMessageW(L"FormSurface.MakeAllWindows"), 0, 0);
  RECT place{};
  GetWindowRect(window, &place);
  out << "window\t" << TextOf(window) << "\nbounds\t" << place.right - place.left << 'x'
      << place.bottom - place.top << (place.left < 0 ? "" : "+") << place.left << (place.top < 0 ? "" : "+")
      << place.top << '\n';
}

/// The pages of a tab control are its children, in the order of the tabs.
void PrintPages(HWND window, std::ostream& out) {
  for (HWND tab : ChildrenOf(window)) {
    if (!Is(tab, WC_TABCONTROLW)) continue;
    const std::vector<std::string> captions = TabCaptions(tab);
    std::size_t page = 0;
    for (HWND child : ChildrenOf(tab)) {
      if (!Is(child, kSurfaceClass) || page >= captions.size()) continue;
      out << "page\t" << text::WithoutAccelerator(captions[page++]) << '\n';
      PrintInside(PanelOf(child), -1, "  ", out);
    }
  }
}

void PrintBars(HWND window, std::ostream& out) {
  for (HWND child : ChildrenOf(window)) {
    if (!Is(child, STATUSCLASSNAMEW)) continue;
    for (const std::string& text : StatusTexts(child)) out << "status\t" << text << '\n';
  }
}

void PrintLists(HWND window, std::ostream& out) {
  for (HWND child : ChildrenOf(window)) {
    if (!Is(child, WC_LISTVIEWW)) continue;
    for (const auto& row : ListRows(child)) {
      out << "row";
      for (const std::string& cell : row) out << '\t' << cell;
      out << '\n';
    }
  }
}

/// The form that is shown over the main window; null if none is.
HWND FormOver(HWND main) {
  for (HWND form = nullptr; (form = FindWindowExW(nullptr, form, kSurfaceClass, nullptr));)
    if (GetWindow(form, GW_OWNER) == main && IsWindowVisible(form)) return form;
  return nullptr;
}

}  // namespace

bool PrintScreen(std::ostream& out) {
  const HWND main = FindWindowW(kSurfaceClass, kMainCaption);
  if (!main || !IsWindowVisible(main)) return false;
  PrintPlace(main, out);
  PrintInside(PanelOf(main), -1, "  ", out);
  PrintPages(main, out);
  PrintBars(main, out);
  if (const HWND form = FormOver(main)) {
    PrintPlace(form, out);
    PrintInside(PanelOf(form), -1, "  ", out);
    PrintLists(form, out);
  }
  if (const HWND log = FindWindowW(kSurfaceClass, kLogCaption)) {
    PrintPlace(log, out);
    PrintLists(log, out);
  }
  return true;
}

DWORD PlugInProcess() {
  DWORD process = 0;
  GetWindowThreadProcessId(FindWindowW(kSurfaceClass, kMainCaption), &process);
  return process;
}

bool CloseWindow() {
  const HWND main = FindWindowW(kSurfaceClass, kMainCaption);
  return main && IsWindowVisible(main) && PostMessageW(main, WM_CLOSE, 0, 0);
}

}  // namespace windows
