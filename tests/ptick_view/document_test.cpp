#include "ptick_view/document.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/byte_sink.h"
#include "support/memory_platform.h"
#include "support/profiles.h"

namespace ptick::view {

namespace {

using nlohmann::json;
using ptick::testing::Parse;
using ptick::testing::Records;

class DocumentTest : public ::testing::Test {
 protected:
  /// The document of a profile whose records are written with "|" for TAB.
  json DocumentOf(std::initializer_list<std::string_view> records) {
    return Written(Records(records), std::nullopt);
  }

  json Compared(std::initializer_list<std::string_view> old_records,
                std::initializer_list<std::string_view> new_records) {
    return Written(Records(new_records), Records(old_records));
  }

  MemoryPlatform platform_;
  std::vector<std::string> folders_;
  Limits limits_;

 private:
  json Written(std::string_view profile, const std::optional<std::string>& old_profile) {
    const ptick::testing::Parsed run = Parse(profile);
    const ptick::testing::Parsed old_run = Parse(old_profile.value_or(""));
    ComparedKinds kinds;
    kinds.AddRun(*old_run.tables, false);
    kinds.AddRun(*run.tables, true);
    const BaselineSide baseline = {.profile = {*old_run.tables, 1}, .kinds = kinds};
    const companion::SourceFolders sources(folders_, platform_);
    companion::StringSink sink;
    WriteDocument({.producer = "ptick-view 1",
                   .profile = {*run.tables, 1},
                   .baseline = old_profile ? &baseline : nullptr,
                   .sources = sources,
                   .limits = limits_},
                  sink);
    EXPECT_EQ(sink.Text().find('<'), std::string::npos);
    return json::parse(sink.Text());
  }
};

TEST_F(DocumentTest, OfAnEmptyProfileHasEmptyTables) {
  const json document = DocumentOf({});
  EXPECT_EQ(document["format"], "ptick-view");
  EXPECT_EQ(document["version"], 1);
  EXPECT_EQ(document["producer"], "ptick-view 1");
  EXPECT_EQ(document["names"], json::array());
  EXPECT_EQ(document["baseline"], nullptr);
  EXPECT_EQ(document["sources_wanted"], false);
  EXPECT_EQ(document["left_out"], json::array());
  EXPECT_EQ(document["profile"]["ticks"], nullptr);
  EXPECT_EQ(document["profile"]["lines"],
            json({{"program", json::array()}, {"line", json::array()}, {"ticks", json::array()}}));
}

TEST_F(DocumentTest, AddsLinesUpAndNamesProgramsByNumber) {
  const json document = DocumentOf(
      {"ticks|9", "trace|B|7|1", "trace|A|5|2", "trace|B|7|3", "trace|A|05|2", "trace|C|1|0.5"});
  EXPECT_EQ(document["names"], json({"A", "B", "C"}));
  EXPECT_EQ(document["profile"]["programs"],
            json({{"program", {0, 1, 2}}, {"ticks", {4, 4, 0.5}}, {"lines", {2, 1, 1}}}));
  EXPECT_EQ(
      document["profile"]["lines"],
      json({{"program", {1, 0, 0, 2}}, {"line", {7, "05", 5, 1}}, {"ticks", {4, 2, 2, 0.5}}}));
}

TEST_F(DocumentTest, LosesNoDigitOfBigNumbers) {
  const json document = DocumentOf({"ticks|9007199254740993", "trace|A|1|9007199254740992",
                                    "trace|B|1|-9007199254740993", "memused|9007199254740994"});
  EXPECT_EQ(document["profile"]["ticks"], "9007199254740993");
  EXPECT_EQ(document["profile"]["lines"]["ticks"], json({9007199254740992, "-9007199254740993"}));
  EXPECT_EQ(document["profile"]["counters"]["memused"], "9007199254740994");
}

TEST_F(DocumentTest, KeepsNamesApartAndHarmless) {
  const json document =
      DocumentOf({"trace|\xE9|1|3", "trace|\xC3\xA9|1|2", "trace|</script><!--|1|1"});
  EXPECT_EQ(document["names"], json({"\xC3\xA9", "\xC3\xA9 (Latin-1)", "</script><!--"}));
}

TEST_F(DocumentTest, KeepsLinesApartThatAreNoNumbers) {
  const json document =
      Compared({"trace|A|\xC3\xA9|1", "trace|A|\xE9|1"}, {"trace|A|\xC3\xA9|3", "trace|A|\xE9|2"});
  const json want = {"\xC3\xA9", "\xC3\xA9 (Latin-1)"};
  EXPECT_EQ(document["profile"]["lines"]["line"], want);
  EXPECT_EQ(document["baseline"]["changes"]["lines"]["line"], want);
}

TEST_F(DocumentTest, HasTheSourcesOfProgramsWithTicks) {
  platform_.files["src"]["A"].text = "one\ntwo\n";
  platform_.files["src"]["OTHER"].text = "not asked for\n";
  folders_ = {"src"};
  const json document = DocumentOf({"trace|A|1|3", "trace|B|1|2", "subroutine_call|A OTHER|2"});
  EXPECT_EQ(document["sources_wanted"], true);
  EXPECT_EQ(document["sources"],
            json::array({{{"program", 0}, {"file", "src/A"}, {"lines", {"one", "two"}}}}));
}

TEST_F(DocumentTest, SaysWhatWasLeftOut) {
  limits_ = {.lines = 1,
             .changed_lines = 1,
             .changed_rows = 1,
             .commands = 1,
             .inputs = 1,
             .calls = 1,
             .objects = 1,
             .source_bytes = 4};
  platform_.files["src"]["A"].text = "one\n";
  platform_.files["src"]["B"].text = "two\n";
  folders_ = {"src"};
  const json document =
      Compared({"trace|A|1|1", "perform|ticks|1|cmd|LIST", "perform|ticks|2|cmd|LIST",
                "shared_object|X|1", "shared_object|Y|1", "subroutine_call|B X|1",
                "subroutine_call|B Y|7", "input|13|1|1|2|c", "input|13|1|3|4|d"},
               {"trace|A|1|5", "trace|B|2|3", "trace|B|3|1", "perform|ticks|1|cmd|FIRST",
                "perform|ticks|9|cmd|SECOND", "input|13|1|1|2|a", "input|13|1|3|4|b",
                "subroutine_call|A X|1", "subroutine_call|A Y|7", "shared_object|two|1",
                "shared_object|one|1"});
  EXPECT_EQ(document["left_out"],
            json::array(
                {{{"what", "lines"}, {"count", 2}, {"of", 3}, {"ticks", 4}},
                 {{"what", "commands"}, {"count", 1}, {"of", 2}, {"ticks", 1}},
                 {{"what", "calls"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}},
                 {{"what", "objects"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}},
                 {{"what", "inputs"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}},
                 {{"what", "commands of the baseline"}, {"count", 1}, {"of", 2}, {"ticks", 1}},
                 {{"what", "calls of the baseline"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}},
                 {{"what", "objects of the baseline"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}},
                 {{"what", "inputs of the baseline"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}},
                 {{"what", "changed lines"}, {"count", 2}, {"of", 3}, {"ticks", nullptr}},
                 {{"what", "changed programs"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}},
                 {{"what", "changed commands"}, {"count", 2}, {"of", 3}, {"ticks", nullptr}},
                 {{"what", "changed calls"}, {"count", 3}, {"of", 4}, {"ticks", nullptr}},
                 {{"what", "sources"}, {"count", 1}, {"of", 2}, {"ticks", nullptr}}}));
  EXPECT_EQ(document["profile"]["programs"]["ticks"], json({5, 4}));
  EXPECT_EQ(document["profile"]["lines"]["ticks"], json::array({5}));
  EXPECT_EQ(document["profile"]["commands"][0]["command"], "SECOND");
  EXPECT_EQ(document["profile"]["subroutines"][0]["subroutine"], "Y");
  EXPECT_EQ(document["profile"]["objects"], json({"one"}));
  EXPECT_EQ(document["profile"]["inputs"][0]["text"], "a");
}

TEST_F(DocumentTest, HoldsTheChangesFromABaseline) {
  const json baseline =
      Compared({"ticks|110", "trace|A|1|100", "trace|B|2|10", "perform|ticks|4|cmd|LIST",
                "subroutine_call|A X|1", "read_count|5"},
               {"ticks|310", "trace|A|1|300", "trace|B|2|10", "perform|ticks|4|cmd|LIST",
                "perform|ticks|2|cmd|LIST", "subroutine_call|A X|3", "read_count|8"})["baseline"];
  EXPECT_EQ(baseline["runs"], 1);
  EXPECT_EQ(baseline["test"], "binomial");
  EXPECT_EQ(baseline["profile"]["ticks"], 110);
  EXPECT_FALSE(baseline["profile"].contains("lines"));
  const json& changes = baseline["changes"];
  EXPECT_EQ(changes["lines"]["program"], json::array({0}));
  EXPECT_EQ(changes["lines"]["line"], json::array({1}));
  EXPECT_EQ(changes["lines"]["old"], json::array({100}));
  EXPECT_EQ(changes["lines"]["new"], json::array({300}));
  EXPECT_EQ(changes["lines"]["change"], json::array({200}));
  EXPECT_EQ(changes["lines"]["significant"], json::array({1}));
  EXPECT_LT(changes["lines"]["p"][0], 1e-10);
  EXPECT_EQ(changes["programs"][0]["change"], 200);
  EXPECT_EQ(changes["commands"][0]["new_times"], 2);
  EXPECT_EQ(changes["commands"][0]["change"], 2);
  EXPECT_EQ(
      changes["subroutines"],
      json::array({{{"caller", "A"}, {"subroutine", "X"}, {"old", 1}, {"new", 3}, {"change", 2}}}));
  EXPECT_EQ(changes["counters"][0]["counter"], "ticks");
  EXPECT_EQ(changes["counters"][1],
            json({{"counter", "read_count"}, {"old", 5}, {"new", 8}, {"change", 3}}));
}

}  // namespace

}  // namespace ptick::view
