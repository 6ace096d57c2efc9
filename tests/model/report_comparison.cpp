#include <memory>

#include "figures/perform_summary.h"
#include "figures/program_order.h"
#include "model/comparison.h"
#include "model/line_difference.h"
#include "model/model_reports.h"
#include "profile/parse/record_parser.h"
#include "reports/key_script.h"
#include "reports/line_report.h"
#include "reports/performs_report.h"
#include "reports/subroutines_report.h"
#include "support/memory_platform.h"
#include "value/text.h"

namespace ptick::model {

namespace {

/// A profile as both sides see it.
struct ParsedProfile {
  ModelTables model;
  ProfileTables tables;
  bool valid = false;
};

ParsedProfile ParseBoth(const std::string& text, const RunOptions& options) {
  ParsedProfile parsed;
  parsed.valid = !ParseModelLines(LinesOf(text), options, parsed.model);
  ParseTyped(text, {}, options, parsed.tables);
  parsed.tables.ProfileName = "run1";
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
  return Page("Profile of program ", "Source name          Line#  Ticks    %      ", parsed.model,
              ModelLineReport(parsed.model, options));
}

std::string PerformsDifference(ParsedProfile& parsed) {
  constexpr std::int64_t kWidth = 60;
  RunOptions options;
  options.Verbose = !parsed.tables.Hertz.Empty();
  MemoryPlatform platform;
  platform.width = kWidth;
  const Ran ran = RunTyped([&](Output& output) {
    ReportPerforms({parsed.tables, options, platform, output});
  });
  const std::string page =
      options.Verbose ? Page("Programs PERFORMed by program ",
                             "Elapsed Type Ticks  CPUusr,CPUsys ProgramPerformed", parsed.model,
                             ModelVerbosePerforms(parsed.model, kWidth))
                      : Page("Programs PERFORMed by program ", "Times      Program PERFORMed",
                             parsed.model, ModelPerforms(parsed.model));
  return FirstDifference(page, ran.output);
}

std::string SummaryText(const PerformTable& performs) {
  std::string text;
  for (const PerformedCommand& performed : SummarizePerforms(performs)) {
    text.append(std::to_string(performed.times)).append(" ").append(performed.command).append("\n");
  }
  return text;
}

}  // namespace

std::string LineReportDifference(const std::string& text, const RunOptions& options) {
  ParsedProfile parsed = ParseBoth(text, options);
  if (!parsed.valid) {
    return "";
  }
  MemoryPlatform platform;
  const Ran ran = RunTyped([&](Output& output) {
    PrintLineReport({parsed.tables, options, platform, output});
  });
  return FirstDifference(LineReportPage(parsed, options), ran.output);
}

std::string ProgramOrderDifference(const std::string& text, const RunOptions& options) {
  ParsedProfile parsed = ParseBoth(text, options);
  if (!parsed.valid || !options.PerProgram) {
    return "";
  }
  std::string model;
  for (const std::int64_t row : ModelProgramOrder(parsed.model, options)) {
    model += "row " + std::to_string(row) + "\n";
  }
  std::string program;
  const OrderedTicks ticks(std::move(parsed.tables.Details), options.TickOrder, true);
  const ProgramsBy by = options.CpuOption ? ProgramsBy::kTicks : ProgramsBy::kName;
  for (const std::size_t row : ProgramOrder(ticks, by)) {
    program += "row " + std::to_string(row + 1) + "\n";
  }
  return FirstDifference(model, program);
}

// The summary of the PERFORMs that are kept, and of those that are only counted.
std::string PerformSummaryDifference(const std::string& text) {
  const ParsedProfile parsed = ParseBoth(text, {});
  if (!parsed.valid) {
    return "";
  }
  std::string model;
  for (const auto& [command, times] : ModelPerformSummary(parsed.model)) {
    model.append(times).append(" ").append(command).append("\n");
  }
  ProfileTables counted;
  RecordBlocks lines(std::make_unique<PiecewiseRecord>(text, text.size() + 1, 0));
  ParseProfileLines(lines, {.keep_performs = false}, counted);
  return FirstDifference(model, SummaryText(parsed.tables.Performs)) +
         FirstDifference(model, SummaryText(counted.Performs));
}

std::string OtherReportsDifference(const std::string& text) {
  ParsedProfile parsed = ParseBoth(text, {});
  if (!parsed.valid) {
    return "";
  }
  MemoryPlatform platform;
  const RunOptions options;
  const Ran ran = RunTyped([&](Output& output) {
    ReportSubroutines({parsed.tables, options, platform, output});
  });
  const std::string page = Page("Subroutines called by program ", "Times       Subroutine",
                                parsed.model, ModelSubroutines(parsed.model));
  const std::string difference = FirstDifference(page, ran.output);
  return difference.empty() ? PerformsDifference(parsed) : difference;
}

std::string KeyScriptDifference(const std::string& text, const RunOptions& options) {
  ParsedProfile parsed = ParseBoth(text, options);
  if (!parsed.valid) {
    return "";
  }
  MemoryPlatform platform;
  RunTyped([&](Output& output) { WriteKeyScript({parsed.tables, options, platform, output}); });
  const std::string created =
      "* This script created at 00:00:00 01 JAN 1970 , port 0 , account tester";
  return FirstDifference(JoinLines(ModelKeyScript(parsed.model, options, created)),
                         platform.shell_runs.at(0).input);
}

}  // namespace ptick::model
