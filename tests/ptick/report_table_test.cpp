#include "ptick/report_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "support/program_run.h"

namespace ptick {

namespace {

/// The reports, each with a text that it alone prints, and the letter of its option ("l" is the
/// per-line report, which has none).
struct ReportMark {
  char letter;
  std::string_view text;
};
const std::vector<ReportMark>& Marks() {
  static const std::vector<ReportMark> marks = {
      {'a', "Command line  : PROG"},
      {'o', "Shared object name"},
      {'p', "Times      Program PERFORMed"},
      {'s', "Times       Subroutine"},
      {'k', "Keyboard profile written to 'keys'"},
      {'l', "Source name          Line#"},
  };
  return marks;
}

/// The letters of the reports that a run with these options prints, in order.
std::string ReportsOf(const std::string& options) {
  MemoryPlatform platform;
  platform.files["."]["run1"].text = "PROFILE:program\tPROG\nPROFILE:hertz\t100\n";
  platform.files["src"] = {};
  std::vector<std::string> arguments = {"run1"};
  for (const char letter : options) {
    arguments.push_back(std::string("-") + letter);
    if (letter == 'k' || letter == 'f') {
      arguments.back() += letter == 'k' ? "keys" : "src";
    }
  }
  EXPECT_EQ(testing::RunProgram(arguments, platform), 0) << options;
  EXPECT_EQ(platform.on_terminal, "") << options;
  std::vector<std::pair<std::size_t, char>> places;
  for (const ReportMark& mark : Marks()) {
    for (std::size_t at = platform.printed.find(mark.text); at != std::string::npos;
         at = platform.printed.find(mark.text, at + 1)) {
      places.emplace_back(at, mark.letter);
    }
  }
  std::ranges::sort(places);
  std::string reports;
  for (const auto& [place, letter] : places) {
    reports += letter;
  }
  EXPECT_EQ(platform.shell_runs.size(), reports.find('k') != std::string::npos ? 1U : 0U)
      << options;
  return reports;
}

/// Which report the options choose, the strongest first.
std::string Wanted(const std::string& options) {
  if (options.find('A') != std::string::npos) {
    return "aops";
  }
  for (const char letter : std::string_view("pakos")) {
    if (options.find(letter) != std::string::npos) {
      return {letter};
    }
  }
  return "l";
}

TEST(ReportTable, HasGoldensForEveryReport) {
  const std::filesystem::path goldens =
      std::filesystem::path(PTICK_SOURCE_DIR) / "tests" / "golden";
  for (const Report& report : Reports()) {
    const std::filesystem::path folder = goldens / report.name;
    ASSERT_TRUE(std::filesystem::is_directory(folder)) << report.name;
    const std::filesystem::directory_iterator cases(folder);
    EXPECT_GE(std::distance(begin(cases), end(cases)), 2) << report.name;
  }
}

// A letter asks for its own report and for the one that every command line asks for.
TEST(ReportTable, HasTheLettersOfTheCommandLine) {
  for (const Report& asked : Reports()) {
    MemoryPlatform platform;
    std::vector<std::string> arguments;
    if (asked.letter != 0) {
      arguments.push_back({'-', asked.letter});
      arguments.emplace_back("name");
    }
    const RunOptions options = testing::ParseCommand(arguments, platform).options;
    for (const Report& report : Reports()) {
      EXPECT_EQ(report.is_asked_for(options), &report == &asked || report.letter == 0)
          << report.name << " by " << asked.name;
    }
  }
}

TEST(ReportTable, PutsTheReportsOfAllInPlacesThatFollowEachOther) {
  std::vector<int> places;
  for (const Report& report : Reports()) {
    if (report.place_in_all > 0) {
      places.push_back(report.place_in_all);
    }
  }
  std::ranges::sort(places);
  for (std::size_t i = 0; i < places.size(); ++i) {
    EXPECT_EQ(places[i], static_cast<int>(i) + 1);
  }
}

TEST(ReportChoice, FollowsThePriorities) {
  struct Row {
    std::string options;
    std::string_view want;
  };
  const std::vector<Row> rows = {
      {"", "l"},      {"A", "aops"},  {"p", "p"},         {"a", "a"},     {"k", "k"},
      {"o", "o"},     {"s", "s"},     {"ap", "p"},        {"ak", "a"},    {"ao", "a"},
      {"as", "a"},    {"pk", "p"},    {"po", "p"},        {"ps", "p"},    {"ko", "k"},
      {"ks", "k"},    {"os", "o"},    {"Ap", "aops"},     {"Aa", "aops"}, {"Ak", "aops"},
      {"Ao", "aops"}, {"As", "aops"}, {"apkosA", "aops"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(ReportsOf(row.options), row.want) << row.options;
    const std::string reversed(row.options.rbegin(), row.options.rend());
    EXPECT_EQ(ReportsOf(reversed), row.want) << reversed;
  }
}

TEST(ReportChoice, FollowsThePrioritiesForAllTogether) {
  constexpr std::string_view kLetters = "Apakos";
  for (unsigned set = 0; set < 1U << kLetters.size(); ++set) {
    std::string options;
    for (std::size_t i = 0; i < kLetters.size(); ++i) {
      options += (set >> i & 1U) != 0 ? std::string(1, kLetters[i]) : "";
    }
    EXPECT_EQ(ReportsOf(options), Wanted(options)) << options;
  }
}

TEST(ReportChoice, IsNotThatOfTheOtherOptions) {
  for (const std::string modifiers : {"n", "u", "i", "t", "f", "nuitf"}) {
    for (const std::string letter : {"", "A", "p", "a", "k", "o", "s"}) {
      EXPECT_EQ(ReportsOf(modifiers + letter), Wanted(letter)) << modifiers << letter;
    }
  }
  EXPECT_EQ(ReportsOf("v"), "l");
}

}  // namespace

}  // namespace ptick
