#pragma once

#include "reports/report_job.h"

namespace ptick {

/// The shared objects report (-o): the names of the shared objects used, in byte order, duplicates
/// kept. With -v the first line that the platform command "size" writes for an object comes after
/// its name; whether the command succeeds is not looked at. Never fails; a profile without shared
/// objects gives just the titles.
void ReportSharedObjects(const ReportJob& job);

}  // namespace ptick
