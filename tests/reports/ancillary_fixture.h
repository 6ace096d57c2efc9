#pragma once

#include <string>

#include "reports/ancillary_report.h"
#include "support/report_run.h"

namespace ptick {

/// The lines of a report on nothing: they are always there.
inline const std::string kIndexNone = "Index count   : None\n";
inline const std::string kTriggerNone = "Trigger count : None\n";
inline const std::string kEmptyTail =
    "INPUT count   : 0\n"
    "File I/O      : READ      statement count          : 0\n"
    "                WRITE     statement count          : 0\n"
    "                DELETE    statement count          : 0\n"
    "                CLEARFILE statement count          : 0\n"
    "                OPEN      statement count          : 0\n"
    "                PERFORM   statement count          : 0\n";

/// Prints the ancillary report of the tables.
class AncillaryReportTest : public ReportTest {
 protected:
  std::string Report() { return Run(ReportAncillary).lines; }
};

}  // namespace ptick
