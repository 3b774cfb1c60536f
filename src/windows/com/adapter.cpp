#include "windows/com/adapter.h"

#include <olectl.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "automation/convert.h"
#include "text/strings.h"
#include "windows/com/failure.h"
#include "windows/com/variant_conversion.h"
#include "windows/com/wide_text.h"

namespace windows::com {

namespace {

/// "For Each" over a published collection: Item(1) to Item(Count), each read when the client reaches it. If
/// items are removed meanwhile, there are fewer steps.
class CollectionEnumerator final : public Implements<IEnumVARIANT> {
 public:
  explicit CollectionEnumerator(std::shared_ptr<automation::Published> collection, std::int32_t passed = 0)
      : collection_(std::move(collection)), passed_(passed) {}

  HRESULT STDMETHODCALLTYPE Next(ULONG wanted, VARIANT* items, ULONG* fetched) override {
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

  HRESULT STDMETHODCALLTYPE Skip(ULONG count) override try {
    const auto left = static_cast<ULONG>(std::max(0, Count() - passed_));
    passed_ += static_cast<std::int32_t>(std::min(count, left));
    return count <= left ? S_OK : S_FALSE;
  } catch (...) {
    return ReportAsResult();
  }

  HRESULT STDMETHODCALLTYPE Reset() override {
    passed_ = 0;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Clone(IEnumVARIANT** copy) override try {
    if (!copy) return E_POINTER;
    *copy = Make<CollectionEnumerator>(collection_, passed_).Detach();
    return S_OK;
  } catch (...) {
    return ReportAsResult();
  }

 private:
  std::int32_t Count() const {
    return automation::ToInteger(collection_->Invoke({"Count"}, platform::CallKind::GetOrMethod, {}));
  }

  ServerUse use_;
  std::shared_ptr<automation::Published> collection_;
  std::int32_t passed_;
};

using platform::CallKind;

std::optional<CallKind> KindOf(WORD flags) {
  // If the caller allows both kinds of put, the plain one is used.
  if (flags & DISPATCH_PROPERTYPUT) return CallKind::Put;
  if (flags & DISPATCH_PROPERTYPUTREF) return CallKind::PutReference;
  const bool get = (flags & DISPATCH_PROPERTYGET) != 0;
  const bool method = (flags & DISPATCH_METHOD) != 0;
  if (get && method) return CallKind::GetOrMethod;
  if (get) return CallKind::Get;
  if (method) return CallKind::Method;
  return std::nullopt;
}

/// Only a put's new value may be a named argument.
bool HasNamedArguments(const DISPPARAMS& parameters, CallKind kind) {
  const bool put = kind == CallKind::Put || kind == CallKind::PutReference;
  if (parameters.cNamedArgs == 0) return false;
  return !put || parameters.cNamedArgs > 1 || parameters.rgdispidNamedArgs[0] != DISPID_PROPERTYPUT;
}

bool IsCollection(const automation::Published& object) {
  return object.MemberNumber("Count") && object.MemberNumber("Item");
}

Variant Enumerator(const std::shared_ptr<automation::Published>& object) {
  Variant variant;
  variant->punkVal = Make<CollectionEnumerator>(object).Detach();
  variant->vt = VT_UNKNOWN;
  return variant;
}

struct Adapters {
  std::unordered_map<const automation::Published*, IDispatch*> by_object;
  std::unordered_map<const IDispatch*, LiveAdapter*> by_adapter;
};

/// This thread's adapters. Never destroyed: if a process ends without leaving its apartment, COM closes the
/// last of them.
Adapters& AllAdapters() {
  thread_local Adapters& adapters = *new Adapters;
  return adapters;
}

}  // namespace

HRESULT FindNumbers(const automation::Published& object, LPOLESTR* names, UINT count,
                    DISPID* numbers) noexcept try {
  if (!names || !numbers || count == 0) return E_INVALIDARG;
  std::fill_n(numbers, count, DISPID_UNKNOWN);
  const std::string name = ToUtf8(names[0]);
  if (const auto number = object.MemberNumber(name))
    numbers[0] = *number;
  else if (text::EqualIgnoringCase(name, "_NewEnum") && IsCollection(object))
    numbers[0] = DISPID_NEWENUM;
  else
    return DISP_E_UNKNOWNNAME;
  return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
} catch (...) {
  return ReportAsResult();
}

HRESULT CallPublished(const std::shared_ptr<automation::Published>& object, DISPID number, REFIID id,
                      WORD flags, DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                      UINT* bad_argument) noexcept {
  if (result) VariantInit(result);
  if (bad_argument) *bad_argument = 0;
  const auto kind = KindOf(flags);
  if (id != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (!parameters || !kind) return E_INVALIDARG;
  if (HasNamedArguments(*parameters, *kind)) return DISP_E_NONAMEDARGS;
  if (number == DISPID_UNKNOWN) return DISP_E_MEMBERNOTFOUND;
  // The object outlives the call even if its adapter is released meanwhile.
  // NOLINTNEXTLINE(performance-unnecessary-copy-initialization)
  const std::shared_ptr<automation::Published> target = object;
  UINT position = 0;
  try {
    const auto arguments = FromParameters(*parameters, position);
    position = 0;
    Variant answer;
    if (number == DISPID_NEWENUM && IsCollection(*target)) {
      answer = Enumerator(target);
    } else {
      const platform::Value value = target->Invoke({"", number}, *kind, arguments);
      if (result) answer = ToVariant(value);
    }
    if (result) *result = answer.Detach();
    return S_OK;
  } catch (...) {
    if (bad_argument) *bad_argument = position;
    return ReportToInvoke(info);
  }
}

LiveAdapter::LiveAdapter(std::shared_ptr<automation::Published> object, IDispatch* adapter)
    : object_(std::move(object)), adapter_(adapter) {
  AllAdapters().by_object.emplace(object_.get(), adapter_);
  AllAdapters().by_adapter.emplace(adapter_, this);
}

void LiveAdapter::Unlist() noexcept {
  if (AllAdapters().by_adapter.erase(adapter_) != 0) AllAdapters().by_object.erase(object_.get());
}

void LiveAdapter::Disconnect() noexcept {
  Unlist();
  // The object's end may check the uses, and calls may arrive meanwhile.
  use_.reset();
  std::exchange(object_, nullptr).reset();
}

void DisconnectAllAdapters() noexcept {
  while (!AllAdapters().by_adapter.empty()) AllAdapters().by_adapter.begin()->second->Disconnect();
}

ComPtr<IDispatch> FindAdapter(const automation::Published& object) {
  const auto found = AllAdapters().by_object.find(&object);
  return found == AllAdapters().by_object.end() ? nullptr : ComPtr<IDispatch>(found->second);
}

std::shared_ptr<automation::Published> PublishedBehind(const IDispatch* adapter) {
  const auto found = AllAdapters().by_adapter.find(adapter);
  return found == AllAdapters().by_adapter.end() ? nullptr : found->second->object();
}

ComPtr<IDispatch> DispatchAdapter::For(const std::shared_ptr<automation::Published>& object,
                                       const AdapterTraits& traits) {
  if (auto open = FindAdapter(*object)) return open;
  return Make<DispatchAdapter>(object, traits);
}

DispatchAdapter::DispatchAdapter(std::shared_ptr<automation::Published> published,
                                 const AdapterTraits& traits)
    : Adapter(std::move(published), traits.type_info),
      events_(traits.events),
      point_(*this, *object(), events_.value_or(IID_NULL)) {}

void* DispatchAdapter::Find(REFIID id) noexcept {
  const bool about_events = id == __uuidof(IConnectionPointContainer) || id == __uuidof(IProvideClassInfo2);
  if (about_events && !events_) return nullptr;
  if (id == __uuidof(IProvideClassInfo) && events_) return static_cast<IProvideClassInfo2*>(this);
  return Adapter::Find(id);
}

HRESULT DispatchAdapter::EnumConnectionPoints(IEnumConnectionPoints** points) try {
  if (!points) return E_POINTER;
  *points = EnumerateOne(ComPtr<IConnectionPoint>(&point_)).Detach();
  return S_OK;
} catch (...) {
  return ReportAsResult();
}

HRESULT DispatchAdapter::FindConnectionPoint(REFIID id, IConnectionPoint** point) {
  if (!point) return E_POINTER;
  *point = nullptr;
  if (id != events_) return CONNECT_E_NOCONNECTION;
  *point = ComPtr<IConnectionPoint>(&point_).Detach();
  return S_OK;
}

HRESULT DispatchAdapter::GetClassInfo(ITypeInfo** type_info) {
  if (!type_info) return E_POINTER;
  *type_info = nullptr;
  return E_NOTIMPL;
}

HRESULT DispatchAdapter::GetGUID(DWORD kind, GUID* id) {
  if (!id) return E_POINTER;
  *id = IID_NULL;
  if (kind != GUIDKIND_DEFAULT_SOURCE_DISP_IID) return E_INVALIDARG;
  *id = *events_;
  return S_OK;
}

}  // namespace windows::com
