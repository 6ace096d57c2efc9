#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"
#include "output/stop.h"
#include "support/memory_platform.h"

namespace ptick {
namespace {

/// A terminal, and what is typed on it.
struct Setting {
  std::int64_t length = 5;
  std::string_view keys = {};
  bool keyboard = true;
};

struct Shown {
  std::string text;
  int keys_asked_for = 0;
  std::optional<int> stopped;
};

/// Prints `lines` numbered lines under a heading and ends as a run does.
Shown Print(int lines, const Setting& setting) {
  MemoryPlatform platform;
  platform.output_is_terminal = true;
  platform.length = setting.length;
  platform.keyboard = setting.keyboard;
  platform.keys.assign(setting.keys.begin(), setting.keys.end());
  Shown shown;
  Output output(platform, "ptick");
  try {
    output.SetHeading({"Title", "Columns"});
    for (int n = 1; n <= lines; ++n) {
      output.PrintLine(std::to_string(n));
    }
    output.Finish();
  } catch (const Stop& stop) {
    shown.stopped = stop.status;
    output.Close();
  }
  shown.text = platform.printed;
  shown.keys_asked_for = platform.keys_asked_for;
  return shown;
}

/// A page of that number with the lines from `first` to `last`.
std::string Page(int page, int first, int last) {
  std::string text = "Title Page " + std::to_string(page) + "\nColumns\n";
  for (int n = first; n <= last; ++n) {
    text += std::to_string(n) + "\n";
  }
  return text;
}

TEST(Paging, FillsEveryPageOfTheTerminal) {
  struct Row {
    std::int64_t length;
    int lines;
    std::string want;
  };
  const std::vector<Row> rows = {
      {5, 0, Page(1, 1, 0)},
      {5, 1, Page(1, 1, 1)},
      {5, 3, Page(1, 1, 3)},
      {5, 4, Page(1, 1, 3) + Page(2, 4, 4)},
      {5, 6, Page(1, 1, 3) + Page(2, 4, 6)},
      {5, 7, Page(1, 1, 3) + Page(2, 4, 6) + Page(3, 7, 7)},
      {4, 4, Page(1, 1, 2) + Page(2, 3, 4)},
      {24, 23, Page(1, 1, 22) + Page(2, 23, 23)},
      // A line fits on a page however short the terminal is.
      {3, 3, Page(1, 1, 1) + Page(2, 2, 2) + Page(3, 3, 3)},
      {2, 3, Page(1, 1, 1) + Page(2, 2, 2) + Page(3, 3, 3)},
      {1, 3, Page(1, 1, 1) + Page(2, 2, 2) + Page(3, 3, 3)},
  };
  for (const Row& row : rows) {
    const Shown silent = Print(row.lines, {.length = row.length, .keyboard = false});
    EXPECT_EQ(silent.text, row.want) << row.length << " lines, without a keyboard";
    EXPECT_EQ(silent.keys_asked_for, 0);
    const Shown typed = Print(row.lines, {.length = row.length, .keys = "\r\r\r\r"});
    EXPECT_EQ(typed.text, row.want) << row.length << " lines, with a keyboard";
    EXPECT_EQ(typed.stopped, std::nullopt);
  }
}

// A profile's name may hold one.
TEST(Paging, CountsTheLineEndsInAHeading) {
  struct Row {
    std::int64_t length;
    std::string want;
  };
  const std::string first = "Ti\ntle Page 1\nCol\numns\n";
  const std::string second = "Ti\ntle Page 2\nCol\numns\n";
  const std::vector<Row> rows = {
      {1, first + "1\n" + second + "2\n"},
      {5, first + "1\n" + second + "2\n"},
      {6, first + "1\n2\n"},
  };
  for (const Row& row : rows) {
    MemoryPlatform platform;
    platform.output_is_terminal = true;
    platform.length = row.length;
    platform.keyboard = false;
    Output output(platform, "ptick");
    output.SetHeading({"Ti\ntle", "Col\numns"});
    output.PrintLine("1");
    output.PrintLine("2");
    output.Finish();
    EXPECT_EQ(platform.printed, row.want) << row.length;
  }
}

TEST(Paging, AsksForAKeyOnlyWhenThereIsMoreToShow) {
  struct Row {
    std::int64_t length;
    int lines;
    int want;
  };
  const std::vector<Row> rows = {{5, 0, 0}, {5, 1, 0},   {5, 3, 0},  {5, 4, 1},
                                 {5, 6, 1}, {5, 7, 2},   {3, 1, 0},  {3, 2, 1},
                                 {1, 3, 2}, {24, 22, 0}, {24, 23, 1}};
  for (const Row& row : rows) {
    EXPECT_EQ(Print(row.lines, {.length = row.length, .keys = "\r\r\r\r"}).keys_asked_for, row.want)
        << row.lines << " lines on pages of " << row.length;
  }
}

TEST(Paging, ObeysKeys) {
  const std::string all = Page(1, 1, 3) + Page(2, 4, 6) + Page(3, 7, 8);
  const std::string first = Page(1, 1, 3);
  const std::string two = first + Page(2, 4, 6);
  struct Row {
    std::string_view keys = {};
    std::string want;
    int want_keys;
    std::optional<int> want_stopped;
  };
  const std::vector<Row> rows = {
      {"\r\r", all, 2, std::nullopt},
      {"\n\n", all, 2, std::nullopt},
      {"  ", all, 2, std::nullopt},
      {" \r", all, 2, std::nullopt},
      {"c", all, 1, std::nullopt},
      {"\rc", all, 2, std::nullopt},
      {"q", first, 1, 0},
      {"\rq", two, 2, 0},
      // The end of the input is the end of the run.
      {"", first, 1, 0},
      {"\r", two, 2, 0},
      // All other keys are passed over, those in capitals, too.
      {"xyzCQ\t\x1b[A\x03\x04 \r", all, 13, std::nullopt},
      {"CCc", all, 3, std::nullopt},
      {"QQq", first, 3, 0},
      {"x", first, 2, 0},
  };
  for (const Row& row : rows) {
    const Shown shown = Print(8, {.keys = row.keys});
    EXPECT_EQ(shown.text, row.want) << row.keys;
    EXPECT_EQ(shown.keys_asked_for, row.want_keys) << row.keys;
    EXPECT_EQ(shown.stopped, row.want_stopped) << row.keys;
  }
}

// The last line end of a full page would push its first line out of view.
TEST(Paging, HoldsTheLastLineEndOfAFullPageWhileItWaits) {
  for (const std::int64_t length : {1, 2, 3, 5, 24}) {
    MemoryPlatform platform;
    platform.output_is_terminal = platform.keyboard = true;
    platform.length = length;
    Output output(platform, "ptick");
    output.SetHeading({"Title", "Columns"});
    int printed = 0;
    const auto print_on = [&] {
      for (;;) {
        output.PrintLine(std::to_string(printed + 1));
        ++printed;
      }
    };
    EXPECT_THROW(print_on(), Stop);
    std::string page = Page(1, 1, printed);
    EXPECT_EQ(platform.printed + "\n", page) << length;
    output.Close();
    EXPECT_EQ(platform.printed, page) << length;
    output.Close();
    EXPECT_EQ(platform.printed, page) << length;
  }
}

TEST(Paging, DoesWithoutPagesWhereThereIsNoHeading) {
  MemoryPlatform platform;
  platform.output_is_terminal = platform.keyboard = true;
  platform.length = 5;
  Output output(platform, "ptick");
  std::string want;
  for (int n = 1; n <= 50; ++n) {
    output.PrintLine(std::to_string(n));
    want += std::to_string(n) + "\n";
  }
  output.Finish();
  EXPECT_EQ(platform.printed, want);
  EXPECT_EQ(platform.keys_asked_for, 0);
}

}  // namespace
}  // namespace ptick
