#include <gtest/gtest.h>

#include <functional>

#include "model/comparison.h"
#include "model/model_cases.h"
#include "model/random_fields.h"
#include "model/random_profile.h"

namespace ptick::model {

namespace {

using Compare = std::function<std::string(const std::string&, const RunOptions&)>;

void RunReportCases(std::uint64_t count, const Compare& compare,
                    const std::function<std::string(RandomSource&)>& make_profile) {
  RunCases(count, [&](RandomSource& random) {
    const RunOptions options = RandomOptions(random);
    return Case{{make_profile(random)}, [=](const Texts& texts) {
                  const std::string difference = compare(texts.front(), options);
                  return difference.empty() ? "" : OptionLetters(options) + difference;
                }};
  });
}

Compare IgnoringOptions(const std::function<std::string(const std::string&)>& compare) {
  return [=](const std::string& text, const RunOptions&) { return compare(text); };
}

// Many programs, so that totals are often equal.
std::string ManyPrograms(RandomSource& random) {
  std::string text = "PROFILE:ticks\t" + RandomTicks(random) + "\n";
  const std::size_t programs = random.Between(1, 30);
  const bool odd = random.Chance(50);
  for (std::size_t i = random.Between(0, 80); i > 0; --i) {
    text += "PROFILE:trace\tP" + std::to_string(random.Below(programs)) + "\t";
    text += RandomLineNumber(random) + "\t";
    text += odd ? RandomTicks(random) : std::to_string(random.Below(4));
    text += "\n";
  }
  return text;
}

// A few commands, performed often.
std::string ManyPerforms(RandomSource& random) {
  std::string text = random.Chance(50) ? "" : "PROFILE:hertz\t" + RandomClock(random) + "\n";
  for (std::size_t i = random.Between(0, 60); i > 0; --i) {
    text += "PROFILE:perform\tstartclock\t" + RandomClock(random);
    text += "\tendclock\t" + RandomClock(random);
    text += "\tusrcpu\t" + RandomClock(random) + "\ttype\t" + RandomText(random);
    text += "\tcmd\tC" + std::string(random.Below(3), '*') + std::to_string(random.Below(4));
    text += "\n";
  }
  return text;
}

TEST(ReportModel, AgreesOnTheRowsOfRandomProfiles) {
  RunReportCases(1500, LineReportDifference, RandomProfile);
}

TEST(ReportModel, AgreesOnTheRowsOfManyPrograms) {
  RunReportCases(1500, LineReportDifference, ManyPrograms);
}

TEST(ReportModel, AgreesOnTheOrderOfPrograms) {
  RunReportCases(1500, ProgramOrderDifference, ManyPrograms);
}

TEST(ReportModel, AgreesOnTheSummaryOfRandomProfiles) {
  RunReportCases(500, IgnoringOptions(PerformSummaryDifference), RandomProfile);
}

TEST(ReportModel, AgreesOnTheSummaryOfManyPerforms) {
  RunReportCases(500, IgnoringOptions(PerformSummaryDifference), ManyPerforms);
}

TEST(ReportModel, AgreesOnTheKeyboardScript) {
  RunReportCases(500, KeyScriptDifference, RandomProfile);
}

TEST(ReportModel, AgreesOnSubroutinesAndPerforms) {
  RunReportCases(500, IgnoringOptions(OtherReportsDifference), RandomProfile);
  RunReportCases(300, IgnoringOptions(OtherReportsDifference), ManyPerforms);
}

}  // namespace

}  // namespace ptick::model
