#include "profile/scan/perform_line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "profile/scan/performed_command.h"
#include "support/profiles.h"
#include "support/scanned_line.h"

namespace ptick {

namespace {

using testing::ScannedLine;
using testing::Tabs;
using testing::TextsAfter;

std::string NumberText(std::uint32_t number) {
  return number == kNoOrdinaryNumber ? "" : std::to_string(number);
}

/// What the scan makes of a line: the numbers, the type and the command, with "]" between; "left"
/// when it leaves the line.
std::string Take(std::string_view line, std::string_view after) {
  const ScannedLine scanned(line, after);
  PerformLine perform;  // NOLINT(*-member-init): filled by the scan
  if (!ScanPerformLine(scanned.Begin(), perform)) {
    return "left";
  }
  if (perform.next != scanned.Next()) {
    return "wrong end";
  }
  std::string text;
  for (const std::uint32_t number : perform.numbers) {
    text += NumberText(number) + "]";
  }
  return text + std::string(perform.type) + "]" + std::string(perform.command);
}

std::string TakeCommand(std::string_view line, std::string_view after) {
  const ScannedLine scanned(line, after);
  const PerformCommand command = ScanPerformCommand(scanned.Begin());
  if (command.next == nullptr) {
    return "left";
  }
  return command.next == scanned.Next() ? std::string(command.text) : "wrong end";
}

struct Row {
  std::string record;  ///< "|" is a TAB
  std::string want;
  std::string want_command;  ///< where nothing else is wanted
};

void ExpectTaken(const std::vector<Row>& rows) {
  for (const Row& row : rows) {
    for (const std::string_view after : TextsAfter()) {
      const std::string line = "PROFILE:" + Tabs(row.record);
      EXPECT_EQ(Take(line, after), row.want) << row.record << " before " << after;
      EXPECT_EQ(TakeCommand(line, after), row.want_command) << row.record << " before " << after;
    }
  }
}

TEST(PerformLine, TakesLinesInTheirUsualForm) {
  ExpectTaken({
      {"perform|startclock|70873174|endclock|70873271|starttime|1773752062|endtime|1773752063|"
       "ticks|95|usrcpu|74|syscpu|21|type|intr|cmd|LIST STOCK WITH BIN = 3978",
       "70873174]70873271]1773752062]1773752063]95]74]21]intr]LIST STOCK WITH BIN = 3978",
       "LIST STOCK WITH BIN = 3978"},
      {"perform|cmd|C", "]]]]]]]]C", "C"},
      {"perform|type|t|cmd|C", "]]]]]]]t]C", "C"},
      {"perform|cmd|cmd", "]]]]]]]]cmd", "cmd"},
      // Keys in any order; the last of several counts.
      {"perform|type|qry|syscpu|7|usrcpu|6|ticks|5|endtime|4|starttime|3|endclock|2|startclock|1|"
       "cmd|X",
       "1]2]3]4]5]6]7]qry]X", "X"},
      {"perform|ticks|1|ticks|2|type|a|type|b|cmd|C", "]]]]2]]]b]C", "C"},
      // Numbers of all sizes.
      {"perform|ticks|0|usrcpu|9|syscpu|12345678|startclock|123456789|endclock|2147483647|cmd|C",
       "123456789]2147483647]]]0]9]12345678]]C", "C"},
      {"perform|type|fifteen letters|cmd|C", "]]]]]]]fifteen letters]C", "C"},
      // A command may hold any byte but few.
      {"perform|cmd|\x0b\x1f \x7f\x80\xfc\xff", "]]]]]]]]\x0b\x1f \x7f\x80\xfc\xff",
       "\x0b\x1f \x7f\x80\xfc\xff"},
      {"perform|cmd| C ", "]]]]]]]] C ", " C "},
      // The mark of a shell command goes with the byte after it.
      {"perform|cmd|\xffKls", "]]]]]]]]ls", "ls"},
      {"perform|cmd|\xffK\xffKls", "]]]]]]]]\xffKls", "\xffKls"},
  });
}

TEST(PerformLine, LeavesAnyOtherLine) {
  for (const std::string& record : std::vector<std::string>{
           "perform|", "perform||cmd|C", "perform|cmd", "perform|cmd|", "perform|cmd||C",
           "perform|ticks|5", "perform|ticks|5|", "perform|ticks|5|cmd", "perform|ticks|5|cmd|",
           "perform|ticks|5||cmd|C", "perform|ticks||5|cmd|C", "perform||ticks|5|cmd|C",
           "perform|cmd|C|", "perform|cmd|C||D", "perform|CMD|C", "perform|cmds|C",
           "perform|cm|d|C", "perform|ticks|5|type|t",
           // A value mark spreads over several values, wherever it is.
           "perform|type|t\xfdx|cmd|C", "perform|cmd|C\xfd", "perform|cmd|\xfd",
           "perform|ticks|\xfd|cmd|C", "perform|type|\xfd\xfd\xfdtype",
           // Nothing remains of these commands.
           "perform|cmd|\xff", "perform|cmd|\xffK", "perform|cmd|\xff|"}) {
    ExpectTaken({{record, "left", "left"}});
  }
}

// What is not wanted may be odd where only commands are wanted.
TEST(PerformLine, TakesMoreLinesWhereOnlyTheCommandIsWanted) {
  ExpectTaken({
      {"perform|ticks|007|cmd|C", "left", "C"},
      {"perform|ticks|1.5|cmd|C", "left", "C"},
      {"perform|ticks|-5|cmd|C", "left", "C"},
      {"perform|ticks|5x|cmd|C", "left", "C"},
      {"perform|ticks|2147483648|cmd|C", "left", "C"},
      {"perform|ticks|12345678901|cmd|C", "left", "C"},
      {"perform|ticks|1234567890123456789|cmd|C", "left", "C"},
      {"perform|type|more than fifteen|cmd|C", "left", "C"},
      {"perform|unknown|5|cmd|C", "left", "C"},
      {"perform|cmd|A|B", "left", "A\tB"},
      {"perform|cmd|C|cmd|D", "left", "C\tcmd\tD"},
      {"perform|cmd|\x01", "left", "\x01"},
      {"perform|cmd|\xff|ls", "left", "ls"},
      // A field of three letters that begins with "c" is looked at by those who know all rules.
      {"perform|cab|5|cmd|C", "left", "left"},
      {"perform|type|cmd|cmd|C", "]]]]]]]cmd]C", "left"},
      {"perform|type|cab|cmd|C", "]]]]]]]cab]C", "left"},
      {"perform|type|c|cmd|C", "]]]]]]]c]C", "C"},
      {"perform|type|cabs|cmd|C", "]]]]]]]cabs]C", "C"},
  });
}

// Wherever in the 64 bytes that are looked at together a field begins.
TEST(PerformLine, FindsTheFieldsWhereverTheyAre) {
  for (std::size_t before = 0; before <= 200; ++before) {
    const std::string unknown = before == 0 ? "" : "key|" + std::string(before, 'v') + "|";
    for (const std::size_t size : {1U, 30U, 63U, 64U, 65U, 127U, 128U, 129U, 500U}) {
      const std::string command(size, 'C');
      ExpectTaken({{"perform|" + unknown + "cmd|" + command,
                    before == 0 ? "]]]]]]]]" + command : "left", command}});
      const std::string with_tab = command + "|D";
      ExpectTaken({{"perform|" + unknown + "cmd|" + with_tab, "left", Tabs(with_tab)}});
    }
  }
}

TEST(PerformLine, NoticesAnEmptyFieldWhereverItIs) {
  for (std::size_t before = 1; before <= 200; ++before) {
    const std::string value(before, 'v');
    ExpectTaken({{"perform|key|" + value + "||cmd|C", "left", "left"},
                 {"perform|key|" + value + "|cmd|C||D", "left", "left"},
                 {"perform|key|" + value + "|cmd|C|", "left", "left"},
                 {"perform|key|" + value + "|cmd|C\xfd", "left", "left"}});
  }
}

// Keys are read up to field 1000.
TEST(PerformLine, LeavesLinesOfManyFields) {
  std::string record = "perform|";
  for (int pair = 0; pair < 500; ++pair) {
    record += "ticks|1|";
  }
  ExpectTaken({{record + "cmd|C", "left", "left"}});
}

}  // namespace

}  // namespace ptick
