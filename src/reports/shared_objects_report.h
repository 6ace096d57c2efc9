#pragma once

#include "reports/report_job.h"

namespace ptick {

/// The shared objects report (-o): the names of the shared objects used, in byte order, duplicates
/// kept. With -v each name is followed by the first line that the platform command "size" writes
/// for it; whether the command succeeds is not looked at, and without that command nothing follows.
/// Where it cannot be run for want of processes, descriptors or memory, one message says so, the
/// report is printed, and the run ends with status 1. A profile without shared objects gives just
/// the titles.
void ReportSharedObjects(const ReportJob& job);

}  // namespace ptick
