#include "ptick_export/formats/json_profile.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>

#include "ptick_export/support/exported.h"

namespace ptick::exports {

namespace {

using nlohmann::json;
using testing::Export;

TEST(JsonProfile, HoldsEverything) {
  const std::string command =
      "perform|startclock|1|endclock|x|starttime|2|endtime|3|ticks|4|usrcpu|5|syscpu|6|type|qry|"
      "cmd|L|M";
  const testing::Exported exported = Export(WriteJsonProfile, {"program|MENU|x",
                                                               "hertz|100",
                                                               "ticks|007",
                                                               "portno|7",
                                                               "read_count|0",
                                                               "memused|1.5",
                                                               "write_count",
                                                               "usrcpu|abc",
                                                               "user_ticks|2|5",
                                                               "user_ticks|2|6",
                                                               "resource|1|2|3|4|5|6|7|8|9|10|x",
                                                               "typerate|12|34",
                                                               "trace|A|7|5",
                                                               "trace|B|x|7.5",
                                                               "trace|A|007|5",
                                                               "trace|C|4294967295|9",
                                                               "trace|C|4294967296|9",
                                                               "trace|D|1|abc",
                                                               "shared_object|b.so|1",
                                                               "shared_object|a.so|1",
                                                               "shared_object|b.so|1",
                                                               "subroutine_call|A B|3",
                                                               "subroutine_call|A C|12",
                                                               "subroutine_call|A D",
                                                               command,
                                                               "perform|cmd|N",
                                                               "input|13|4|500|503|a|b",
                                                               "input|x"});
  EXPECT_EQ(json::parse(exported.text), json::parse(R"({
      "format": "ptick-profile", "version": 1, "profile": "run1", "program": "MENU",
      "command": "MENU x", "ticks": 7, "hertz": 100,
      "counters": {"memused": 1.5, "usrcpu": 0, "read_count": 0, "write_count": null, "portno": 7},
      "user_ticks": [0, 11, 0, 0, 0, 0, 0, 0, 0, 0],
      "resource": [1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 0, null],
      "typerate": {"characters": 12, "clock": 34},
      "lines": [
        {"program": "C", "line": "4294967296", "ticks": 9},
        {"program": "C", "line": 4294967295, "ticks": 9},
        {"program": "B", "line": "x", "ticks": 7.5},
        {"program": "A", "line": "007", "ticks": 5},
        {"program": "A", "line": 7, "ticks": 5},
        {"program": "D", "line": 1, "ticks": 0}],
      "commands": [
        {"command": "L\tM", "type": "qry", "startclock": 1, "endclock": 0, "starttime": 2,
         "endtime": 3, "ticks": 4, "usrcpu": 5, "syscpu": 6},
        {"command": "N", "type": null, "startclock": null, "endclock": null, "starttime": null,
         "endtime": null, "ticks": null, "usrcpu": null, "syscpu": null}],
      "subroutines": [
        {"caller": "A", "subroutine": "C", "times": 12},
        {"caller": "A", "subroutine": "B", "times": 3},
        {"caller": "A", "subroutine": "D", "times": 0}],
      "objects": ["a.so", "b.so", "b.so"],
      "inputs": [
        {"code": 13, "characters": 4, "startclock": 500, "endclock": 503, "text": "a\tb"},
        {"code": 0, "characters": null, "startclock": null, "endclock": null, "text": ""}]})"));
  EXPECT_TRUE(exported.told.empty());
}

TEST(JsonProfile, HasNullForWhatIsAbsent) {
  EXPECT_EQ(json::parse(Export(WriteJsonProfile, "").text), json::parse(R"({
      "format": "ptick-profile", "version": 1, "profile": "run1", "program": null, "command": null,
      "ticks": null, "hertz": null, "counters": {}, "user_ticks": [0, 0, 0, 0, 0, 0, 0, 0, 0, 0],
      "resource": null, "typerate": null, "lines": [], "commands": [], "subroutines": [],
      "objects": [], "inputs": []})"));
}

TEST(JsonProfile, TellsARecordWithoutCommandFromNone) {
  struct Row {
    std::string profile;
    std::string want;
  };
  const std::vector<Row> rows = {
      {"PROFILE:program\n", R"j({"program": "", "command": null})j"},
      {"PROFILE:program\t(unknown)\n", R"j({"program": "(unknown)", "command": "(unknown)"})j"},
      {"PROFILE:typerate\n", R"j({"program": null, "command": null})j"},
  };
  for (const Row& row : rows) {
    json got = json::parse(Export(WriteJsonProfile, row.profile).text);
    EXPECT_EQ(json({{"program", got["program"]}, {"command", got["command"]}}),
              json::parse(row.want))
        << row.profile;
  }
}

TEST(JsonProfile, KeepsNamesApart) {
  const json got =
      json::parse(Export(WriteJsonProfile,
                         "PROFILE:trace\t\xE9\t1\t4\nPROFILE:trace\t\xC3\xA9\t1\t3\n"
                         "PROFILE:subroutine_call\t\xE9 \xC3\xA9\t3\nPROFILE:perform\tcmd\t\xE9\n"
                         "PROFILE:perform\tcmd\t\xC3\xA9\nPROFILE:shared_object\t\xC3\xA9\t1\n")
                      .text);
  EXPECT_EQ(got["lines"][0]["program"], "\xC3\xA9");
  EXPECT_EQ(got["lines"][1]["program"], "\xC3\xA9 (Latin-1)");
  EXPECT_EQ(got["subroutines"][0]["caller"], "\xC3\xA9");
  EXPECT_EQ(got["subroutines"][0]["subroutine"], "\xC3\xA9 (Latin-1)");
  EXPECT_EQ(got["commands"][1]["command"], "\xC3\xA9 (Latin-1)");
  EXPECT_EQ(got["objects"][0], "\xC3\xA9");
}

}  // namespace

}  // namespace ptick::exports
