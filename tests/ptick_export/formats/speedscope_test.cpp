#include "ptick_export/formats/speedscope.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "ptick_export/support/exported.h"

namespace ptick::exports {

namespace {

using nlohmann::json;
using testing::Export;
using testing::Exported;

TEST(Speedscope, SamplesLinesInPrograms) {
  const Exported exported =
      Export(WriteSpeedscope, {"trace|A|7|5", "trace|B|x|30.5", "trace|A|9|1"}, {"A"});
  const json got = json::parse(exported.text);
  EXPECT_EQ(got["$schema"], "https://www.speedscope.app/file-format-schema.json");
  EXPECT_EQ(got["exporter"], "ptick-export@" PTICK_VERSION);
  EXPECT_EQ(got["name"], "run1");
  EXPECT_EQ(got["shared"]["frames"], json::parse(R"([
      {"name": "B", "file": "B"}, {"name": "x", "file": "B"},
      {"name": "A", "file": "src/A"}, {"name": "7", "file": "src/A", "line": 7},
      {"name": "9", "file": "src/A", "line": 9}])"));
  EXPECT_EQ(got["profiles"], json::parse(R"([
      {"type": "sampled", "name": "Ticks", "unit": "none", "startValue": 0, "endValue": 36.5,
       "samples": [[0, 1], [2, 3], [2, 4]], "weights": [30.5, 5, 1]}])"));
  EXPECT_TRUE(exported.told.empty());
}

TEST(Speedscope, PutsCommandsInTime) {
  const Exported exported = Export(
      WriteSpeedscope, {"hertz|100", "startclock|500", "trace|A|7|5",
                        "perform|startclock|500|endclock|800|cmd|OUTER",
                        "perform|startclock|600|endclock|625|cmd|INNER",
                        "perform|startclock|700|endclock|900|cmd|CROSSING",
                        "perform|startclock|625|endclock|625|cmd|INNER", "perform|cmd|NO CLOCKS"});
  const json got = json::parse(exported.text);
  EXPECT_EQ(got["shared"]["frames"].size(), 6U);
  EXPECT_EQ(got["shared"]["frames"][2], json({{"name", "OUTER"}}));
  ASSERT_EQ(got["profiles"].size(), 3U);
  EXPECT_EQ(got["profiles"][1], json::parse(R"(
      {"type": "evented", "name": "Commands", "unit": "seconds", "startValue": 0, "endValue": 3,
       "events": [{"type": "O", "frame": 2, "at": 0}, {"type": "O", "frame": 3, "at": 1},
                  {"type": "C", "frame": 3, "at": 1.25}, {"type": "O", "frame": 3, "at": 1.25},
                  {"type": "C", "frame": 3, "at": 1.25}, {"type": "C", "frame": 2, "at": 3}]})"));
  EXPECT_EQ(got["profiles"][2]["name"], "Commands, track 2");
  EXPECT_EQ(
      got["profiles"][2]["events"],
      json::parse(R"([{"type": "O", "frame": 4, "at": 2}, {"type": "C", "frame": 4, "at": 4}])"));
  EXPECT_EQ(exported.told, std::vector<std::string>{
                               "run1: 1 command without its clocks is left out of the time line"});
}

TEST(Speedscope, SaysThatThereIsNoTimeLine) {
  const Exported exported =
      Export(WriteSpeedscope, {"perform|startclock|500|endclock|800|cmd|A", "trace|A|1|2"});
  EXPECT_EQ(json::parse(exported.text)["profiles"].size(), 1U);
  EXPECT_EQ(json::parse(exported.text)["shared"]["frames"].size(), 2U);
  EXPECT_EQ(exported.told, std::vector<std::string>{
                               "run1: there is no time line: the profile has no 'hertz' above 0"});
}

TEST(Speedscope, KeepsNamesApart) {
  const Exported exported =
      Export(WriteSpeedscope, "PROFILE:trace\t\xE9\t\xE9\t4\nPROFILE:trace\t\xC3\xA9\t1\t3\n");
  const json frames = json::parse(exported.text)["shared"]["frames"];
  EXPECT_EQ(frames[0]["name"], "\xC3\xA9");
  EXPECT_EQ(frames[1]["name"], "\xC3\xA9");
  EXPECT_EQ(frames[2]["name"], "\xC3\xA9 (Latin-1)");
}

TEST(Speedscope, LeavesOutWhatIsNegative) {
  const Exported exported = Export(WriteSpeedscope, {"trace|A|1|-4", "trace|A|2|0"});
  EXPECT_EQ(json::parse(exported.text)["profiles"][0]["weights"], json::parse("[0]"));
  EXPECT_EQ(exported.told, std::vector<std::string>{
                               "run1: 1 line with negative ticks is left out, -4 ticks in all"});
}

}  // namespace

}  // namespace ptick::exports
