#include "compare/alignment.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <random>
#include <string>
#include <vector>

namespace ptick::compare {

namespace {

using Texts = std::vector<std::string>;

// A text with a letter for each line.
Texts Letters(const std::string& letters) {
  Texts lines;
  for (const char letter : letters) {
    lines.emplace_back(1, letter);
  }
  return lines;
}

Alignment Align(const Texts& old_lines, const Texts& new_lines) {
  return AlignLines(std::vector<std::string_view>(old_lines.begin(), old_lines.end()),
                    std::vector<std::string_view>(new_lines.begin(), new_lines.end()));
}

// The lines that are aligned, and in `problem` what is wrong with an alignment.
std::size_t Common(const Alignment& alignment, const Texts& old_lines, const Texts& new_lines,
                   std::string& problem) {
  if (alignment.new_of_old.size() != old_lines.size() ||
      alignment.old_of_new.size() != new_lines.size()) {
    problem = "a line is missing";
    return 0;
  }
  std::size_t common = 0;
  std::size_t next = 0;
  for (std::size_t line = 0; line < old_lines.size(); ++line) {
    const std::uint32_t twin = alignment.new_of_old[line];
    if (twin == Alignment::kNone) {
      continue;
    }
    ++common;
    if (twin >= new_lines.size() || old_lines[line] != new_lines[twin]) {
      problem = "line " + std::to_string(line) + " is not equal";
    } else if (twin < next) {
      problem = "line " + std::to_string(line) + " is not in order";
    } else if (alignment.old_of_new[twin] != line) {
      problem = "line " + std::to_string(line) + " does not lead back";
    }
    next = std::size_t{twin} + 1;
  }
  const auto back = std::ranges::count_if(
      alignment.old_of_new, [](std::uint32_t line) { return line != Alignment::kNone; });
  if (static_cast<std::size_t>(back) != common) {
    problem = "more lines lead back than lead there";
  }
  return common;
}

std::size_t LongestCommon(const Texts& a, const Texts& b) {
  std::vector<std::size_t> row(b.size() + 1);
  for (const std::string& line : a) {
    std::size_t diagonal = 0;
    for (std::size_t n = 0; n < b.size(); ++n) {
      const std::size_t above = row[n + 1];
      row[n + 1] = line == b[n] ? diagonal + 1 : std::max(above, row[n]);
      diagonal = above;
    }
  }
  return row.back();
}

TEST(AlignLines, FollowsLinesThatMoved) {
  struct Row {
    std::string old_text;
    std::string new_text;
    std::string want;  ///< for each old line the new one, '-' for none
  };
  const std::vector<Row> rows = {
      {"", "", ""},
      {"", "abc", ""},
      {"abc", "", "---"},
      {"abc", "abc", "012"},
      {"abc", "xabc", "123"},
      {"abc", "abcx", "012"},
      {"abc", "axbc", "023"},
      {"abc", "ac", "0-1"},
      {"abc", "xyz", "---"},
      {"abc", "axc", "0-2"},
      {"abcde", "abXde", "01-34"},
      {"xax", "a", "-0-"},
      {"aaa", "aa", "01-"},
      {"a", "aaa", "0"},
  };
  for (const Row& row : rows) {
    const Texts old_lines = Letters(row.old_text);
    const Texts new_lines = Letters(row.new_text);
    const Alignment alignment = Align(old_lines, new_lines);
    std::string got;
    for (const std::uint32_t line : alignment.new_of_old) {
      got += line == Alignment::kNone ? "-" : std::to_string(line);
    }
    EXPECT_EQ(got, row.want) << row.old_text << " to " << row.new_text;
    std::string problem;
    Common(alignment, old_lines, new_lines, problem);
    EXPECT_EQ(problem, "") << row.old_text << " to " << row.new_text;
  }
}

TEST(AlignLines, AlignsAsManyLinesAsCanBe) {
  std::mt19937 random(7);
  for (int round = 0; round < 300; ++round) {
    const std::size_t letters = 1 + random() % 12;
    Texts old_lines;
    Texts new_lines;
    for (std::size_t n = random() % 60; n > 0; --n) {
      old_lines.push_back(std::to_string(random() % letters));
    }
    for (std::size_t n = random() % 60; n > 0; --n) {
      new_lines.push_back(std::to_string(random() % letters));
    }
    std::string problem;
    const std::size_t common = Common(Align(old_lines, new_lines), old_lines, new_lines, problem);
    EXPECT_EQ(problem, "") << "round " << round;
    EXPECT_EQ(common, LongestCommon(old_lines, new_lines)) << "round " << round;
  }
}

TEST(AlignLines, ComparesBytes) {
  const Alignment alignment = Align({"caf\xC3\xA9", std::string("a\0b", 3), "x "},
                                    {"caf\xE9", std::string("a\0c", 3), "x"});
  EXPECT_EQ(alignment.new_of_old, std::vector<std::uint32_t>(3, Alignment::kNone));
}

/// Two texts of 20,000 lines that are hard to compare, each in a way of its own.
struct HardCase {
  std::string name;
  Texts old_lines;
  Texts new_lines;
  std::size_t least;  ///< lines to be aligned
};

Texts RandomLines(std::mt19937& random, unsigned distinct) {
  Texts lines;
  for (int n = 0; n < 20000; ++n) {
    lines.push_back(std::to_string(random() % distinct));
  }
  return lines;
}

Texts Numbers() {
  Texts lines;
  for (int n = 0; n < 20000; ++n) {
    lines.push_back(n % 3 == 0 ? "END" : "line " + std::to_string(n));
  }
  return lines;
}

std::vector<HardCase> HardCases() {
  std::mt19937 random(3);
  std::vector<HardCase> cases;
  const Texts numbers = Numbers();
  Texts shuffled = numbers;
  std::ranges::shuffle(shuffled, random);
  Texts edited;
  for (const std::string& line : numbers) {
    const std::size_t kind = random() % 20;
    if (kind != 0) {
      edited.push_back(kind == 1 ? "new" : line);
    }
  }
  Texts swapped(numbers.begin() + 10000, numbers.end());
  swapped.insert(swapped.end(), numbers.begin(), numbers.begin() + 10000);
  Texts pairs;
  for (int n = 0; n < 20000; ++n) {
    pairs.push_back(std::to_string(n / 2));
  }
  Texts pairs_back(pairs.rbegin(), pairs.rend());
  Texts halves(20000, "x");
  std::fill(halves.begin() + 10000, halves.end(), "y");
  cases.push_back({"edited", numbers, edited, 17000});
  cases.push_back({"shuffled", numbers, shuffled, 100});
  cases.push_back({"halves swapped", numbers, swapped, 10000});
  cases.push_back({"pairs turned round", pairs, pairs_back, 2});
  cases.push_back({"two values swapped", halves, {halves.rbegin(), halves.rend()}, 9000});
  for (const unsigned distinct : {2U, 3U, 30U, 300U, 3000U}) {
    const Texts lines = RandomLines(random, distinct);
    cases.push_back(
        {"random " + std::to_string(distinct), lines, RandomLines(random, distinct), 100});
    Texts shorter;
    std::ranges::copy_if(lines, std::back_inserter(shorter),
                         [&](const std::string& /*line*/) { return random() % 50 != 0; });
    cases.push_back(
        {"shorter " + std::to_string(distinct), lines, shorter, shorter.size() * 98 / 100});
  }
  return cases;
}

// A fifth of a second each when optimised; what does not hold the bound takes minutes.
TEST(AlignLines, IsQuickOnWhatIsHard) {
  for (const HardCase& hard : HardCases()) {
    const auto begin = std::chrono::steady_clock::now();
    const Alignment alignment = Align(hard.old_lines, hard.new_lines);
    const auto took = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(took, std::chrono::seconds(20)) << hard.name;
    std::string problem;
    EXPECT_GE(Common(alignment, hard.old_lines, hard.new_lines, problem), hard.least) << hard.name;
    EXPECT_EQ(problem, "") << hard.name;
  }
}

}  // namespace

}  // namespace ptick::compare
