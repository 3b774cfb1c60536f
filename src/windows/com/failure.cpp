#include "windows/com/failure.h"

#include <array>
#include <charconv>

namespace windows::com {
namespace {

std::string Hexadecimal(HRESULT result) {
  std::array<char, 8> digits;
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), static_cast<std::uint32_t>(result), 16);
  return "0x" + std::string(digits.data(), end.ptr);
}

/// Without DISP_E_EXCEPTION, which only announces an EXCEPINFO.
bool IsRefusal(HRESULT result) {
  return result >= DISP_E_UNKNOWNINTERFACE && result <= DISP_E_BUFFERTOOSMALL && result != DISP_E_EXCEPTION;
}

HRESULT ResultOf(std::int32_t number) {
  if (number < 0) return number;
  return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number & 0xFFFF);
}

void FillErrorObject(const platform::Error& error, REFIID interface_id) {
  ComPtr<ICreateErrorInfo> info;
  Check(CreateErrorInfo(info.Receive()));
  info->SetGUID(interface_id);
  info->SetSource(ToWide(error.source()).data());
  info->SetDescription(ToWide(error.description()).data());
  Check(SetErrorInfo(0, info.As<IErrorInfo>().get()));
}

}  // namespace

std::string SystemText(HRESULT result) {
  std::array<wchar_t, 512> buffer;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
      static_cast<DWORD>(result), 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
  std::wstring_view text(buffer.data(), length);
  while (text.ends_with(L' ')) text.remove_suffix(1);
  return text.empty() ? "Automation error " + Hexadecimal(result) + "." : ToUtf8(text);
}

void Check(HRESULT result, std::string_view attempt) {
  if (SUCCEEDED(result)) return;
  std::string text = SystemText(result);
  if (!attempt.empty()) text = std::string(attempt) + ": " + text;
  throw platform::Error(result, std::string(kAutomation), text);
}

platform::Error CallError(HRESULT result, const ExceptionInfo& info) {
  if (result != DISP_E_EXCEPTION) return {result, std::string(kAutomation), SystemText(result)};
  // An object may supply a function that fills in the rest later. It is never called, because its address is
  // meaningless if the object is in another process.
  std::int32_t number = info->wCode ? info->wCode : info->scode;
  if (number == 0) number = result;
  if (HRESULT_SEVERITY(number) && HRESULT_FACILITY(number) == FACILITY_CONTROL) number = HRESULT_CODE(number);
  std::string description = TextOf(info->bstrDescription);
  if (description.empty()) description = SystemText(number);
  return {number, TextOf(info->bstrSource), std::move(description)};
}

platform::Error CaughtError() {
  const std::string source(kAutomation);
  try {
    throw;
  } catch (const platform::Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return {E_OUTOFMEMORY, source, "Out of memory."};
  } catch (const std::exception& error) {
    return {E_FAIL, source, error.what()};
  } catch (...) {
    return {E_FAIL, source, "Unknown failure."};
  }
}

HRESULT ReportToInvoke(EXCEPINFO* info) noexcept try {
  const platform::Error error = CaughtError();
  if (IsRefusal(error.number())) return error.number();
  if (info) {
    *info = {};
    // The number is in scode, as some clients ignore wCode. A small number gets the facility of controls:
    // scripts and Visual Basic show it unchanged, and a number that is not a failure would confuse other
    // clients.
    info->scode = error.number() ? ResultOf(error.number()) : E_FAIL;
    Bstr source(error.source());
    info->bstrDescription = Bstr(error.description()).Detach();
    info->bstrSource = source.Detach();
  }
  return DISP_E_EXCEPTION;
} catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT ReportAsResult() noexcept try { return ResultOf(CaughtError().number()); } catch (...) {
  return E_OUTOFMEMORY;
}

HRESULT ReportToInterface(REFIID interface_id) noexcept try {
  const platform::Error error = CaughtError();
  FillErrorObject(error, interface_id);
  return ResultOf(error.number());
} catch (...) {
  return E_OUTOFMEMORY;
}

}  // namespace windows::com
