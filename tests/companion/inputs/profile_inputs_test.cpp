// The profiles of a command line: whole and checked, or trouble at the right place.

#include "companion/inputs/profile_inputs.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "companion/problem.h"
#include "companion/support/no_status_line.h"
#include "profile/profile_loader.h"
#include "support/memory_platform.h"
#include "support/profiles.h"
#include "support/text_record.h"

namespace ptick::companion {

namespace {

using ptick::testing::Records;
using ptick::testing::RowTexts;
using ptick::testing::TextRecord;

/// Inputs in memory, by their names.
class ProfileInputsTest : public ::testing::Test {
 protected:
  ProfileInputs Inputs() {
    return {[this](const std::string& name) -> std::unique_ptr<RecordReader> {
              opened_.push_back(name);
              const auto found = texts_.find(name);
              if (found == texts_.end()) {
                throw Trouble(InputName(name), ENOENT);
              }
              const bool fails = name.starts_with("late");
              return std::make_unique<TextRecord>(
                  found->second, piece_,
                  fails ? TextRecord::End::kFails : TextRecord::End::kReached);
            },
            progress_.Get()};
  }

  /// The message of the trouble that reading ends with, empty without trouble.
  std::string TroubleOf(const std::vector<std::string>& names) {
    ProfileTables tables;
    try {
      Inputs().Read(names, {}, tables);
    } catch (const Trouble& trouble) {
      return MessageLine("p", trouble.What());
    }
    return "";
  }

