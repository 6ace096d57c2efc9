#pragma once

#include <span>
#include <string_view>

#include "ptick/run_options.h"
#include "reports/report_job.h"

namespace ptick {

/// A report that the command line can ask for.
struct Report {
  char letter;            ///< of its option; 0 for the one that has none
  std::string_view name;  ///< of the folder with its goldens
  bool (*is_asked_for)(const RunOptions& options);
  void (*print)(const ReportJob& job);
  int place_in_all = 0;  ///< 1 for the first report of -A; 0 for one that is no part of it
};

/// All reports. Of those that a command line asks for the first is printed; the last, the per-line
/// report, is asked for by every command line.
std::span<const Report> Reports();

/// Prints the one report that the options choose, or those of -A.
void PrintChosenReport(const RunOptions& options, const ReportJob& job);

}  // namespace ptick
