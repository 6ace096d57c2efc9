#pragma once

#include <string>
#include <vector>

#include "reports/report_options.h"

namespace ptick {

/// What the command line asks for; written by its parser only.
struct RunOptions : ReportOptions {
  bool AncillaryOption = false;          ///< -a
  bool PerformsOption = false;           ///< -p: the programs PERFORMed
  bool SharedObjectsOption = false;      ///< -o
  bool SubroutinesOption = false;        ///< -s
  bool MonitorOption = false;            ///< -j: switches the monitor instead of a report
  std::vector<std::string> ProfileList;  ///< profile names in command-line order
};

}  // namespace ptick
