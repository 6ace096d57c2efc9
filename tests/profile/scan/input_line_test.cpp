#include "profile/scan/input_line.h"

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

/// What the scan makes of a line: its numbers and the text; "left" when it leaves the line.
std::string Take(std::string_view record, std::string_view after) {
  const testing::ScannedLine line("PROFILE:input\t" + Tabs(record), after);
  InputLine input;  // NOLINT(*-member-init): filled by the scan
  if (!ScanInputLine(line.Begin(), input)) {
    return "left";
  }
  if (input.next != line.Next()) {
    return "wrong end";
  }
  std::string text;
  for (const std::uint32_t number : input.numbers) {
    text += std::to_string(number) + ",";
  }
  return text + std::string(input.text);
}

struct Row {
  std::string record;  ///< what follows the type; "|" is a TAB
  std::string want;
};

void ExpectTaken(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    for (const std::string_view after : testing::TextsAfter()) {
      EXPECT_EQ(Take(row.record, after), Tabs(row.want)) << row.record << " before " << after;
    }
  }
}

TEST(InputLine, TakesLinesInTheirUsualForm) {
  ExpectTaken({
      {"13|4|500120|500180|4711", "13,4,500120,500180,4711"},
      {"0|0|0|0|x", "0,0,0,0,x"},
      {"13|1|2147483647|1000000000|x", "13,1,2147483647,1000000000,x"},
      {"10|0|1|2|", "10,0,1,2,"},
      {"13|1|1|2|a|b", "13,1,1,2,a|b"},
      {"13|1|1|2| ", "13,1,1,2, "},
      {"13|1|1|2|\x01\x0b\x7f\xfc\xfd\xff", "13,1,1,2,\x01\x0b\x7f\xfc\xfd\xff"},
      {"13|1|1|2|PROFILE:input", "13,1,1,2,PROFILE:input"},
  });
}

TEST(InputLine, LeavesAnyOtherLine) {
  for (const std::string& record : std::vector<std::string>{"",
                                                            "|",
                                                            "13",
                                                            "13|1",
                                                            "13|1|1",
                                                            "13|1|1|2",
                                                            "13|1|1||2",
                                                            "|13|1|1|2|x",
                                                            "13||1|1|2|x",
                                                            "13|1|1|2||",
                                                            "13|1|1|2||x",
                                                            "13|1|1|2|x|",
                                                            "13|1|1|2|x||y",
                                                            "013|1|1|2|x",
                                                            "13|00|1|2|x",
                                                            "13|1|-1|2|x",
                                                            "13|1|1|2.0|x",
                                                            "13|1|1|abc|x",
                                                            "13|1|1|2147483648|x",
                                                            "13|1|1|12345678901|x",
                                                            " 13|1|1|2|x",
                                                            "13\x01|1|1|2|x"}) {
    ExpectTaken({{record, "left"}});
  }
}

TEST(InputLine, FindsTheEndAndEmptyFieldsWhereverTheyAre) {
  for (std::size_t size = 1; size <= 200; ++size) {
    const std::string text(size, 't');
    ExpectTaken({{"13|1|1|2|" + text, "13,1,1,2," + text},
                 {"13|1|1|2|" + text + "|u", "13,1,1,2," + text + "|u"},
                 {"13|1|1|2|" + text + "|", "left"},
                 {"13|1|1|2|" + text + "||u", "left"}});
  }
}

}  // namespace

}  // namespace ptick
