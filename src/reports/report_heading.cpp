#include "reports/report_heading.h"

#include <utility>

#include "value/text.h"

namespace ptick {

namespace {

constexpr std::int64_t kPageNumberRoom = 15;

}  // namespace

std::string ReportTitle(std::string_view what, const ProfileTables& tables) {
  return std::string(what) + tables.ProgramName + " from profile " + tables.ProfileName;
}

PageHeading ReportHeading(std::string title, std::string columns, std::int64_t report_width) {
  title += Space(report_width - Len(title) - kPageNumberRoom);
  return {std::move(title), std::move(columns)};
}

void BeginReport(std::string title, ColumnTitles columns, const ReportJob& job) {
  Output& output = job.output;
  if (job.options.AllReports) {
    output.PrintLine("");
    output.PrintLine(columns.title);
    output.PrintLine(columns.rule);
    return;
  }
  output.SetHeading(
      ReportHeading(std::move(title), std::move(columns.heading), job.options.ReportWidth));
}

}  // namespace ptick
