#include "profile/scan/trace_line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "support/profiles.h"
#include "support/scanned_line.h"

namespace ptick {

namespace {

using testing::ScannedLine;
using testing::Tabs;
using testing::TextsAfter;

/// What the scan makes of a line: its fields, or "left" when it leaves the line to the parser.
std::string Take(std::string_view line, std::string_view after) {
  const ScannedLine scanned(line, after);
  const TraceLine trace = ScanTraceLine(scanned.Begin());
  if (trace.next == nullptr) {
    return "left";
  }
  if (trace.next != scanned.Next()) {
    return "wrong end";
  }
  return std::string(trace.program) + "|" + std::to_string(trace.line) + "|" +
         std::to_string(trace.ticks);
}

TEST(TraceLine, TakesLinesInTheirUsualForm) {
  const std::vector<std::string_view> rows = {
      "A|1|2",           "PROG|10|3",           "a name with blanks|12345678|87654321",
      "ORDER.ENTRY|0|0", "X|99999999|99999999", "\x0b\x1f\x7f\x80\xfd\xff|1|2",
      "ABCDEFG|12|3",    "ABCDEFGH|12|3",       "ABCDEFGHI|12|3",
      "123|45|6",        "PROFILE:trace|1|1",
  };
  for (const std::string_view row : rows) {
    for (const std::string_view after : TextsAfter()) {
      EXPECT_EQ(Take("PROFILE:trace\t" + Tabs(row), after), row) << row;
    }
  }
}

TEST(TraceLine, LeavesAnyOtherLine) {
  const std::vector<std::string> rows = {
      "",
      "PROFILE:",
      "PROFILE:trace",
      "PROFILE:trace|",
      "PROFILE:trace|A",
      "PROFILE:trace|A|",
      "PROFILE:trace|A|1",
      "PROFILE:trace|A|1|",
      "PROFILE:trace|A|1|2|",
      "PROFILE:trace|A|1|2|3",
      "PROFILE:trace||1|2",
      "PROFILE:trace|A||2",
      "PROFILE:trace|A||1|2",
      "PROFILE:trace|A|1||2",
      "PROFILE:trace||A|1|2",
      "PROFILE:trace|A|1|",
      "PROFILE:trace|A|01|2",
      "PROFILE:trace|A|1|02",
      "PROFILE:trace|A|00|2",
      "PROFILE:trace|A|123456789|2",
      "PROFILE:trace|A|1|123456789",
      "PROFILE:trace|A|-1|2",
      "PROFILE:trace|A|1|+2",
      "PROFILE:trace|A|1.5|2",
      "PROFILE:trace|A|1|2.0",
      "PROFILE:trace|A|x|2",
      "PROFILE:trace|A|1|2x",
      "PROFILE:trace|A|1|x2",
      "PROFILE:trace|A|1/|2",
      "PROFILE:trace|A|1:|2",
      "PROFILE:trace|A|1|2\r",
      "PROFILE:trace|A| 1|2",
      "PROFILE:trace|A|1|2 ",
      "PROFILE:trace|A\x01|1|2",
      "PROFILE:trace|A|1\x0a",
      std::string("PROFILE:trace|A\0|1|2", 20),
      std::string("PROFILE:trace|A|1\0|2", 20),
      "PROFILE:trace |A|1|2",
      "PROFILE:traces|A|1|2",
      "PROFILE:trac|A|1|2",
      "PROFILE:TRACE|A|1|2",
      "profile:trace|A|1|2",
      "|PROFILE:trace|A|1|2",
      " PROFILE:trace|A|1|2",
      "PROFILE: trace|A|1|2",
      "PROFILE:ticks|3",
      "PROFILE:trace\xfe|A|1|2",
      "PROFILE:trace|A|1|\xb2",
      "a line of no profile at all",
  };
  for (const std::string& row : rows) {
    for (const std::string_view after : TextsAfter()) {
      EXPECT_EQ(Take(Tabs(row), after), "left") << row << " before " << after;
    }
  }
}

/// `size` digits, none of them like its neighbours.
std::string Number(std::size_t size) { return std::string("9081726354").substr(0, size); }

// Wherever the fields of a line are, it is either taken as it is or left.
TEST(TraceLine, FindsTheFieldsWhereverTheyAre) {
  std::size_t taken = 0;
  for (std::size_t name_size = 0; name_size <= 70; ++name_size) {
    for (std::size_t line_size = 0; line_size <= 9; ++line_size) {
      for (std::size_t ticks_size = 0; ticks_size <= 9; ++ticks_size) {
        const std::string row =
            std::string(name_size, 'n') + "|" + Number(line_size) + "|" + Number(ticks_size);
        const std::string line = "PROFILE:trace\t" + Tabs(row);
        const bool usual =
            name_size > 0 && line_size > 0 && ticks_size > 0 && line_size <= 8 && ticks_size <= 8;
        const std::string result = Take(line, "1");
        // Long lines may be left.
        ASSERT_TRUE(usual ? result == row || (result == "left" && line.size() > 60)
                          : result == "left")
            << row << " gives " << result;
        taken += usual ? 1 : 0;
      }
    }
  }
  EXPECT_GT(taken, 1000U);
}

// A byte that is no digit is noticed at every place of a number.
TEST(TraceLine, LeavesNumbersThatHoldOtherBytes) {
  for (int byte = 0; byte < 256; ++byte) {
    if (byte >= '0' && byte <= '9') {
      continue;
    }
    for (std::size_t at = 0; at < 8; ++at) {
      std::string number = "12345678";
      number[at] = static_cast<char>(byte);
      ASSERT_EQ(Take("PROFILE:trace\tA\t" + number + "\t5", "1"), "left") << byte << " at " << at;
      // A line end in the ticks makes another, shorter line of it.
      if (byte != '\n' || at == 0) {
        ASSERT_EQ(Take("PROFILE:trace\tA\t5\t" + number, "1"), "left") << byte << " at " << at;
      }
    }
  }
}

}  // namespace

}  // namespace ptick
