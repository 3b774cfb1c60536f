#include "windows/com/collection_enumerator.h"

#include <algorithm>

#include "automation/convert.h"
#include "windows/com/com_ptr.h"
#include "windows/com/failure.h"
#include "windows/com/variant_conversion.h"

namespace windows::com {

HRESULT CollectionEnumerator::Next(ULONG wanted, VARIANT* items, ULONG* fetched) {
  if (!items) return E_POINTER;
  const std::int32_t start = passed_;
  ULONG count = 0;
  try {
    for (; count < wanted && passed_ < Count(); ++count) {
      const platform::Value index = passed_ + 1;
      items[count] =
          ToVariant(collection_->Invoke({"Item"}, platform::CallKind::GetOrMethod, {&index, 1})).Detach();
      ++passed_;
    }
  } catch (...) {
    while (count > 0) VariantClear(&items[--count]);
    passed_ = start;
    if (fetched) *fetched = 0;
    return ReportAsResult();
  }
  if (fetched) *fetched = count;
  return count == wanted ? S_OK : S_FALSE;
}

HRESULT CollectionEnumerator::Skip(ULONG count) try {
  const auto left = static_cast<ULONG>(std::max(0, Count() - passed_));
  passed_ += static_cast<std::int32_t>(std::min(count, left));
  return count <= left ? S_OK : S_FALSE;
} catch (...) {
  return ReportAsResult();
}

HRESULT CollectionEnumerator::Reset() {
  passed_ = 0;
  return S_OK;
}

HRESULT CollectionEnumerator::Clone(IEnumVARIANT** copy) try {
  if (!copy) return E_POINTER;
  *copy = Make<CollectionEnumerator>(collection_, passed_).Detach();
  return S_OK;
} catch (...) {
  return ReportAsResult();
}

std::int32_t CollectionEnumerator::Count() const {
  return automation::ToInteger(collection_->Invoke({"Count"}, platform::CallKind::GetOrMethod, {}));
}

}  // namespace windows::com
