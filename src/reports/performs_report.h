#pragma once

#include "reports/report_job.h"

namespace ptick {

/// The PERFORMed programs report (-p). The summary counts each distinct command, most frequent
/// first. The verbose form (-v) has one line per PERFORM in recorded order: elapsed seconds, type,
/// ticks, CPU seconds, and the command cut at the page width of that moment.
///
/// Without a clock rate the verbose form says so on the terminal and throws Stop with status 2
/// before anything of it is printed.
void ReportPerforms(const ReportJob& job);

}  // namespace ptick
