#include "reports/subroutines_report.h"

#include <cstddef>
#include <string>

#include "reports/report_heading.h"
#include "value/mask.h"

namespace ptick {

namespace {

// The page heading goes without "called".
ColumnTitles SubroutineColumns() {
  return {.heading = "Times       Subroutine",
          .title = "Times       Subroutine called",
          .rule = "-----       ---------- ------"};
}

}  // namespace

void ReportSubroutines(const ProfileTables& tables, const RunOptions& options, Output& output) {
  BeginReport(ReportTitle("Subroutines called by program ", tables), SubroutineColumns(), options,
              output);
  const Mask times_mask = Mask::Left(10);
  std::string line;
  for (std::size_t n = 0; n < tables.SubroutineTimes.size(); ++n) {
    line.clear();
    times_mask.Append(tables.SubroutineTimes[n], line);
    line += "  ";
    line += tables.SubroutinesCalled[n];
    output.PrintLine(line);
  }
}

}  // namespace ptick
