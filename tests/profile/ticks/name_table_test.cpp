#include "profile/ticks/name_table.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ptick {

namespace {

std::vector<std::string> Names(const NameTable& table) {
  std::vector<std::string> names;
  for (NameTable::Id id = 0; id < table.size(); ++id) {
    names.emplace_back(table[id]);
  }
  return names;
}

TEST(NameTable, NumbersNamesInOrderOfFirstAppearance) {
  NameTable table;
  EXPECT_EQ(table.size(), 0U);
  struct Row {
    std::string_view name;
    NameTable::Id want;
  };
  const std::vector<Row> rows = {
      {"b", 0}, {"a", 1}, {"b", 0}, {"B", 2}, {"", 3}, {"a ", 4}, {" a", 5}, {"a", 1}, {"", 3},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(table.Intern(row.name), row.want) << row.name;
  }
  EXPECT_EQ(Names(table), (std::vector<std::string>{"b", "a", "B", "", "a ", " a"}));
}

// Names are compared in words: a difference counts at every place of names of every length.
TEST(NameTable, TellsNamesApartThatDifferInOneByte) {
  for (std::size_t size = 1; size <= 40; ++size) {
    NameTable table;
    const std::string name(size, 'n');
    table.Intern(name);
    for (std::size_t at = 0; at < size; ++at) {
      std::string other = name;
      other[at] = 'N';
      EXPECT_EQ(table.Intern(other), at + 1) << other;
    }
    EXPECT_EQ(table.Intern(name), 0U) << name;
    EXPECT_EQ(table.Intern(name + 'n'), size + 1) << name;
  }
}

// The hash decides where to look, never what is equal.
TEST(NameTable, TellsNamesOfOneHashApart) {
  for (std::size_t size = 1; size <= 40; ++size) {
    NameTable table;
    const std::string name(size, 'n');
    table.Intern(name, 7);
    for (std::size_t at = 0; at < size && at < 10; ++at) {
      std::string other = name;
      other[size - 1 - at] = 'N';
      EXPECT_EQ(table.Intern(other, 7), at + 1) << other;
      EXPECT_EQ(table.Intern(other, 7), at + 1) << other;
    }
    EXPECT_EQ(table.Intern(name, 7), 0U) << name;
  }
}

TEST(NameTable, TakesAnyBytes) {
  using std::string_view_literals::operator""sv;
  const std::vector<std::string_view> names = {
      "\0"sv,   "\0\0"sv,         "a\0"sv,    "\0a"sv,
      "\xff"sv, "\xfe\xfd\xfc"sv, "a\tb\n"sv, "\0\0\0\0\0\0\0\0"sv,
  };
  NameTable table;
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(table.Intern(names[i]), i) << names[i];
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    EXPECT_EQ(table.Intern(names[i]), i) << names[i];
    EXPECT_EQ(table[static_cast<NameTable::Id>(i)], names[i]);
  }
}

TEST(NameTable, KeepsNumbersWhileItGrows) {
  constexpr NameTable::Id kCount = 200000;
  NameTable table;
  const auto name = [](NameTable::Id id) { return "PROGRAM." + std::to_string(id * 7919); };
  for (NameTable::Id id = 0; id < kCount; ++id) {
    ASSERT_EQ(table.Intern(name(id)), id);
  }
  EXPECT_EQ(table.size(), kCount);
  int unlikely = 0;
  for (NameTable::Id id = kCount; id-- > 0;) {
    table.PrefetchSlot(table.Hash(name(id)));
    unlikely += table.LikelyId(table.Hash(name(id))) == id ? 0 : 1;
    ASSERT_TRUE(table.Is(id, name(id)));
    ASSERT_EQ(table.Intern(name(id)), id);
    ASSERT_EQ(table[id], name(id));
  }
  EXPECT_EQ(table.size(), kCount);
  EXPECT_LE(unlikely, 50) << "a few of so many have the hash of another";
}

TEST(NameTable, KnowsTheNameOfANumber) {
  NameTable table;
  EXPECT_FALSE(table.Is(0, ""));
  table.Intern("A");
  table.Intern("");
  EXPECT_TRUE(table.Is(0, "A"));
  EXPECT_TRUE(table.Is(1, ""));
  EXPECT_FALSE(table.Is(0, "a"));
  EXPECT_FALSE(table.Is(0, ""));
  EXPECT_FALSE(table.Is(1, "A"));
  EXPECT_FALSE(table.Is(2, ""));
}

// Hints are for any number that LikelyId gives, one that no name has included.
TEST(NameTable, TakesHintsWhileItIsEmpty) {
  NameTable table;
  const NameTable::Id id = table.LikelyId(table.Hash("A"));
  table.PrefetchSlot(table.Hash("A"));
  table.PrefetchEnd(id);
  table.PrefetchText(id);
  EXPECT_EQ(table.size(), 0U);
}

// The hash decides where to look, and nothing else.
TEST(NameTable, GivesTheSameNumbersWhateverTheSecret) {
  for (const std::uint64_t word : {0U, 1U, 0xFFFFFFFFU}) {
    NameTable table(HashSecret{.first = word, .second = ~word});
    for (int pass = 1; pass <= 2; ++pass) {
      for (NameTable::Id id = 0; id < 2000; ++id) {
        ASSERT_EQ(table.Intern("name " + std::to_string(id)), id) << word;
      }
    }
  }
}

}  // namespace

}  // namespace ptick
