#pragma once

#include "reports/report_job.h"

namespace ptick {

/// The keyboard replay script (-k): frames the recorded keyboard input as a script for `typeplay`
/// and has the platform command `dcopy` write it to the key file, replacing what the file held.
/// Says on standard output where the script is. When the copy fails, throws Stop with status 1;
/// the shell has said why.
void WriteKeyScript(const ReportJob& job);

}  // namespace ptick
