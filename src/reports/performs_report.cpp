#include "reports/performs_report.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "figures/perform_summary.h"
#include "output/stop.h"
#include "reports/columns.h"
#include "reports/perform_rows.h"
#include "reports/report_heading.h"

namespace ptick {

namespace {

constexpr std::size_t kTimesWidth = 10;

ColumnTitles PerformColumns(bool verbose) {
  const std::string title = verbose ? "Elapsed Type Ticks  CPUusr,CPUsys ProgramPerformed"
                                    : "Times      Program PERFORMed";
  return {.heading = title,
          .title = title,
          .rule = verbose ? "------- ---- -----  ------------- ----------------"
                          : "-----      ------- ---------"};
}

void PrintSummary(const PerformTable& performs, Output& output) {
  for (const PerformedCommand& performed : SummarizePerforms(performs)) {
    char* at = output.LineRoom(kTimesWidth + 1 + performed.command.size());
    at = PutLeft(std::to_string(performed.times), kTimesWidth, at);
    *at++ = ' ';
    output.EndLineAt(std::ranges::copy(performed.command, at).out);
  }
}

}  // namespace

void ReportPerforms(const ReportJob& job) {
  const ProfileTables& tables = job.tables;
  const bool verbose = job.options.Verbose;
  if (verbose && tables.Hertz.Empty()) {
    job.output.PrintTerminal("Error! No 'hertz' is available in the profile output");
    throw Stop{2};
  }
  BeginReport(ReportTitle("Programs PERFORMed by program ", tables), PerformColumns(verbose), job);
  if (verbose) {
    // The width of this moment: ReportWidth was taken when the run began.
    PrintPerformRows(tables, job.platform.PageWidth(), job.output);
  } else {
    PrintSummary(tables.Performs, job.output);
  }
}

}  // namespace ptick
