#include "simulator/formats.h"

#include <gtest/gtest.h>

#include "simulator/client.h"

namespace {

using simulator::Bytes;
using simulator::Format;

Bytes Raw(std::string_view hex) { return *simulator::FromHex(hex); }

const char kOptionsHex[] = "000304000000000100000004020C8004B00002009600000000030102";
const char kOptionsText[] =
    "ON_OFF 1.5 4 OFF NONE NONE NONE SCROLL_ACTIVE OFF CELSIUS TWO_PIPE HEAT_COOL LOW_MED_HIGH_AUTO 32 12 "
    "PERMANENT "
    "2 1.5 0 USED_FOR_REHEAT RTB_15_MINUTES AUTO 0.5 1";

struct Case {
  const char* format;
  const char* hex;
  const char* text;
};

TEST(Formats, RenderAndParseBack) {
  const Case cases[] = {
      {"SNVT_temp_setpt", "08FC09C40AF00834076C0640", "23,25,28,21,19,16"},
      {"#SISNVT_temp_setpt", "08FDFFFF7FFF800000000001", "23.01,-0.01,327.67,-327.68,0,0.01"},
      {"#USSNVT_temp_setpt", "08FC09C40AF00834076C0640", "73.4,77,82.4,69.8,66.2,60.8"},
      {"SNVT_temp_p#US", "083F", "70"},  // 69.998: whole degrees stay whole
      {"UNVT_fc_pir_gen_opts", kOptionsHex, kOptionsText},
      {"UNVT_rh_model", "01640A78E2", "ON 50 5 60 -15"},
      {"UNVT_model_info2", "0417", "4 2.3"},
      {"SNVT_hvac_type", "FF", "HVT_NUL"},
      {"SNVT_hvac_type", "08", "HVT_AHU"},
      {"SNVT_hvac_type", "09", "HVT_SELF_CONT"},
      {"SNVT_hvac_type", "0A", "10"},
      {"SNVT_hvac_type", "FE", "-2"},
      {"SNVT_time_sec", "FFFE", "6553.4"},
      {"SNVT_switch", "C8FF", "100 -1"},
      {"SNVT_lev_percent", "0001", "0.005"},
      {"INT", "FF", "-1"},
      {"INT", "0102", "258"},
      {"INT", "80000000", "-2147483648"},
      {"RAW", "00FF10", "0\t255\t16"},
      {"#USRAW", "0A", "10"},
      {"RAW_HEX", "00FF10", "00\tFF\t10"},
      {"RAW_HEX_PACKED", "00FF10", "00FF10"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.format) + " " + c.hex);
    const Format format = Format::Find(c.format).value();
    EXPECT_EQ(format.Render(Raw(c.hex)), c.text);
    EXPECT_EQ(simulator::ToHex(format.Parse(c.text, Raw(c.hex).size())), c.hex);
  }
}

TEST(Formats, ParseWhatPeopleType) {
  const Case cases[] = {
      {"SNVT_temp_p", "0834", "21.0"},      {"SNVT_temp_p", "0834", "+21"},
      {"SNVT_temp_p", "0834", "21.005"},  // ties go to the even hundredth
      {"SNVT_temp_p", "0836", "21.015"},    {"SNVT_temp_p", "0000", "-0.005"},
      {"#USSNVT_temp_p", "0000", "32.009"}, {"#USSNVT_temp_p", "0BB8", "86"},
      {"SNVT_time_sec", "0001", "0.149"},   {"INT", "05", "4.6"},
      {"RAW_HEX_PACKED", "AB", "ab"},
  };
  for (const Case& c : cases)
    EXPECT_EQ(simulator::ToHex(Format::Find(c.format)->Parse(c.text, Raw(c.hex).size())), c.hex)
        << c.format << " " << c.text;
}

