#include "windows/plugin/plug_in_adapter.h"

#include <LNSPlugInAPI.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>

#include "automation/convert.h"
#include "windows/com/owners.h"

namespace windows {
namespace {

using platform::CallKind;
using platform::Value;

/// Records every call and returns the member's number or throws `failure`.
class Recording final : public automation::Published {
 public:
  std::optional<std::int32_t> MemberNumber(std::string_view) const override { return 1; }
  Value Invoke(const platform::Member& member, CallKind kind, platform::Arguments arguments) override {
    last = std::array{"get ", "put ", "put by reference ", "method "}[static_cast<std::size_t>(kind)] +
           std::to_string(member.number);
    for (const Value& argument : arguments) last += ", " + automation::ToText(argument);
    if (failure) throw platform::Error(*failure);
    return member.number;
  }

  std::string last;
  std::optional<platform::Error> failure;
};

class PlugInAdapter : public testing::Test {
 protected:
  std::shared_ptr<Recording> plug_in_ = std::make_shared<Recording>();
  com::ComPtr<ILNSPlugInAPI> adapter_ = MakePlugInAdapter(plug_in_).As<ILNSPlugInAPI>();
};

TEST_F(PlugInAdapter, EveryMethodReachesItsMember) {
  static constexpr std::array kMembers{
      "SendCommand", "Visible", "networkName", "NetworkInterfaceName", "Remote",           "Height",
      "Width",       "left",    "Minimized",   "ManufacturerID",       "ManufacturerName", "LcaVersion",
      "Version",     "top",     "Name",        "DevelopmentProgramId"};
  static constexpr std::array<VARTYPE, 16> kTypes{VT_VOID, VT_BOOL, VT_BSTR, VT_BSTR, VT_BOOL, VT_I4,
                                                  VT_I4,   VT_I4,   VT_BOOL, VT_BSTR, VT_BSTR, VT_BSTR,
                                                  VT_BSTR, VT_I4,   VT_BSTR, VT_BSTR};
  com::ComPtr<ITypeInfo> type;
  ASSERT_EQ(adapter_->GetTypeInfo(0, 0, type.Receive()), S_OK);
  for (MEMBERID number = 1; number <= 16; ++number) {
    const VARTYPE value_type = kTypes[static_cast<std::size_t>(number - 1)];
    com::Bstr name;
    EXPECT_EQ(type->GetDocumentation(number, name.Receive(), nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(com::TextOf(name.get()), kMembers[static_cast<std::size_t>(number - 1)]);
    if (value_type == VT_VOID) continue;
    com::Variant value;
    DISPID named = DISPID_PROPERTYPUT;
    DISPPARAMS none{}, put{value.get(), &named, 1, 1};
    EXPECT_EQ(type->Invoke(adapter_.get(), number, INVOKE_PROPERTYGET, &none, value.get(), nullptr, nullptr),
              S_OK);
    EXPECT_EQ(value->vt, value_type) << number;
    EXPECT_EQ(plug_in_->last, "get " + std::to_string(number));
    const std::string text = value_type == VT_BOOL ? "True" : std::to_string(number);
    EXPECT_EQ(type->Invoke(adapter_.get(), number, INVOKE_PROPERTYPUT, &put, nullptr, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(plug_in_->last, "put " + std::to_string(number) + ", " + text);
  }
  EXPECT_EQ(adapter_->SendCommand(13, 7, com::Bstr("a/b").get()), S_OK);
  EXPECT_EQ(plug_in_->last, "method 1, 13, 7, a/b");
}

TEST_F(PlugInAdapter, ExplainsErrorsToCallersOfItsMethods) {
  EXPECT_EQ(adapter_.As<ISupportErrorInfo>()->InterfaceSupportsErrorInfo(__uuidof(ILNSPlugInAPI)), S_OK);
  for (const auto& [number, result] :
       {std::pair(20003, 0x800A4E23u), std::pair(platform::ObjectServerError(18200), 0x80044718u)}) {
    plug_in_->failure.emplace(number, "Plug-in", "Text of it");
    EXPECT_EQ(adapter_->put_Height(5), static_cast<HRESULT>(result));
    com::ComPtr<IErrorInfo> info;
    com::Bstr source, text;
    ASSERT_EQ(GetErrorInfo(0, info.Receive()), S_OK);
    EXPECT_EQ(info->GetSource(source.Receive()) | info->GetDescription(text.Receive()), S_OK);
    EXPECT_EQ(com::TextOf(source.get()) + ": " + com::TextOf(text.get()), "Plug-in: Text of it");
  }
}

}  // namespace
}  // namespace windows
