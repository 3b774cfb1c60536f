#include "text/csv.h"
#include "user.h"

namespace {

std::size_t Count(const std::string& text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++count;
  return count;
}

TEST(Report, OfASnapshotShowsEveryRoomAndWhatDiffers) {
  CommandUser user;
  user.Run({"save", kFirstThermostat, "standard.qm5r"});
  user.Run({"snapshot", "Demo *", "C:\\s"});
  user.simulation->journal().Clear();
  EXPECT_EQ(user.Run({"report", "C:\\s", "--standard", "standard.qm5r", "-o", "r.html"}), 4)
      << user.errors.str();
  EXPECT_EQ(user.simulation->journal().Count(), 0u) << "it asks no network";
  const std::string html = user.File("r.html");
  EXPECT_EQ(Count(html, "\xE2\x89\xA0 20.5"), 1u);
  EXPECT_EQ(Count(html, " class=n>"), 14u) << "the table of devices";
  EXPECT_EQ(Count(html, "/Demo Tower.Floor 1/Thermostat 102<"), 7u) << "and a row for each tab";
  EXPECT_EQ(Count(html, "/Demo Tower.Floor 2/Thermostat 203<"), 1u) << "it was not read";
  for (const char* part :
       {"2026-11-23 11:15 +01:00, me@here", "8 equal, 2 different, 1 incomplete, 2 not read, 1 another type",
        "not given: DigitalInput1", "Failed to communicate with target device."})
    EXPECT_NE(html.find(part), std::string::npos) << part;
  for (const char* part : {"http", "src=", "<script"}) EXPECT_EQ(html.find(part), std::string::npos) << part;
  EXPECT_EQ(user.Run({"report", "C:\\s", "-o", "r.html"}), 2) << "it does not replace a report";
  EXPECT_EQ(user.Run({"report", "C:\\s", "-o", "r.doc"}), 2);
  EXPECT_EQ(user.Run({"report", "*/Thermostat 101", "-o", "one.html", "--anonymous"}), 0);
  EXPECT_EQ(user.File("one.html").find("me@here"), std::string::npos);
  const auto rows = text::CsvRows(user.File("C:\\s\\index.csv"));
  user.files.Write(
      "C:\\s\\" + rows[1][1],
      "QM5R settings 1.0\nprogram ID = 8000D3550004041D\n[settings]\nHeatMax = 99 C\nHeatMin = 9 C\n");
  EXPECT_EQ(user.Run({"report", "C:\\s", "-o", "broken.html"}), 2);
  EXPECT_NE(user.errors.str().find("there is no field"), std::string::npos) << user.errors.str();
}

TEST(Report, TakesNamesOfTheNetworkAsText) {
  CommandUser user(
      R"({"interfaces": [{"name": "NI"}], "networks": [{"name": "N", "system": {"interface": "NI",
      "templates": [{"name": "T", "programId": "8000D3550004041D"}],
      "subsystems": [{"name": "S", "devices": [{"name": "<b>&\"a, b", "template": "T"}]}]}}]})");
  EXPECT_EQ(user.Run({"report", "N", "-o", "r.html"}), 0) << user.errors.str();
  EXPECT_EQ(Count(user.File("r.html"), ">N/N.S/&lt;b&gt;&amp;&quot;a, b<"), 7u)
      << user.File("r.html").substr(0, 3000);
  EXPECT_EQ(user.Run({"report", "N", "-o", "r.csv"}), 0);
  const auto rows = text::CsvRows(user.File("r.csv"));
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_EQ(rows[2][0], "N/N.S/<b>&\"a, b");
  EXPECT_EQ(rows[0].size(), rows[2].size());
  EXPECT_EQ(user.Run({"report", "N", "-o", "r.json"}), 0);
  const auto json = nlohmann::json::parse(user.File("r.json"));
  EXPECT_EQ(json["devices"][0]["settings"]["HeatMax"]["value"], 32);
}

TEST(Csv, KeepsEveryText) {
  const std::vector<std::string> cells = {"=1+1", "-5", "'", "a,b", "say \"no\"", "two\r\nlines", "", "Ä;\t"};
  std::string row;
  for (const std::string& cell : cells) row += (row.empty() ? "" : ",") + text::CsvCell(cell);
  EXPECT_TRUE(row.starts_with("'=1+1,'-5,',\"a,b\"")) << row;
  EXPECT_EQ(text::CsvRows("\xEF\xBB\xBF" + row + "\r\n\r\nx\ny\"z"),
            (std::vector<std::vector<std::string>>{cells, {"x"}, {"yz"}}));
}

}  // namespace
