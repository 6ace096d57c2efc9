#include "value/pattern.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "value/text.h"

namespace ptick {

namespace {

using namespace std::string_literals;

struct Row {
  std::string of;
  std::string_view pattern;
};

TEST(Pattern, MatchesTheWholeText) {
  const std::vector<Row> rows = {
      {"1", "1N0N"},
      {"12", "1N0N"},
      {"007", "1N0N"},
      {std::string(1000, '9'), "1N0N"},
      {"10-20", "1N0N'-'1N0N"},
      {"1-2", "1N0N'-'1N0N"},
      {"000-999999999999999999999", "1N0N'-'1N0N"},
      {"", ""},
      {"", "0N"},
      {"", "00N"},
      {"", "''"},
      {"", "0N0N''"},
      {"123", "3N"},
      {"123", "03N"},
      {"1234567890", "10N"},
      {"12", "0N1N"},
      {"1", "0N1N"},
      {"12345", "0N2N0N1N"},
      {"123", "0N1N1N1N"},
      {"112", "0N'12'"},
      {"1212", "0N'12'"},
      {"12", "'1'0N'2'"},
      {"9a9", "0N'a'0N"},
      {"a", "0N'a'0N"},
      {"abc", "'abc'"},
      {"abc", "'a''b''c'"},
      {"1N", "1N'N'"},
      {"\xFE"
       "5\xFF",
       "'\xFE'1N'\xFF'"},
      {"a\0"s, std::string_view("'a\0'", 4)},
  };
  for (const auto& row : rows) {
    EXPECT_TRUE(Matches(row.of, row.pattern)) << row.of << " : " << row.pattern;
  }
}

TEST(Pattern, RefusesEverythingElse) {
  const std::vector<Row> rows = {
      {"", "1N0N"},
      {"12a", "1N0N"},
      {"a12", "1N0N"},
      {"1 2", "1N0N"},
      {" 12", "1N0N"},
      {"12\n", "1N0N"},
      {"12\0"s, "1N0N"},
      {"-1", "1N0N"},
      {"1.5", "1N0N"},
      {"\xB2", "1N0N"},
      {"10", "1N0N'-'1N0N"},
      {"10-", "1N0N'-'1N0N"},
      {"-20", "1N0N'-'1N0N"},
      {"-", "1N0N'-'1N0N"},
      {"10--20", "1N0N'-'1N0N"},
      {"10-20-30", "1N0N'-'1N0N"},
      {"10 - 20", "1N0N'-'1N0N"},
      {"a", ""},
      {"12", "3N"},
      {"1234", "3N"},
      {"", "0N1N"},
      {"1", "0N1N1N"},
      {"abc", "'ab'"},
      {"ab", "'abc'"},
      {"ABC", "'abc'"},
      {"12", "99999999999999999999999N"},
      {"12", "18446744073709551615N"},
  };
  for (const auto& row : rows) {
    EXPECT_FALSE(Matches(row.of, row.pattern)) << row.of << " : " << row.pattern;
  }
}

TEST(Pattern, MalformedMatchesNothing) {
  for (const std::string_view pattern :
       {"N", "1", "1n", "-1N", "+1N", "1A", "'abc", "'", "1N'", "0N ", "0X", "1N0", "abc"}) {
    for (const std::string_view text : {"", "1", "12", "abc", "N", "'abc", "1N"}) {
      EXPECT_FALSE(Matches(text, pattern)) << text << " : " << pattern;
    }
  }
}

TEST(Pattern, AgreesWithCountingDigits) {
  for (std::size_t digits = 0; digits < 12; ++digits) {
    const std::string text(digits, '4');
    for (std::size_t count = 1; count < 12; ++count) {
      const std::string code = std::to_string(count) + "N";
      const std::vector<bool> results = {Matches(text, code), Matches(text, code + "0N"),
                                         Matches(text, "0N" + code)};
      const std::vector<bool> want = {digits == count, digits >= count, digits >= count};
      EXPECT_EQ(results, want) << digits << " : " << code;
    }
  }
}

}  // namespace

}  // namespace ptick
