#pragma once

#include "reports/report_job.h"

namespace ptick {

/// The ancillary information report (-a): what the profile header recorded about the profiled
/// process besides its ticks per line. Plain lines without a page heading. What was not recorded is
/// left out, except for the index and trigger activity, the INPUT count and the file statements.
/// Never fails; times are shown in the local time zone of `platform`.
void ReportAncillary(const ReportJob& job);

}  // namespace ptick
