#include "reports/performs_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "figures/perform_summary.h"
#include "figures/perform_times.h"
#include "output/stop.h"
#include "reports/report_heading.h"
#include "value/mask.h"
#include "value/text.h"

namespace ptick {

namespace {

ColumnTitles PerformColumns(bool verbose) {
  const std::string title = verbose ? "Elapsed Type Ticks  CPUusr,CPUsys ProgramPerformed"
                                    : "Times      Program PERFORMed";
  return {.heading = title,
          .title = title,
          .rule = verbose ? "------- ---- -----  ------------- ----------------"
                          : "-----      ------- ---------"};
}

void PrintSummary(const PerformTable& performs, Output& output) {
  const Mask times_mask = Mask::Left(10);
  std::string line;
  for (const PerformedCommand& performed : SummarizePerforms(performs)) {
    line.clear();
    times_mask.Append(std::to_string(performed.times), line);
    line += ' ';
    line += performed.command;
    output.PrintLine(line);
  }
}

// Lays out the lines of the verbose form, one record after another.
class PerformLine {
 public:
  PerformLine(const Value& hertz, std::int64_t page_width)
      : hertz_(hertz.AsNumber()), page_width_(page_width) {}

  // The line of a record; valid until the next call.
  std::string_view Of(const PerformTable::Record& perform) {
    const PerformTimes times = TimesOf(perform, hertz_);
    line_.clear();
    Append(times.elapsed.Text(), elapsed_mask_);
    Append(UpperCase(perform.Type()), type_mask_);
    Append(perform.Text(PerformNumber::kTicks), ticks_mask_);
    Append(times.usr_cpu.Text() + ',' + times.sys_cpu.Text(), cpu_mask_);
    const std::int64_t room = page_width_ - Len(line_) - 1;
    line_ += Substring(perform.Command(), 1, std::max<std::int64_t>(room, 0));
    return line_;
  }

 private:
  void Append(std::string_view text, const Mask& mask) {
    mask.Append(text, line_);
    line_ += ' ';
  }

  Value hertz_;
  std::int64_t page_width_;
  Mask elapsed_mask_ = Mask::Left(7);
  Mask type_mask_ = Mask::Left(4);
  Mask ticks_mask_ = Mask::Left(7);
  Mask cpu_mask_ = Mask::Left(13);
  std::string line_;
};

void PrintEach(const ProfileTables& tables, std::int64_t page_width, Output& output) {
  PerformLine line(tables.Hertz, page_width);
  for (std::size_t n = 0; n < tables.Performs.RecordCount(); ++n) {
    output.PrintLine(line.Of(tables.Performs[n]));
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
    PrintEach(tables, job.platform.PageWidth(), job.output);
  } else {
    PrintSummary(tables.Performs, job.output);
  }
}

}  // namespace ptick
