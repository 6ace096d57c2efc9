#include "ptick/report_choice.h"

#include "reports/ancillary_report.h"
#include "reports/key_script.h"
#include "reports/line_report.h"
#include "reports/performs_report.h"
#include "reports/shared_objects_report.h"
#include "reports/subroutines_report.h"

namespace ptick {

void PrintChosenReport(const ProfileTables& tables, const RunOptions& options, Platform& platform,
                       Output& output) {
  if (options.AllReports) {
    ReportAncillary(tables, platform, output);
    ReportSharedObjects(tables, options, platform, output);
    ReportPerforms(tables, options, platform, output);
    ReportSubroutines(tables, options, output);
  } else if (options.PerformsOption) {
    ReportPerforms(tables, options, platform, output);
  } else if (options.AncillaryOption) {
    ReportAncillary(tables, platform, output);
  } else if (!options.KeyScriptFile.empty()) {
    WriteKeyScript(tables, options, platform, output);
  } else if (options.SharedObjectsOption) {
    ReportSharedObjects(tables, options, platform, output);
  } else if (options.SubroutinesOption) {
    ReportSubroutines(tables, options, output);
  } else {
    PrintLineReport(tables, options, output);
  }
}

}  // namespace ptick
