#include "windows/com/former_key.h"

#include <utility>

#include "windows/com/registry_key.h"

namespace windows::com {

FormerKey::FormerKey(std::wstring path) : path_(std::move(path)), former_(Read(HKEY_LOCAL_MACHINE, path_)) {}

void FormerKey::PutBack() const {
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, path_.c_str());
  if (former_) Write(HKEY_LOCAL_MACHINE, *former_);
}

std::optional<FormerKey::Branch> FormerKey::Read(HKEY parent, const std::wstring& name) {
  HKEY opened = nullptr;
  if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &opened) != ERROR_SUCCESS) return std::nullopt;
  const Key key(opened);
  DWORD longest_key = 0, longest_name = 0, longest_data = 0;
  RegQueryInfoKeyW(opened, nullptr, nullptr, nullptr, nullptr, &longest_key, nullptr, nullptr, &longest_name,
                   &longest_data, nullptr, nullptr);
  Branch branch{name, {}, {}};
  for (DWORD index = 0;; ++index) {
    Branch::Value value{std::wstring(longest_name + 1, L'\0'), REG_NONE, std::vector<BYTE>(longest_data)};
    DWORD length = longest_name + 1, size = longest_data;
    if (RegEnumValueW(opened, index, value.name.data(), &length, nullptr, &value.type, value.data.data(),
                      &size) != ERROR_SUCCESS)
      break;
    value.name.resize(length);
    value.data.resize(size);
    branch.values.push_back(std::move(value));
  }
  for (DWORD index = 0;; ++index) {
    std::wstring below(longest_key + 1, L'\0');
    DWORD length = longest_key + 1;
    if (RegEnumKeyExW(opened, index, below.data(), &length, nullptr, nullptr, nullptr, nullptr) !=
        ERROR_SUCCESS)
      break;
    below.resize(length);
    if (auto held = Read(opened, below)) branch.below.push_back(std::move(*held));
  }
  return branch;
}

void FormerKey::Write(HKEY parent, const Branch& branch) {
  HKEY made = nullptr;
  if (RegCreateKeyExW(parent, branch.name.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &made, nullptr) !=
      ERROR_SUCCESS)
    return;
  const Key key(made);
  for (const auto& [value_name, type, data] : branch.values)
    RegSetValueExW(made, value_name.c_str(), 0, type, data.data(), static_cast<DWORD>(data.size()));
  for (const Branch& below : branch.below) Write(made, below);
}

}  // namespace windows::com
