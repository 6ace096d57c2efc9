// What holds for all profiles, tried on random ones.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "compare/comparison.h"
#include "compare/row_order.h"
#include "compare/support/comparison_of.h"
#include "value/arithmetic.h"
#include "value/number_text.h"

namespace ptick::compare {

namespace {

using testing::RowTexts;
using testing::Runs;
using testing::Sides;

constexpr std::array kKinds = {Kind::kLine, Kind::kProgram, Kind::kCommand, Kind::kSubroutine,
                               Kind::kCounter};

class RandomRuns {
 public:
  explicit RandomRuns(unsigned seed) : random_(seed) {}

  Runs Some() {
    Runs runs(1 + random_() % 4);
    for (auto& run : runs) {
      run.emplace_back("hertz|100");
      for (std::size_t n = random_() % 30; n > 0; --n) {
        run.push_back(Record());
      }
    }
    return runs;
  }

 private:
  std::string Pick(const std::vector<std::string>& texts) {
    return texts[random_() % texts.size()];
  }

  std::string Number() {
    return Pick({"0", "1", "5", "17", "400", "999999", "-3", "0.5", "2.25", "007", "x",
                 std::to_string(random_() % 1000)});
  }

  std::string Record() {
    switch (random_() % 5) {
      case 0:
        return "perform|startclock|" + Number() + "|endclock|" + Number() + "|ticks|" + Number() +
               "|usrcpu|" + Number() + "|cmd|" + Pick({"A", "B", "C D"});
      case 1:
        return "subroutine_call|" + Pick({"A", "B"}) + " " + Pick({"X", "Y"}) + "|" + Number();
      case 2:
        return Pick({"read_count", "usrcpu", "user_ticks|3", "index_count"}) + "|" + Number();
      default:
        return "trace|" + Pick({"A", "B", "\xC4", "\xC3\x84"}) + "|" +
               Pick({"1", "2", "3", "01", "y"}) + "|" + Number();
    }
  }

  std::mt19937 random_;
};

double AsDouble(const Number& number) {
  return std::visit([](auto form) { return static_cast<double>(form); }, number);
}

TEST(ComparisonLaws, ASideDoesNotDifferFromItself) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    const Runs runs = RandomRuns(seed).Some();
    for (const Kind kind : kKinds) {
      const Sides sides(kind, runs, runs);
      EXPECT_EQ(RowTexts(sides.Compare()), std::vector<std::string>{}) << "seed " << seed;
      if (CanNormalize(sides.old_side, sides.new_side)) {
        EXPECT_EQ(RowTexts(sides.Compare({.normalize = true})), std::vector<std::string>{})
            << "seed " << seed;
      }
    }
  }
}

TEST(ComparisonLaws, TheOrderOfRunsIsNothing) {
  for (unsigned seed = 0; seed < 100; ++seed) {
    RandomRuns random(seed);
    const Runs old_runs = random.Some();
    const Runs new_runs = random.Some();
    const Runs turned(old_runs.rbegin(), old_runs.rend());
    const Sides sides(Kind::kLine, old_runs, new_runs);
    const Sides turned_sides(Kind::kLine, turned, new_runs);
    EXPECT_EQ(RowTexts(sides.Compare()), RowTexts(turned_sides.Compare())) << "seed " << seed;
  }
}

// What a row says of both sides, and the same of the sides swapped.
using Facts = std::map<std::tuple<std::string, std::string>, std::vector<double>>;

Facts FactsOf(const Comparison& comparison, bool is_swapped) {
  Facts facts;
  for (const Row& row : comparison.Rows()) {
    const double sign = is_swapped ? -1 : 1;
    std::vector<double>& values =
        facts[{std::string(comparison.Names().Names()[row.name]), std::to_string(row.new_detail)}];
    values = {sign * AsDouble(comparison.Change(row)), row.p_value, row.rate,
              row.is_significant ? 1.0 : 0.0};
    for (const std::optional<Number>& value :
         {is_swapped ? comparison.New(row) : comparison.Old(row),
          is_swapped ? comparison.Old(row) : comparison.New(row)}) {
      values.push_back(value ? AsDouble(*value) : -1e9);
    }
  }
  return facts;
}

TEST(ComparisonLaws, SwappedSidesSwapSigns) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    RandomRuns random(seed);
    const Runs old_runs = random.Some();
    const Runs new_runs = random.Some();
    for (const Kind kind : {Kind::kLine, Kind::kProgram, Kind::kCommand}) {
      const Sides sides(kind, old_runs, new_runs);
      const Comparison there(sides.old_side, sides.new_side);
      const Comparison back(sides.new_side, sides.old_side);
      const Facts facts = FactsOf(there, false);
      const Facts swapped = FactsOf(back, true);
      ASSERT_EQ(facts.size(), swapped.size()) << "seed " << seed;
      for (const auto& [key, values] : facts) {
        ASSERT_TRUE(swapped.contains(key)) << "seed " << seed;
        for (std::size_t n = 0; n < values.size(); ++n) {
          const double other = swapped.at(key)[n];
          EXPECT_TRUE(std::abs(values[n] - other) <= 1e-9 * std::abs(other) ||
                      (std::isnan(values[n]) && std::isnan(other)))
              << "seed " << seed << ", " << std::get<0>(key) << ": " << values[n] << " and "
              << other;
        }
      }
    }
  }
}

std::map<std::string, double> ChangesByProgram(const Comparison& comparison) {
  std::map<std::string, double> changes;
  for (const Row& row : comparison.Rows()) {
    changes[std::string(comparison.Names().Names()[row.name])] += AsDouble(comparison.Change(row));
  }
  return changes;
}

TEST(ComparisonLaws, LinesAddUpToProgramsAndThoseToTheTotal) {
  for (unsigned seed = 0; seed < 200; ++seed) {
    RandomRuns random(seed);
    const Runs old_runs = random.Some();
    const Runs new_runs = random.Some();
    const Sides by_line(Kind::kLine, old_runs, new_runs);
    const Sides by_program(Kind::kProgram, old_runs, new_runs);
    const Comparison lines = by_line.Compare();
    const Comparison programs = by_program.Compare();
    std::map<std::string, double> of_programs = ChangesByProgram(programs);
    double of_all = 0;
    for (const auto& [program, change] : ChangesByProgram(lines)) {
      EXPECT_NEAR(change, of_programs[program], 1e-6) << "seed " << seed << " " << program;
      of_all += change;
    }
    // No run has a header with ticks: the total is the sum of the entries.
    EXPECT_NEAR(of_all, AsDouble(lines.TotalChange()), 1e-6) << "seed " << seed;
    EXPECT_EQ(lines.TotalChange(), programs.TotalChange()) << "seed " << seed;
  }
}

}  // namespace

}  // namespace ptick::compare
