#include "simulator/formats.h"

#include "simulator/client.h"

namespace {

using simulator::Bytes;
using simulator::Format;

Bytes Raw(std::string_view hex) { return *simulator::FromHex(hex); }

const std::string kOptions = "000304000000000100000004020C8004B00002009600000000030102";
const std::string kOptionsText =
    "ON_OFF 1.5 4 OFF NONE NONE NONE SCROLL_ACTIVE OFF CELSIUS TWO_PIPE HEAT_COOL LOW_MED_HIGH_AUTO "
    "32 12 PERMANENT 2 1.5 0 USED_FOR_REHEAT RTB_15_MINUTES AUTO 0.5 1";

TEST(Formats, RenderAndParse) {
  const std::string us = client::Replaced(kOptionsText, "32 12 PERMANENT 2 1.5", "89.6 53.6 PERMANENT 2 2.7");
  struct Sample {
    std::string hex, text;
    const char* typed = nullptr;
  };
  const std::pair<const char*, std::vector<Sample>> cases[] = {
      {"SNVT_temp_setpt", {{"08FC09C40AF00834076C0640", "23,25,28,21,19,16"}}},
      {"#SISNVT_temp_setpt", {{"08FDFFFF7FFF800000000001", "23.01,-0.01,327.67,-327.68,0,0.01"}}},
      {"#USSNVT_temp_setpt", {{"08FC09C40AF00834076C0640", "73.4,77,82.4,69.8,66.2,60.8"}}},
      // Whole degrees stay whole, even 69.998; ties go to the even hundredth.
      {"SNVT_temp_p#US", {{"083F", "70"}, {"0BB8", "86"}, {"0000", "32", "32.009"}}},
      {"SNVT_temp_p", {{"0834", "21", "21.005"}, {"0836", "21.02", "21.015"}}},
      {"SNVT_temp_p", {{"0834", "21", "21.0"}, {"0834", "21", "+21"}, {"0000", "0", "-0.005"}}},
      {"UNVT_fc_pir_gen_opts", {{kOptions, kOptionsText}}},
      {"#USUNVT_fc_pir_gen_opts", {{kOptions, us}}},  // differences convert without the offset
      {"UNVT_rh_model", {{"01640A78E2", "ON 50 5 60 -15"}}},
      {"UNVT_model_info2", {{"0417", "4 2.3"}}},
      {"SNVT_hvac_type",
       {{"FF", "HVT_NUL"}, {"08", "HVT_AHU"}, {"09", "HVT_SELF_CONT"}, {"0A", "10"}, {"FE", "-2"}}},
      {"SNVT_time_sec", {{"FFFE", "6553.4"}, {"0001", "0.1", "0.149"}}},
      {"INT", {{"FF", "-1"}, {"05", "5", "4.6"}, {"0102", "258"}, {"80000000", "-2147483648"}}},
      {"RAW", {{"00FF10", "0\t255\t16"}}},
      {"RAW_HEX", {{"00FF10", "00\tFF\t10"}}},
      {"RAW_HEX_PACKED", {{"00FFAB", "00FFAB", "00ffab"}}},
  };
  for (const auto& [name, samples] : cases) {
    const Format format = Format::Find(name).value();
    for (const auto& [hex, text, typed] : samples) {
      const Bytes bytes = Raw(hex);
      EXPECT_EQ(format.Render(bytes), text) << name;
      for (const std::string& each : {text, typed ? typed : text})
        EXPECT_EQ(format.Parse(each, bytes.size()), bytes) << name << " " << each;
    }
  }
}

TEST(Formats, RefuseWhatDoesNotFit) {
  const std::string endless(400, '1');
  const std::tuple<const char*, std::size_t, std::vector<std::string>> cases[] = {
      {"SNVT_temp_setpt", 12, {"23,25,28,21,19", "23,25,28,21,19,16,", "23 25 28 21 19 16", ""}},
      {"SNVT_temp_p", 2, {"", "327.68", "-327.69", "21C", "1e1", "21;5", endless}},
      // A value with a name must be written by name.
      {"UNVT_rh_model", 5, {"1 50 5 60 0", "on 50 5 60 0", "2.5 50 5 60 0", "256 50 5 60 0"}},
      {"SNVT_hvac_type", 1, {"HVT_OTHER", "1", "128"}},
      {"INT", 1, {"128"}},
      {"RAW", 2, {"1\t256", "1", "1\t2\t3"}},
      {"RAW_HEX_PACKED", 2, {"010", "01G0", "01"}},
  };
  for (const auto& [name, size, texts] : cases)
    for (const std::string& text : texts)
      EXPECT_EQ(client::CodeOf([&, f = name, n = size] { Format::Find(f)->Parse(text, n); }), 18035)
          << name << " " << text;
  for (const char* unknown :
       {"", "#SI", "SNVT_temp", "snvt_temp_p", "#XXINT", "SNVT_temp_p #SI", "#SI#USINT"})
    EXPECT_FALSE(Format::Find(unknown).has_value()) << unknown;
  for (const Bytes& bytes : {Raw(""), Raw("08"), Raw("083400")})
    EXPECT_EQ(client::CodeOf([&] { Format::Find("SNVT_temp_p")->Render(bytes); }), 18035);
}

TEST(Formats, RawValuesSurviveRendering) {
  const std::pair<const char*, std::size_t> cases[] = {{"#SISNVT_temp_p", 2},
                                                       {"#USSNVT_temp_p", 2},
                                                       {"SNVT_hvac_type", 1},
                                                       {"#SIUNVT_fc_pir_gen_opts", 28},
                                                       {"#USUNVT_fc_pir_gen_opts", 28}};
  for (const auto& [name, size] : cases) {
    const Format format = *Format::Find(name);
    // With several fields, each field takes all its values, with and without names.
    for (int raw = 0; raw < 65536; raw += size == 2 ? 1 : 0x101) {
      Bytes bytes(size, static_cast<std::uint8_t>(raw & 255));
      bytes[0] = static_cast<std::uint8_t>(raw >> 8);
      ASSERT_EQ(format.Parse(format.Render(bytes), size), bytes) << name << " " << raw;
    }
  }
}

}  // namespace