TEST(Formats, RefuseWhatDoesNotFit) {
  const std::string endless(400, '1');
  const struct {
    const char* format;
    std::size_t size;
    std::vector<std::string> texts;
  } cases[] = {
      {"SNVT_temp_setpt", 12, {"23,25,28,21,19", "23,25,28,21,19,16,", "23 25 28 21 19 16", ""}},
      {"SNVT_temp_p", 2, {"", "327.68", "-327.69", "21C", "1e1", "21;5", endless}},
      {"#USSNVT_temp_p", 2, {"700"}},
      {"SNVT_temp_p", 4, {"21"}},
      {"SNVT_time_sec", 2, {"-1", "6553.6"}},
      // A value that has a name travels as its name.
      {"UNVT_rh_model", 5, {"1 50 5 60 0", "on 50 5 60 0", "2.5 50 5 60 0", "256 50 5 60 0"}},
      {"UNVT_rh_model", 5, {"ON  50 5 60", "ON 128 5 60 0"}},
      {"SNVT_hvac_type", 1, {"HVT_OTHER", "1", "128"}},
      {"INT", 1, {"128"}},
      {"INT", 5, {"1"}},
      {"INT", 0, {"1"}},
      {"RAW", 2, {"1\t256", "1", "1\t2\t3"}},
      {"RAW_HEX", 2, {"0102"}},
      {"RAW_HEX_PACKED", 2, {"010", "01G0", "01"}},
  };
  for (const auto& c : cases)
    for (const std::string& text : c.texts)
      EXPECT_EQ(client::CodeOf([&] { Format::Find(c.format)->Parse(text, c.size); }), 18035)
          << c.format << " " << text;
  for (const char* unknown :
       {"", "#SI", "SNVT_temp", "snvt_temp_p", "#XXINT", "SNVT_temp_p #SI", "#SI#USINT"})
    EXPECT_FALSE(Format::Find(unknown).has_value()) << unknown;
  for (const Bytes& bytes : {Raw(""), Raw("08"), Raw("083400")})
    EXPECT_EQ(client::CodeOf([&] { Format::Find("SNVT_temp_p")->Render(bytes); }), 18035);
}

TEST(Formats, EveryRawValueComesBack) {
  constexpr std::size_t kDeadBand = 19;  // byte position in the general options
  const Format temperature[] = {*Format::Find("#SISNVT_temp_p"), *Format::Find("#USSNVT_temp_p")};
  const Format options[] = {*Format::Find("#SIUNVT_fc_pir_gen_opts"),
                            *Format::Find("#USUNVT_fc_pir_gen_opts")};
  Bytes whole = Raw(kOptionsHex);
  for (int raw = 0; raw < 65536; ++raw) {
    const Bytes bytes = {static_cast<std::uint8_t>(raw >> 8), static_cast<std::uint8_t>(raw & 255)};
    for (const Format& format : temperature) ASSERT_EQ(format.Parse(format.Render(bytes), 2), bytes) << raw;
    if (raw % 16 != 0) continue;  // differences convert by the same rule; each high byte is enough
    std::copy(bytes.begin(), bytes.end(), whole.begin() + kDeadBand);
    for (const Format& format : options)
      ASSERT_EQ(format.Parse(format.Render(whole), whole.size()), whole) << raw;
  }
  for (int byte = 0; byte < 256; ++byte) {
    const Bytes all(28,
                    static_cast<std::uint8_t>(byte));  // every field, every choice, with and without a name
    for (const Format& format : options) EXPECT_EQ(format.Parse(format.Render(all), all.size()), all) << byte;
    const Bytes one(1, static_cast<std::uint8_t>(byte));
    const Format hvac = *Format::Find("SNVT_hvac_type");
    EXPECT_EQ(hvac.Parse(hvac.Render(one), 1), one);
  }
}

TEST(Formats, DifferencesConvertWithoutTheOffset) {
  const Bytes bytes = Raw(kOptionsHex);
  const std::string us = Format::Find("#USUNVT_fc_pir_gen_opts")->Render(bytes);
  EXPECT_NE(us.find(" 89.6 53.6 PERMANENT 2 2.7 0 USED_FOR_REHEAT"), std::string::npos) << us;
  EXPECT_EQ(Format::Find("#USUNVT_fc_pir_gen_opts")->Parse(us, bytes.size()), bytes);
}

}  // namespace
