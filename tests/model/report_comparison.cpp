#include "model/comparison.h"
#include "model/line_difference.h"
#include "model/model_reports.h"
#include "reports/key_script.h"
#include "reports/line_report.h"
#include "reports/perform_summary.h"
#include "reports/performs_report.h"
#include "reports/program_order.h"
#include "reports/subroutines_report.h"
#include "support/memory_platform.h"
#include "value/text.h"

namespace ptick::model {

namespace {

/// A profile as both sides see it.
struct ParsedProfile {
  ModelTables Model;
  ProfileTables Tables;
  bool Valid = false;
};

ParsedProfile ParseBoth(const std::string& text, const RunOptions& options) {
  ParsedProfile parsed;
  parsed.Valid = !ParseModelLines(LinesOf(text), options, parsed.Model);
  ParseTyped(text, {}, options, parsed.Tables);
  parsed.Tables.ProfileName = "run1";
  return parsed;
}

// The heading and the lines of a report on a page of 80 columns.
std::string Page(const std::string& what, const std::string& columns, const ModelTables& tables,
                 const std::vector<std::string>& lines) {
  std::string title = what + tables.ProgramName.Text() + " from profile run1";
  title += Space(79 - Len(title) - 15);
  return title + " Page 1\n" + columns + "\n" + JoinLines(lines);
}

std::string LineReportPage(const ParsedProfile& parsed, const RunOptions& options) {
  return Page("Profile of program ", "Source name          Line#  Ticks    %      ", parsed.Model,
              ModelLineReport(parsed.Model, options));
}

std::string PerformsDifference(const ParsedProfile& parsed) {
  constexpr std::int64_t kWidth = 60;
  RunOptions options;
  options.Verbose = !parsed.Tables.Hertz.Empty();
  MemoryPlatform platform;
  platform.Width = kWidth;
  const Ran ran =
      RunTyped([&](Output& output) { ReportPerforms(parsed.Tables, options, platform, output); });
  const std::string page =
      options.Verbose ? Page("Programs PERFORMed by program ",
                             "Elapsed Type Ticks  CPUusr,CPUsys ProgramPerformed", parsed.Model,
                             ModelVerbosePerforms(parsed.Model, kWidth))
                      : Page("Programs PERFORMed by program ", "Times      Program PERFORMed",
                             parsed.Model, ModelPerforms(parsed.Model));
  return FirstDifference(page, ran.Output);
}

}  // namespace

std::string LineReportDifference(const std::string& text, const RunOptions& options) {
  const ParsedProfile parsed = ParseBoth(text, options);
  if (!parsed.Valid) {
    return "";
  }
  const Ran ran =
      RunTyped([&](Output& output) { PrintLineReport(parsed.Tables, options, output); });
  return FirstDifference(LineReportPage(parsed, options), ran.Output);
}

std::string ProgramOrderDifference(const std::string& text, const RunOptions& options) {
  const ParsedProfile parsed = ParseBoth(text, options);
  if (!parsed.Valid || !options.PerProgram) {
    return "";
  }
  std::string model;
  for (const std::int64_t row : ModelProgramOrder(parsed.Model, options)) {
    model += "row " + std::to_string(row) + "\n";
  }
  std::string program;
  for (const std::size_t row : ProgramOrder(parsed.Tables.Details, options)) {
    program += "row " + std::to_string(row + 1) + "\n";
  }
  return FirstDifference(model, program);
}

std::string PerformSummaryDifference(const std::string& text) {
  const ParsedProfile parsed = ParseBoth(text, {});
  if (!parsed.Valid) {
    return "";
  }
  std::string model;
  for (const auto& [command, times] : ModelPerformSummary(parsed.Model)) {
    model.append(times).append(" ").append(command).append("\n");
  }
  std::string program;
  for (const PerformedCommand& performed : SummarizePerforms(parsed.Tables.Performs)) {
    program += std::to_string(performed.Times) + " " + std::string(performed.Command) + "\n";
  }
  return FirstDifference(model, program);
}

std::string OtherReportsDifference(const std::string& text) {
  const ParsedProfile parsed = ParseBoth(text, {});
  if (!parsed.Valid) {
    return "";
  }
  const Ran ran = RunTyped([&](Output& output) { ReportSubroutines(parsed.Tables, {}, output); });
  const std::string page = Page("Subroutines called by program ", "Times       Subroutine",
                                parsed.Model, ModelSubroutines(parsed.Model));
  const std::string difference = FirstDifference(page, ran.Output);
  return difference.empty() ? PerformsDifference(parsed) : difference;
}

std::string KeyScriptDifference(const std::string& text, const RunOptions& options) {
  const ParsedProfile parsed = ParseBoth(text, options);
  if (!parsed.Valid) {
    return "";
  }
  MemoryPlatform platform;
  RunTyped([&](Output& output) { WriteKeyScript(parsed.Tables, options, platform, output); });
  const std::string created =
      "* This script created at 00:00:00 01 JAN 1970 , port 0 , account tester";
  return FirstDifference(JoinLines(ModelKeyScript(parsed.Model, options, created)),
                         platform.ShellRuns.at(0).Input);
}

}  // namespace ptick::model
