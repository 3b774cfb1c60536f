#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>
#include <string_view>

#include "platform/error.h"
#include "windows/com/owners.h"

/// Converts errors to and from results and EXCEPINFO.
namespace windows::com {

/// The source of errors without an object's own source.
inline constexpr std::string_view kAutomation = "Automation";

/// The system's text for a result, or the number if it has none.
std::string SystemText(HRESULT result);

/// Throws a failure as an Error with the system's text, prefixed with `attempt` if it is given.
void Check(HRESULT result, std::string_view attempt = {});

/// The error of a failed Invoke: the object's own if it supplied one, otherwise the result's.
platform::Error CallError(HRESULT result, const ExceptionInfo& info);

/// The exception being handled, whatever its type. Call it in a catch clause.
platform::Error CaughtError();

// Numbers that are not failure results (20003) are sent in the facility of controls (0x800A4E23), as by
// Visual Basic's classes, and arrive unchanged.

/// Reports the exception being handled to a late-bound caller. Automation's own refusals become the result,
/// all other numbers an exception. `info` may be null.
HRESULT ReportToInvoke(EXCEPINFO* info) noexcept;

/// Reports the exception being handled to a caller that sees only a result.
HRESULT ReportAsResult() noexcept;

/// The same with the text in the thread's error object, for callers of the interface's own methods.
HRESULT ReportToInterface(REFIID interface_id) noexcept;

}  // namespace windows::com
