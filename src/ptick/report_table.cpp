#include "ptick/report_table.h"

#include <algorithm>
#include <array>

#include "reports/ancillary_report.h"
#include "reports/key_script.h"
#include "reports/line_report.h"
#include "reports/performs_report.h"
#include "reports/shared_objects_report.h"
#include "reports/subroutines_report.h"

namespace ptick {

namespace {

constexpr std::array kReports = {
    Report{'p', "performs", [](const RunOptions& o) { return o.PerformsOption; }, ReportPerforms,
           3},
    Report{'a', "ancillary", [](const RunOptions& o) { return o.AncillaryOption; }, ReportAncillary,
           1},
    Report{'k', "keys", [](const RunOptions& o) { return !o.KeyScriptFile.empty(); },
           WriteKeyScript},
    Report{'o', "shared_objects", [](const RunOptions& o) { return o.SharedObjectsOption; },
           ReportSharedObjects, 2},
    Report{'s', "subroutines", [](const RunOptions& o) { return o.SubroutinesOption; },
           ReportSubroutines, 4},
    Report{0, "lines", [](const RunOptions&) { return true; }, PrintLineReport},
};

void PrintAllReports(const ReportJob& job) {
  for (int place = 1; place <= static_cast<int>(kReports.size()); ++place) {
    for (const Report& report : kReports) {
      if (report.place_in_all == place) {
        report.print(job);
      }
    }
  }
}

}  // namespace

std::span<const Report> Reports() { return kReports; }

void PrintChosenReport(const RunOptions& options, const ReportJob& job) {
  if (options.AllReports) {
    PrintAllReports(job);
    return;
  }
  const auto* const chosen = std::ranges::find_if(
      kReports, [&options](const Report& report) { return report.is_asked_for(options); });
  chosen->print(job);
}

}  // namespace ptick
