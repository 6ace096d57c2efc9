#include "reports/subroutines_report.h"

#include <cstddef>
#include <string>

#include "figures/subroutine_order.h"
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

void ReportSubroutines(const ReportJob& job) {
  const SubroutineTable& subroutines = job.tables.Subroutines;
  BeginReport(ReportTitle("Subroutines called by program ", job.tables), SubroutineColumns(), job);
  const Mask times_mask = Mask::Left(10);
  std::string times;
  std::string line;
  for (const std::size_t n : SubroutineOrder(subroutines)) {
    times.clear();
    subroutines.AppendTimes(n, times);
    line.clear();
    times_mask.Append(times, line);
    line += "  ";
    line += subroutines.Called(n);
    job.output.PrintLine(line);
  }
}

}  // namespace ptick
