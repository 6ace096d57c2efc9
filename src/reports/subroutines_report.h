#pragma once

#include "reports/report_job.h"

namespace ptick {

/// The subroutines report (-s): one line per recorded call with its count and the subroutine
/// called, in the order of the tables, the largest count first. Never fails; a profile without
/// calls gives just the titles.
void ReportSubroutines(const ReportJob& job);

}  // namespace ptick
