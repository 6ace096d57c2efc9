#pragma once

#include "reports/report_job.h"

namespace ptick {

/// Prints the per-line tick report: a row per trace entry with its ticks and its share of the
/// total, with open source files also the text of the line; with -n a group and a subtotal per
/// program.
void PrintLineReport(const ReportJob& job);

}  // namespace ptick
