#include "profile/merge/merge_keys.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"

namespace ptick {

namespace {

using testing::Tabs;

TEST(MergeKeys, AreSplitBeforeAnOrdinaryNumber) {
  struct Row {
    std::string text;
    std::string head;
    std::uint32_t number;
  };
  constexpr std::uint32_t kNone = MergeKey::kNoNumber;
  const std::vector<Row> rows = {
      {"trace|P|10", "trace|P", 10},
      {"trace|P|0", "trace|P", 0},
      {"trace||7", "trace|", 7},
      {"|7", "", 7},
      {"user_ticks|3", "user_ticks", 3},
      {"a|4294967294", "a", 4294967294},
      {"a|4294967295", "a|4294967295", kNone},
      {"a|4294967296", "a|4294967296", kNone},
      {"a|99999999999", "a|99999999999", kNone},
      {"a|007", "a|007", kNone},
      {"a|00", "a|00", kNone},
      {"a|1.5", "a|1.5", kNone},
      {"a|-1", "a|-1", kNone},
      {"a| 1", "a| 1", kNone},
      {"a|", "a|", kNone},
      {"a|1x", "a|1x", kNone},
      {"a|x1", "a|x1", kNone},
      {"12", "12", kNone},
      {"", "", kNone},
  };
  for (const Row& row : rows) {
    const std::string text = Tabs(row.text);
    const MergeKey key = SplitKey(text);
    EXPECT_EQ(key.head, Tabs(row.head)) << row.text;
    EXPECT_EQ(key.number, row.number) << row.text;
  }
}

TEST(MergeKeys, AreNumberedInOrderOfFirstAppearance) {
  MergeKeys keys;
  const std::vector<std::string> texts = {"trace\tP\t10",  "trace\tP\t11", "trace\tp\t10",
                                          "trace\tP\t010", "trace\tP",     "trace\tP\t"};
  for (MergeKeys::Id id = 0; id < texts.size(); ++id) {
    EXPECT_EQ(keys.Intern(SplitKey(texts[id])), id);
  }
  EXPECT_EQ(keys.size(), texts.size());
  for (MergeKeys::Id id = 0; id < texts.size(); ++id) {
    EXPECT_EQ(keys.Intern(SplitKey(texts[id])), id) << "again";
    std::string text = ">";
    keys.AppendText(id, text);
    EXPECT_EQ(text, ">" + texts[id]);
  }
  EXPECT_EQ(keys.size(), texts.size());
}

TEST(MergeKeys, KnowWhoseNumberAnIdIs) {
  MergeKeys keys;
  EXPECT_FALSE(keys.Is(0, SplitKey("a\t1")));
  keys.Intern(SplitKey("a\t1"));
  keys.Intern(SplitKey("b"));
  EXPECT_TRUE(keys.Is(0, SplitKey("a\t1")));
  EXPECT_FALSE(keys.Is(0, SplitKey("a\t2")));
  EXPECT_FALSE(keys.Is(0, SplitKey("b\t1")));
  EXPECT_FALSE(keys.Is(0, SplitKey("a")));
  EXPECT_TRUE(keys.Is(1, SplitKey("b")));
  EXPECT_FALSE(keys.Is(2, SplitKey("b")));
}

// Through many doublings of the index, with many heads and with many numbers.
TEST(MergeKeys, AreFoundAgainHoweverManyThereAre) {
  MergeKeys keys;
  const auto text = [](MergeKeys::Id id) {
    return id % 2 == 0 ? "head" + std::to_string(id) : "trace\tP\t" + std::to_string(id);
  };
  constexpr MergeKeys::Id kCount = 60000;
  for (MergeKeys::Id id = 0; id < kCount; ++id) {
    ASSERT_EQ(keys.Intern(SplitKey(text(id))), id);
  }
  for (MergeKeys::Id id = 0; id < kCount; ++id) {
    ASSERT_EQ(keys.Intern(SplitKey(text(id))), id) << "again";
  }
}

TEST(MergeKeys, HaveTheSameNumbersWhateverTheSecret) {
  for (const std::uint64_t word : {0U, 1U, 0xFFFFFFFFU}) {
    MergeKeys keys(std::pmr::get_default_resource(), HashSecret{.first = word, .second = ~word});
    for (int pass = 1; pass <= 2; ++pass) {
      for (MergeKeys::Id id = 0; id < 2000; ++id) {
        const std::string text = "trace\tP" + std::to_string(id % 7) + "\t" + std::to_string(id);
        ASSERT_EQ(keys.Intern(SplitKey(text)), id) << word;
      }
    }
  }
}

TEST(MergeKeys, HaveACellEach) {
  MergeKeys keys;
  for (MergeKeys::Id id = 0; id < 100; ++id) {
    keys.Intern(SplitKey("head\t" + std::to_string(id)));
    EXPECT_EQ(keys.CellOf(id), 0);
    keys.CellOf(id) = id;
  }
  for (MergeKeys::Id id = 0; id < 100; ++id) {
    EXPECT_EQ(keys.CellOf(id), id);
  }
}

// Batches of which some keys are there, some are not, and some come twice.
TEST(MergeKeys, AreLookedUpManyAtATime) {
  for (const MergeKeys::Id known : {MergeKeys::Id{1}, MergeKeys::Id{10001}}) {
    MergeKeys keys;
    for (MergeKeys::Id id = 0; id < known; ++id) {
      keys.Intern(SplitKey("head" + std::to_string(id)));
    }
    std::vector<MergeKey> batch;
    std::vector<MergeKeys::Id> want;
    for (int round = 0; round < 20; ++round) {
      for (const std::string_view text : {"head0", "new\t1", "head0\t1", "new\t1", "new\t2", ""}) {
        batch.push_back(SplitKey(text));
      }
      want.insert(want.end(), {0, known, known + 1, known, known + 2, known + 3});
    }
    std::vector<MergeKeys::Id> ids(batch.size());
    keys.Intern(batch, ids.data());
    EXPECT_EQ(ids, want) << known;
    keys.Intern({}, ids.data());
    EXPECT_EQ(ids, want) << known;
  }
}

}  // namespace

}  // namespace ptick
