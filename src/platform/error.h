#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace platform {

/// An error as in automation: a number, the name of what raised it, and a text for people.
///
/// The COM adapters create one from an HRESULT and EXCEPINFO, and convert one that leaves an automation
/// object back. Our own code throws it for numbered refusals.
class Error : public std::exception {
 public:
  /// `cause` is the text of the error that this one replaces, for the log.
  Error(std::int32_t number, std::string source, std::string description, std::string cause = {})
      : number_(number),
        source_(std::move(source)),
        description_(std::move(description)),
        cause_(std::move(cause)) {}

  std::int32_t number() const noexcept { return number_; }
  const std::string& source() const noexcept { return source_; }
  const std::string& description() const noexcept { return description_; }
  const std::string& cause() const noexcept { return cause_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string source_;
  std::string description_;
  std::string cause_;
};

/// The object server's own errors: 0x80040000 plus the platform's 16-bit code.
constexpr std::int32_t kObjectServerErrorBase = static_cast<std::int32_t>(0x80040000u);
constexpr std::int32_t ObjectServerError(std::uint16_t code) { return kObjectServerErrorBase + code; }

/// Automation's own refusals of members and arguments: the system's DISP_E_ numbers.
constexpr std::int32_t kUnknownInterface = static_cast<std::int32_t>(0x80020001u);
constexpr std::int32_t kMemberNotFound = static_cast<std::int32_t>(0x80020003u);
constexpr std::int32_t kTypeMismatch = static_cast<std::int32_t>(0x80020005u);
constexpr std::int32_t kUnknownName = static_cast<std::int32_t>(0x80020006u);
constexpr std::int32_t kOverflow = static_cast<std::int32_t>(0x8002000Au);
constexpr std::int32_t kBadIndex = static_cast<std::int32_t>(0x8002000Bu);
constexpr std::int32_t kBadArgumentCount = static_cast<std::int32_t>(0x8002000Eu);

// Named ways to handle a step that may fail; activity::LogAndGoOn is the third. If a failure must stop the
// procedure, use none of them.

/// For a step that nothing else depends on.
template <class Step>
void IgnoreFailure(Step&& step) noexcept {
  try {
    std::forward<Step>(step)();
  } catch (const std::exception&) {
    // Ignored on purpose.
  }
}

/// What `read` returns, or `otherwise` if it fails.
template <class Value, class Read>
Value ValueOr(Value otherwise, Read&& read) noexcept {
  try {
    return std::forward<Read>(read)();
  } catch (const std::exception&) {
    return otherwise;
  }
}

}  // namespace platform
