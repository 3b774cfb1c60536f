#pragma once

#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "automation/published.h"

/// IDispatch spoken for a published object. Nothing that the object throws comes through.
namespace windows::com {

/// IDispatch::GetIDsOfNames. Only the first name can be known: members have no named parameters.
HRESULT FindNumbers(const automation::Published& object, LPOLESTR* names, UINT count,
                    DISPID* numbers) noexcept;

/// IDispatch::Invoke.
HRESULT CallPublished(const std::shared_ptr<automation::Published>& object, DISPID number, REFIID id,
                      WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                      UINT* bad_argument) noexcept;

}  // namespace windows::com
