#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace windows::com {

/// What a key of the machine held with all below it when this was made, to be put back when a registration
/// fails half-way.
class FormerKey {
 public:
  /// The path below HKEY_LOCAL_MACHINE.
  explicit FormerKey(std::wstring path);

  bool existed() const { return former_.has_value(); }
  /// Puts back what can be; a key that was not there goes.
  void PutBack() const;

 private:
  struct Branch {
    struct Value {
      std::wstring name;
      DWORD type;
      std::vector<BYTE> data;
    };
    std::wstring name;
    std::vector<Value> values;
    std::vector<Branch> below;
  };
  static std::optional<Branch> Read(HKEY parent, const std::wstring& name);
  static void Write(HKEY parent, const Branch& branch);

  std::wstring path_;
  std::optional<Branch> former_;
};

}  // namespace windows::com
