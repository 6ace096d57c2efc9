#include "ptick_merge/name_list.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "companion/problem.h"
#include "support/text_record.h"

namespace ptick::companion {

namespace {

using ptick::testing::TextRecord;

std::vector<std::string> NamesOf(const NameList& names) {
  std::vector<std::string> all;
  NameList::Walk walk(names);
  while (const std::optional<std::string> name = walk.Next()) {
    all.push_back(*name);
  }
  EXPECT_EQ(names.size(), all.size());
  return all;
}

NameList ListOf(const std::string& text, NameEnd end, const std::string& list = "list",
                TextRecord::End record_end = TextRecord::End::kReached) {
  return {list, end, [&](const std::string& /*name*/) {
            return std::make_unique<TextRecord>(text, 3, record_end);
          }};
}

std::string TroubleOf(const std::string& text, NameEnd end, const std::string& list = "list",
                      TextRecord::End record_end = TextRecord::End::kReached) {
  try {
    return "names: " + std::to_string(ListOf(text, end, list, record_end).size());
  } catch (const Trouble& trouble) {
    return MessageLine("p", trouble.What());
  }
}

TEST(NameList, HasTheNamesOfAList) {
  struct Row {
    std::string text;
    NameEnd end;
    std::vector<std::string> want;
  };
  using std::string_literals::operator""s;
  const std::string long_name(200000, 'n');
  const std::vector<Row> rows = {
      {"a\nb\n", NameEnd::kLineEnd, {"a", "b"}},
      {"a\nb", NameEnd::kLineEnd, {"a", "b"}},
      {"\n\na\n\n\nb\n\n", NameEnd::kLineEnd, {"a", "b"}},
      {" a \r\n-\n", NameEnd::kLineEnd, {" a \r", "-"}},
      {"a\0b\n"s, NameEnd::kLineEnd, {"a\0b"s}},
      {"a\0b\0"s, NameEnd::kZero, {"a", "b"}},
      {"a\nb\0\nc"s, NameEnd::kZero, {"a\nb", "\nc"}},
      {long_name, NameEnd::kZero, {long_name}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(NamesOf(ListOf(row.text, row.end)), row.want) << row.text.substr(0, 20);
  }
}

TEST(NameList, HasTheNamesThatWereTyped) {
  NameList names;
  EXPECT_EQ(NamesOf(names), std::vector<std::string>{});
  for (const char* name : {"a", "", "b\nc", ""}) {
    names.Add(name);
  }
  EXPECT_EQ(NamesOf(names), (std::vector<std::string>{"a", "", "b\nc", ""}));
}

TEST(NameList, RefusesAListThatIsWrong) {
  using std::string_literals::operator""s;
  const std::string nothing = "p: list: names no profile\n";
  EXPECT_EQ(TroubleOf("", NameEnd::kLineEnd), nothing);
  EXPECT_EQ(TroubleOf("\n\n", NameEnd::kLineEnd), nothing);
  EXPECT_EQ(TroubleOf("", NameEnd::kZero), nothing);
  EXPECT_EQ(TroubleOf("\0"s, NameEnd::kZero), "p: list: name 1 is empty\n");
  EXPECT_EQ(TroubleOf("a\0b\0\0c"s, NameEnd::kZero), "p: list: name 3 is empty\n");
  EXPECT_EQ(TroubleOf("a\n", NameEnd::kLineEnd, "list", TextRecord::End::kFails),
            "p: list: Input/output error\n");
  EXPECT_EQ(TroubleOf("a\n-\n", NameEnd::kLineEnd, "-"),
            "p: standard input: '-' cannot be a profile where the names come from there\n");
  EXPECT_EQ(TroubleOf("a\n--\n", NameEnd::kLineEnd, "-"), "names: 2");
}

}  // namespace

}  // namespace ptick::companion
