#include "profile/scan/object_line.h"

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

/// What the scan makes of a line: the name and the number; "left" when it leaves the line.
std::string Take(std::string_view record, std::string_view after) {
  const testing::ScannedLine line("PROFILE:shared_object\t" + Tabs(record), after);
  const ObjectLine object = ScanObjectLine(line.Begin());
  if (object.next == nullptr) {
    return "left";
  }
  return object.next == line.Next() ? std::string(object.name) + "," + std::to_string(object.used)
                                    : "wrong end";
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

TEST(ObjectLine, TakesLinesInTheirUsualForm) {
  ExpectTaken({
      {"/opt/mavro/lib/CUST.017.so|1", "/opt/mavro/lib/CUST.017.so,1"},
      {"a|0", "a,0"},
      {"a b|12345678", "a b,12345678"},
      {"main()|1", "main(),1"},
      {"\x0b\xff \xfd|9", "\x0b\xff \xfd,9"},
  });
}

TEST(ObjectLine, LeavesAnyOtherLine) {
  for (const std::string& record : std::vector<std::string>{"",
                                                            "|",
                                                            "a",
                                                            "a|",
                                                            "|1",
                                                            "|a|1",
                                                            "a||1",
                                                            "a|1|",
                                                            "a|1|2",
                                                            "a|01",
                                                            "a|00",
                                                            "a|-1",
                                                            "a|1.0",
                                                            "a|x",
                                                            "a|1 ",
                                                            "a|123456789",
                                                            "a|12345678901234567890",
                                                            "a\x01|1",
                                                            "a|1\x01",
                                                            "a|1\r"}) {
    ExpectTaken({{record, "left"}});
  }
}

TEST(ObjectLine, FindsTheFieldsWhereverTheyAre) {
  for (std::size_t size = 1; size <= 200; ++size) {
    const std::string name(size, 'n');
    ExpectTaken({{name + "|1", name + ",1"},
                 {name + "|87654321", name + ",87654321"},
                 {name, "left"},
                 {name + "||1", "left"}});
  }
}

}  // namespace

}  // namespace ptick
