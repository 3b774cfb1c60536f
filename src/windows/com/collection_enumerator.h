#pragma once

#include <windows.h>

#include <oaidl.h>

#include <memory>

#include "automation/published.h"
#include "windows/com/implements.h"
#include "windows/com/server_use.h"

namespace windows::com {

/// "For Each" over a published collection: Item(1) to Item(Count), asked for as the client gets there. An
/// item that is removed meanwhile shortens the walk.
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

}  // namespace windows::com
