#include "windows/com/hosted_control.h"

#include <ocidl.h>

namespace windows::com {
namespace {

/// Newly made, not loaded from anywhere.
void Initialise(const ComPtr<IDispatch>& control) {
  if (const auto stream = control.As<IPersistStreamInit>())
    stream->InitNew();
  else if (const auto bag = control.As<IPersistPropertyBag>())
    bag->InitNew();
}

bool WantsSiteFirst(IOleObject& object) {
  DWORD traits = 0;
  return SUCCEEDED(object.GetMiscStatus(DVASPECT_CONTENT, &traits)) &&
         (traits & OLEMISC_SETCLIENTSITEFIRST) != 0;
}

}  // namespace

/// What a control refuses here does no harm by itself; what it needs it says when it is called.
HostedControl::HostedControl(ComPtr<IDispatch> control)
    : DispatchObject(std::move(control)), object_(dispatch().As<IOleObject>()) {
  const bool site_first = object_ && WantsSiteFirst(*object_.get());
  if (!site_first) Initialise(dispatch());
  if (object_) object_->SetClientSite(Make<ControlSite>().get());
  if (site_first) Initialise(dispatch());
}

HostedControl::~HostedControl() {
  if (!object_) return;
  object_->Close(OLECLOSE_NOSAVE);
  object_->SetClientSite(nullptr);
}

}  // namespace windows::com
