#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>
#include <string_view>

#include "platform/error.h"
#include "windows/com/owners.h"

/// Raised errors on one side, results and EXCEPINFO on the other.
namespace windows::com {

/// The source of errors that no object has raised under its own name.
inline constexpr std::string_view kAutomation = "Automation";

/// The system's text for a result; where it has none, the number.
std::string SystemText(HRESULT result);

/// Throws the failure as an Error with the system's text, after what was attempted where that is given.
void Check(HRESULT result, std::string_view attempt = {});

/// The error of a failed Invoke: the object's own where it filled one in, else that of the result.
platform::Error CallError(HRESULT result, const ExceptionInfo& info);

/// The exception that is being handled, whatever its type; to be called in a catch clause.
platform::Error CaughtError();

// Numbers that are no failure result by themselves (20003) go out in the facility of controls (0x800A4E23),
// as Visual Basic's classes do it, and come in again as they were.

/// Reports the exception being handled to a late-bound caller. Automation's own refusals are the result;
/// every other number goes out as an exception whose `info` may be null.
HRESULT ReportToInvoke(EXCEPINFO* info) noexcept;

/// Reports the exception being handled to a caller that only sees a result.
HRESULT ReportAsResult() noexcept;

/// The same with the text as the thread's error object, for callers of the interface's own methods.
HRESULT ReportToInterface(REFIID interface_id) noexcept;

}  // namespace windows::com
