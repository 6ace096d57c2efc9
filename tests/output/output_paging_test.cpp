#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"
#include "output/stop.h"
#include "support/memory_console.h"

namespace ptick {

namespace {

/// What is printed, and on what terminal.
struct Setting {
  TerminalSize size = {.rows = 6, .columns = 80};
  std::string_view keys = {};
  bool keyboard = true;
  std::deque<TerminalSize> later_sizes = {};
  std::optional<PageHeading> heading = PageHeading{"Title", "Columns"};
};

struct Shown {
  std::string text;
  std::vector<std::string> screens;  ///< what had been printed on the page at each prompt
  std::vector<std::string> prompts;
  std::optional<int> stopped;
};

/// Prints the lines and ends as a run does.
Shown Print(const std::vector<std::string>& lines, const Setting& setting) {
  MemoryConsole console;
  console.output_is_terminal = true;
  console.size = setting.size;
  console.later_sizes = setting.later_sizes;
  console.keyboard = setting.keyboard;
  console.keys.assign(setting.keys.begin(), setting.keys.end());
  Shown shown;
  Output output(console, "ptick");
  try {
    if (setting.heading) {
      output.SetHeading(*setting.heading);
    }
    for (const std::string& line : lines) {
      output.PrintLine(line);
    }
    output.Finish();
  } catch (const Stop& stop) {
    shown.stopped = stop.status;
    output.Close();
  }
  shown.text = console.printed;
  std::size_t from = 0;
  for (const auto& [prompt, at] : console.prompts) {
    shown.prompts.push_back(prompt);
    shown.screens.push_back(console.printed.substr(from, at - from));
    from = at;
  }
  return shown;
}

/// The lines "1", "2" and so on.
std::vector<std::string> Lines(int count) {
  std::vector<std::string> lines;
  for (int n = 1; n <= count; ++n) {
    lines.push_back(std::to_string(n));
  }
  return lines;
}

/// A page of that number with the lines from `first` to `last`.
std::string Page(int page, int first, int last) {
  std::string text = "Title Page " + std::to_string(page) + "\nColumns\n";
  for (int n = first; n <= last; ++n) {
    text += std::to_string(n) + "\n";
  }
  return text;
}

using Screens = std::vector<std::string>;

TEST(Paging, LeavesTheLastRowToThePrompt) {
  struct Row {
    std::int64_t rows;
    int lines;
    std::string want;
    Screens want_screens;
  };
  const std::vector<Row> rows = {
      {6, 0, Page(1, 1, 0), {}},
      {6, 1, Page(1, 1, 1), {}},
      {6, 3, Page(1, 1, 3), {}},
      {6, 4, Page(1, 1, 3) + Page(2, 4, 4), {Page(1, 1, 3)}},
      {6, 6, Page(1, 1, 3) + Page(2, 4, 6), {Page(1, 1, 3)}},
      {6, 7, Page(1, 1, 3) + Page(2, 4, 6) + Page(3, 7, 7), {Page(1, 1, 3), Page(2, 4, 6)}},
      {25, 23, Page(1, 1, 22) + Page(2, 23, 23), {Page(1, 1, 22)}},
      // A page holds a line however short the terminal is.
      {4, 2, Page(1, 1, 1) + Page(2, 2, 2), {Page(1, 1, 1)}},
      {3, 2, Page(1, 1, 1) + Page(2, 2, 2), {Page(1, 1, 1)}},
      {2, 2, Page(1, 1, 1) + Page(2, 2, 2), {Page(1, 1, 1)}},
      {1, 2, Page(1, 1, 1) + Page(2, 2, 2), {Page(1, 1, 1)}},
  };
  for (const Row& row : rows) {
    const Shown shown = Print(Lines(row.lines), {.size = {row.rows, 80}, .keys = "\r\r\r"});
    EXPECT_EQ(shown.text, row.want) << row.lines << " lines on " << row.rows << " rows";
    EXPECT_EQ(shown.screens, row.want_screens) << row.lines << " lines on " << row.rows << " rows";
    EXPECT_EQ(shown.stopped, std::nullopt);
  }
}

TEST(Paging, FillsTheWholeTerminalWhereNoKeyCanBeAskedFor) {
  struct Row {
    std::int64_t rows;
    int lines;
    std::string want;
  };
  const std::vector<Row> rows = {
      {5, 0, Page(1, 1, 0)},
      {5, 3, Page(1, 1, 3)},
      {5, 7, Page(1, 1, 3) + Page(2, 4, 6) + Page(3, 7, 7)},
      {3, 3, Page(1, 1, 1) + Page(2, 2, 2) + Page(3, 3, 3)},
      {1, 3, Page(1, 1, 1) + Page(2, 2, 2) + Page(3, 3, 3)},
  };
  for (const Row& row : rows) {
    const Shown shown = Print(Lines(row.lines), {.size = {row.rows, 80}, .keyboard = false});
    EXPECT_EQ(shown.text, row.want) << row.lines << " lines on " << row.rows << " rows";
    EXPECT_TRUE(shown.prompts.empty());
  }
}

TEST(Paging, CountsTheRowsThatLinesTake) {
  const std::string wide(10, 'x');
  const std::string wider(11, 'x');
  const std::string chinese = "\u4E2D\u4E2D\u4E2D\u4E2D\u4E2D";
  struct Row {
    std::vector<std::string> lines;
    Screens want_screens;
  };
  // Five rows for lines, ten columns, no heading.
  const std::vector<Row> rows = {
      {{"1", "2", "3", "4", "5", "6"}, {"1\n2\n3\n4\n5\n"}},
      {{wide, wide, wide, wide, wide, "6"},
       {wide + "\n" + wide + "\n" + wide + "\n" + wide + "\n" + wide + "\n"}},
      {{wider, wider, "3", "4"}, {wider + "\n" + wider + "\n3\n"}},
      {{chinese, "2", "3", "4", "5", "6"}, {chinese + "\n2\n3\n4\n5\n"}},
      {{chinese + "x", "2", "3", "4", "5"}, {chinese + "x\n2\n3\n4\n"}},
      {{"a\nb", "3", "4", "5", "6"}, {"a\nb\n3\n4\n5\n"}},
      // A line that does not fit goes to the next page whole; the rows it leaves stay empty.
      {{"1", "2", "3", "4", wider}, {"1\n2\n3\n4\n\n"}},
      {{"1", "2", wider + wide + wide, "x", "y"}, {"1\n2\n\n\n\n", wider + wide + wide + "\nx\n"}},
      // One that is longer than a page is a page.
      {{std::string(60, 'x'), "x"}, {std::string(60, 'x') + "\n"}},
      {{"1", std::string(60, 'x'), "x"}, {"1\n\n\n\n\n", std::string(60, 'x') + "\n"}},
  };
  for (const Row& row : rows) {
    const Shown shown =
        Print(row.lines, {.size = {6, 10}, .keys = "\r\r\r", .heading = std::nullopt});
    EXPECT_EQ(shown.screens, row.want_screens) << ::testing::PrintToString(row.lines);
  }
}

TEST(Paging, CountsTheRowsOfTheHeading) {
  struct Row {
    PageHeading heading;
    TerminalSize size;
    int want;  ///< lines on a page
  };
  const std::vector<Row> rows = {
      {{"Title", "Columns"}, {7, 12}, 4},
      {{"Title", "Columns"}, {7, 11}, 3},  // "Title Page 1" takes two rows
      {{"Title", "Columns"}, {7, 6}, 2},
      {{"Ti\ntle", "Col\numns"}, {7, 80}, 2},
      {{"\u4E2D\u4E2D", "Columns"}, {7, 11}, 4},
      {{"\u4E2D\u4E2D", "Columns"}, {7, 10}, 3},
      {{"\x1b[2J", ""}, {7, 80}, 4},
      {{"", ""}, {7, 80}, 4},
  };
  for (const Row& row : rows) {
    const Shown shown = Print(Lines(9), {.size = row.size, .heading = row.heading});
    ASSERT_EQ(shown.screens.size(), 1U) << row.heading.title;
    EXPECT_TRUE(shown.screens[0].ends_with("\n" + std::to_string(row.want) + "\n"))
        << row.heading.title << " gives " << shown.screens[0];
  }
}

TEST(Paging, LooksAtTheSizeAgainForEachPage) {
  const Shown shown = Print(Lines(20), {.size = {6, 80},
                                        .keys = "\r\r\r\r\r",
                                        .later_sizes = {{9, 80}, {4, 80}, {9, 11}, {6, 200}}});
  EXPECT_EQ(shown.screens, (Screens{Page(1, 1, 3), Page(2, 4, 9), Page(3, 10, 10), Page(4, 11, 15),
                                    Page(5, 16, 18)}));
}

// On 11 columns "Title Page 1" takes two rows.
TEST(Paging, HoldsAPageToTheSizeItBeganWith) {
  const Shown shown = Print(Lines(5), {.size = {6, 11}, .keys = "\r", .later_sizes = {{6, 80}}});
  EXPECT_EQ(shown.screens, Screens{Page(1, 1, 2)});
  EXPECT_EQ(shown.text, Page(1, 1, 2) + Page(2, 3, 5));
}

TEST(Paging, ObeysKeys) {
  const std::string all = Page(1, 1, 3) + Page(2, 4, 6) + Page(3, 7, 8);
  const std::string first = Page(1, 1, 3);
  const std::string two = first + Page(2, 4, 6);
  // Without prompts a page has one more row.
  const std::string from_first = first + Page(2, 4, 7) + Page(3, 8, 8);
  struct Row {
    std::string_view keys = {};
    std::string want;
    std::size_t want_prompts;
    std::optional<int> want_stopped;
  };
  const std::vector<Row> rows = {
      {"\r\r", all, 2, std::nullopt},
      {"\n\n", all, 2, std::nullopt},
      {"  ", all, 2, std::nullopt},
      {" \r", all, 2, std::nullopt},
      {"c", from_first, 1, std::nullopt},
      {"\rc", all, 2, std::nullopt},
      {"q", first, 1, 0},
      {"\rq", two, 2, 0},
      // The end of the input is the end of the run.
      {"", first, 1, 0},
      {"\r", two, 2, 0},
      // All other keys leave the prompt, those in capitals, too.
      {"xyzCQ\t\x03\x04 \r", all, 2, std::nullopt},
      {"CCc", from_first, 1, std::nullopt},
      {"QQq", first, 1, 0},
      {"x", first, 1, 0},
  };
  for (const Row& row : rows) {
    const Shown shown = Print(Lines(8), {.keys = row.keys});
    EXPECT_EQ(shown.text, row.want) << row.keys;
    EXPECT_EQ(shown.prompts.size(), row.want_prompts) << row.keys;
    EXPECT_EQ(shown.stopped, row.want_stopped) << row.keys;
  }
}

TEST(Paging, HasPagesWithoutAHeading) {
  const Shown shown = Print(Lines(11), {.size = {6, 80}, .keys = " \r", .heading = std::nullopt});
  EXPECT_EQ(shown.screens, (Screens{"1\n2\n3\n4\n5\n", "6\n7\n8\n9\n10\n"}));
  EXPECT_EQ(shown.text, "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n");
  EXPECT_EQ(Print({}, {.heading = std::nullopt}).text, "");
}

TEST(Paging, ShowsThePromptThatFits) {
  struct Row {
    std::int64_t columns;
    std::string want;
  };
  const std::vector<Row> rows = {
      {1, ""},
      {2, ":"},
      {12, ":"},
      {13, "Return, c, q"},
      {18, "Return, c, q"},
      {19, "-- Return, c, q --"},
      {31, "-- Return, c, q --"},
      {32, "Return page, c continue, q quit"},
      {43, "Return page, c continue, q quit"},
      {44, "-- more: Return page, c continue, q quit --"},
      {200, "-- more: Return page, c continue, q quit --"},
  };
  for (const Row& row : rows) {
    const Shown shown = Print(Lines(9), {.size = {3, row.columns}, .heading = std::nullopt});
    EXPECT_EQ(shown.prompts, std::vector<std::string>{row.want}) << row.columns;
    EXPECT_LT(static_cast<std::int64_t>(row.want.size()), row.columns);
  }
}

// They take their rows on the same screen.
TEST(Paging, CountsDiagnosticsOnTheTerminal) {
  for (const bool on_terminal : {false, true}) {
    MemoryConsole console;
    console.output_is_terminal = console.keyboard = true;
    console.diagnostics_are_on_terminal = on_terminal;
    console.size = {6, 10};
    Output output(console, "ptick");
    output.PrintTerminal("before the first page");
    output.PrintLine("1");
    output.PrintTerminal("two rows...");
    const auto print_on = [&] {
      for (int n = 2;; ++n) {
        output.PrintLine(std::to_string(n));
      }
    };
    EXPECT_THROW(print_on(), Stop);
    EXPECT_EQ(console.printed, on_terminal ? "1\n2\n3\n" : "1\n2\n3\n4\n5\n");
  }
}

}  // namespace

}  // namespace ptick
