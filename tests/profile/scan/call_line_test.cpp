#include "profile/scan/call_line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"
#include "support/scanned_line.h"

namespace ptick {

namespace {

using testing::Tabs;

/// What the scan makes of a line: caller, subroutine and times; "left" when it leaves the line.
std::string Take(std::string_view record, std::string_view after) {
  const testing::ScannedLine line("PROFILE:subroutine_call\t" + Tabs(record), after);
  const CallLine call = ScanCallLine(line.Begin());
  if (call.next == nullptr) {
    return "left";
  }
  if (call.next != line.Next()) {
    return "wrong end";
  }
  return std::string(call.caller) + "," + std::string(call.called) + "," +
         std::to_string(call.times);
}

struct Row {
  std::string record;  ///< what follows the type; "|" is a TAB
  std::string want;
};

void ExpectTaken(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    for (const std::string_view after : testing::TextsAfter()) {
      EXPECT_EQ(Take(row.record, after), row.want) << row.record << " before " << after;
    }
  }
}

TEST(CallLine, TakesLinesInTheirUsualForm) {
  ExpectTaken({
      {"A B|1", "A,B,1"},
      {"ORDER.ENTRY CALC.TAX|0", "ORDER.ENTRY,CALC.TAX,0"},
      {"A B|12345678", "A,B,12345678"},
      // The second word is what was called, however many there are, and whatever they are.
      {"A B C D|5", "A,B,5"},
      {" B|5", ",B,5"},
      {"A |5", "A,,5"},
      {"A  B|5", "A,,5"},
      {" |5", ",,5"},
      {"\x0b\xff \xfd\xfc|5", "\x0b\xff,\xfd\xfc,5"},
  });
}

TEST(CallLine, LeavesAnyOtherLine) {
  for (const std::string& record : std::vector<std::string>{
           "",          "|",       "A",      "A B",    "A B|",          "AB|5",
           "|5",        "|A B|5",  "A B||5", "A B|5|", "A B|5|6",       "A B|05",
           "A B|-5",    "A B|5.0", "A B|x",  "A B|5 ", "A B|123456789", "A\x01 B|5",
           "A B|5\x01", "A |B|5"}) {
    ExpectTaken({{record, "left"}});
  }
}

TEST(CallLine, FindsTheFieldsWhereverTheyAre) {
  std::size_t taken = 0;
  for (std::size_t caller = 0; caller <= 66; ++caller) {
    for (std::size_t called = 0; called <= 66; ++called) {
      const std::string names = std::string(caller, 'A') + " " + std::string(called, 'B');
      const std::string want = std::string(caller, 'A') + "," + std::string(called, 'B') + ",77";
      const bool fits = names.size() + 4 <= 64;
      ASSERT_EQ(Take(names + "|77", "x"), fits ? want : "left") << names;
      taken += fits ? 1 : 0;
    }
  }
  EXPECT_GT(taken, 1000U);
}

}  // namespace

}  // namespace ptick
