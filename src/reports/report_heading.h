#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "reports/report_job.h"

namespace ptick {

/// How reports begin: titles, page headings and column titles, built one way for all of them.

/// The title of a report: `what` (with its trailing blank), the program name, " from profile " and
/// the profile name.
std::string ReportTitle(std::string_view what, const ProfileTables& tables);

/// The heading of a report's pages. The title is padded so that the page number ends near the right
/// edge; a title longer than `report_width` minus 15 gets none.
PageHeading ReportHeading(std::string title, std::string columns, std::int64_t report_width);

/// What is above the columns of a report, in both of its forms.
struct ColumnTitles {
  std::string heading;  ///< in the page heading
  std::string title;    ///< among all reports, where there is no page heading
  std::string rule;     ///< the dashes below Title
};

/// Begins a report. By itself it gets a page heading; as one of all reports (-A) an empty line, the
/// column titles and their rule are printed instead.
void BeginReport(std::string title, ColumnTitles columns, const ReportJob& job);

}  // namespace ptick