  std::map<std::string, std::string> texts_;
  std::size_t piece_ = 7;
  std::vector<std::string> opened_;
  testing::NoProgress progress_;
};

TEST_F(ProfileInputsTest, ReadsOneAsItIs) {
  texts_["run"] = Records({"program|A 1", "ticks|5", "trace|P|1|2", "trace|P|1|2"});
  ProfileTables tables;
  Inputs().Read({"run"}, {}, tables);
  EXPECT_EQ(tables.ProfileName, "run");
  EXPECT_EQ(tables.ProgramName, "A");
  EXPECT_EQ(RowTexts(std::move(tables.Details)), "P|1|2 P|1|2");
}

TEST_F(ProfileInputsTest, MergesSeveral) {
  texts_["run"] = Records({"program|A 1", "ticks|5", "trace|P|1|2"});
  texts_["-"] = Records({"ticks|7", "trace|P|1|3", "trace|Q|1|1"});
  ProfileTables tables;
  Inputs().Read({"-", "run"}, {}, tables);
  EXPECT_EQ(tables.ProfileName, "standard input ...");
  EXPECT_EQ(tables.ProgramName, "(unknown)");
  EXPECT_EQ(tables.TotalTicks.Text(), "12");
  EXPECT_EQ(RowTexts(std::move(tables.Details)), "P|1|5 Q|1|1");
  EXPECT_EQ(opened_, (std::vector<std::string>{"-", "run"}));
}

TEST_F(ProfileInputsTest, NamesItsTablesAsPtickDoes) {
  MemoryPlatform platform;
  texts_["run"] = platform.files["."]["run"].text = Records({"ticks|5"});
  MergedProfile merged = MergeProfileFiles({"run", "run"}, platform,
                                           std::pmr::get_default_resource(), [](const auto&) {});
  ProfileTables want;
  ASSERT_FALSE(ReadMergedProfile(std::move(merged), {}, want));
  ProfileTables tables;
  Inputs().Read({"run", "run"}, {}, tables);
  EXPECT_EQ(tables.ProfileName, want.ProfileName);
}

TEST_F(ProfileInputsTest, TakesWhatIsEmpty) {
  texts_["empty"] = "";
  for (const std::vector<std::string>& names :
       std::vector<std::vector<std::string>>{{}, {"empty"}, {"empty", "empty"}}) {
    EXPECT_EQ(TroubleOf(names), "");
  }
}

TEST_F(ProfileInputsTest, TellsWhatIsWrongAndWhere) {
  texts_["good"] = Records({"ticks|5"});
  texts_["bad"] = "\n" + Records({"ticks|5", "trcae|P|1|2", "worse|1"});
  texts_["alone"] = "\t\tPROFILE:bogus";
  texts_["marks"] =
      "a\xfe"
      "b\nPROFILE:ticks\t1\xfePROFILE:x\t1\xfePROFILE:y\n";
  texts_["long"] =
      "PROFILE:" + std::string(59, 'x') + "\xc3\xa4" + std::string(1000, 'y') + "\t1\n";
  texts_["late"] = Records({"ticks|5"});
  struct Row {
    std::vector<std::string> names;
    std::string want;
  };
  const std::vector<Row> rows = {
      {{"none"}, "p: none: No such file or directory\n"},
      {{"good", "none"}, "p: none: No such file or directory\n"},
      {{"late"}, "p: late: Input/output error\n"},
      {{"late", "good"}, "p: late: Input/output error\n"},
      {{"bad"}, "p: bad: line 3: unknown record type: PROFILE:trcae ...\n"},
      {{"good", "bad", "good"}, "p: bad: line 3: unknown record type: PROFILE:trcae ...\n"},
      {{"alone"}, "p: alone: line 1: unknown record type: PROFILE:bogus\n"},
      // What a merge passes over is wrong, too.
      {{"good", "alone"}, "p: alone: line 1: unknown record type: PROFILE:bogus\n"},
      {{"marks"}, "p: marks: line 2: unknown record type: PROFILE:x ...\n"},
      {{"good", "marks"}, "p: marks: line 2: unknown record type: PROFILE:x ...\n"},
      {{"long"},
       "p: long: line 1: unknown record type: PROFILE:" + std::string(59, 'x') + "... ...\n"},
  };
  for (const Row& row : rows) {
    for (const std::size_t size : {std::size_t{1}, std::size_t{7}, std::size_t{100000}}) {
      piece_ = size;
      EXPECT_EQ(TroubleOf(row.names), row.want);
    }
  }
}

// Blocks, and marks in those before.
TEST_F(ProfileInputsTest, CountsLinesOfLongInputsByLineFeeds) {
  std::string text;
  for (int line = 1; line <= 40000; ++line) {
    text += line % 3 == 0 ? "remark\xfeother remark\n" : Records({"trace|P|1|2"});
  }
  texts_["run"] = text + Records({"bogus"});
  texts_["good"] = "";
  piece_ = 100000;
  const std::string want = "p: run: line 40001: unknown record type: PROFILE:bogus\n";
  EXPECT_EQ(TroubleOf({"run"}), want);
  EXPECT_EQ(TroubleOf({"good", "run"}), want);
}

TEST_F(ProfileInputsTest, OpensOneAtATime) {
  texts_["bad"] = Records({"bogus"});
  EXPECT_NE(TroubleOf({"bad", "never"}), "");
  EXPECT_EQ(opened_, std::vector<std::string>{"bad"});
}

// The same merge and the same trouble, whoever reads.
TEST_F(ProfileInputsTest, MergesOnSeveralThreads) {
  std::vector<std::string> names;
  for (int run = 0; run < 40; ++run) {
    names.push_back("run" + std::to_string(run));
    for (int line = 0; line < 300; ++line) {
      texts_[names.back()] +=
          Records({"trace|P" + std::to_string(line % 7) + "|" + std::to_string(line * run % 50) +
                   "|" + std::to_string(line)});
    }
  }
  piece_ = 100000;
  const auto lines_with = [&](const ThreadPlan& threads) {
    ProfileMerge merge;
    auto next = names.begin();
    Inputs().Merge(
        [&] { return next == names.end() ? std::nullopt : std::optional<std::string>(*next++); },
        threads, merge);
    return ptick::testing::LinesOf(merge);
  };
  const std::string want = lines_with({.threads = 1});
  EXPECT_EQ(opened_, names);
  for (const unsigned threads : {2U, 3U, 8U}) {
    for (const std::size_t block_size : {std::size_t{200}, std::size_t{5000}}) {
      const ThreadPlan plan = {.threads = threads, .bytes_alone = 1000, .block_size = block_size};
      EXPECT_EQ(lines_with(plan), want) << threads << " threads, blocks of " << block_size;
    }
  }
  texts_["run30"] += "PROFILE:bogus\n";
  try {
    lines_with({.threads = 3, .bytes_alone = 1000, .block_size = 200});
    FAIL() << "merged";
  } catch (const Trouble& trouble) {
    EXPECT_EQ(MessageLine("p", trouble.What()),
              "p: run30: line 301: unknown record type: PROFILE:bogus\n");
  }
}

}  // namespace

}  // namespace ptick::companion
