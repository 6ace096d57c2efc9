#include "reports/performs_report.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "output/stop.h"
#include "reports/perform_summary.h"
#include "reports/report_heading.h"
#include "value/arithmetic.h"
#include "value/mask.h"
#include "value/number_text.h"
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

void PrintSummary(const FieldList& performs, Output& output) {
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

// Text that is not numeric counts as 0. Passed on as a number, it is parsed once and never copied.
Value NumberOf(std::string_view text) {
  return ParseNumber(text).value_or(Number{std::int64_t{0}});
}

// Lays out the lines of the verbose form, one entry after another.
class PerformLine {
 public:
  PerformLine(const Value& hertz, std::int64_t page_width)
      : hertz_(hertz.AsNumber()), page_width_(page_width) {}

  // The line of an entry; valid until the next call.
  std::string_view Of(std::string_view entry) {
    line_.clear();
    const auto value = [entry](PerformValue n) { return ExtractPerform(entry, n); };
    const Value elapsed = Subtract(NumberOf(value(PerformValue::kEndClock)),
                                   NumberOf(value(PerformValue::kStartClock)));
    Append(Divide(elapsed, hertz_).Text(), elapsed_mask_);
    Append(UpperCase(value(PerformValue::kType)), type_mask_);
    Append(value(PerformValue::kTicks), ticks_mask_);
    Append(Seconds(value(PerformValue::kUsrCpu)) + ',' + Seconds(value(PerformValue::kSysCpu)),
           cpu_mask_);
    const std::int64_t room = page_width_ - Len(line_) - 1;
    line_ += Substring(value(PerformValue::kCommand), 1, std::max<std::int64_t>(room, 0));
    return line_;
  }

 private:
  void Append(std::string_view text, const Mask& mask) {
    mask.Append(text, line_);
    line_ += ' ';
  }

  std::string Seconds(std::string_view ticks) const {
    return Divide(NumberOf(ticks), hertz_).Text();
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
  for (std::size_t n = 0; n < tables.Performs.size(); ++n) {
    output.PrintLine(line.Of(tables.Performs[n]));
  }
}

}  // namespace

void ReportPerforms(const ProfileTables& tables, const RunOptions& options, Platform& platform,
                    Output& output) {
  if (options.Verbose && tables.Hertz.Empty()) {
    output.PrintTerminal("Error! No 'hertz' is available in the profile output");
    throw Stop{2};
  }
  BeginReport(ReportTitle("Programs PERFORMed by program ", tables),
              PerformColumns(options.Verbose), options, output);
  if (options.Verbose) {
    PrintEach(tables, platform.PageWidth(), output);
  } else {
    PrintSummary(tables.Performs, output);
  }
}

}  // namespace ptick
