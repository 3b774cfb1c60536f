#pragma once

#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "automation/published.h"
#include "windows/com/home_thread.h"
#include "windows/com/implements.h"

namespace windows::com {

/// "For Each" over a published collection: Item(1) to Item(Count), each read when the client reaches it.
/// Items removed meanwhile shorten the walk.
class CollectionEnumerator final : public Implements<IEnumVARIANT> {
 public:
  explicit CollectionEnumerator(std::shared_ptr<automation::Published> collection, std::int32_t passed = 0)
      : collection_(std::move(collection)), passed_(passed) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* items, ULONG* fetched) override;
  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override;
  HRESULT STDMETHODCALLTYPE Reset() override;
  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override;

 private:
  std::int32_t Count() const;

  ServerUse use_;
  std::shared_ptr<automation::Published> collection_;
  std::int32_t passed_;
};

// IDispatch for a published object. These calls never throw.

/// IDispatch::GetIDsOfNames. Only the first name can be found: members have no named parameters.
HRESULT FindNumbers(const automation::Published& object, LPOLESTR* names, UINT count,
                    DISPID* numbers) noexcept;

/// IDispatch::Invoke.
HRESULT CallPublished(const std::shared_ptr<automation::Published>& object, DISPID number, REFIID id,
                      WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                      UINT* bad_argument) noexcept;

}  // namespace windows::com
