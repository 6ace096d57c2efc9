// Says what a format does not hold as it is.
#pragma once

#include <string>
#include <vector>

#include "ptick_export/facts/line_sums.h"
#include "ptick_export/facts/time_line.h"
#include "ptick_export/facts/whole_calls.h"
#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

/// A sentence for each kind of loss: "2 lines with negative ticks are left out, -7 ticks in all".
std::vector<std::string> LossTexts(const LineLosses& losses);

/// Tells of these, and for its comment gives the one about fractions that were cut, empty where
/// nothing was cut.
std::string TellLosses(const ExportJob& job, const LineLosses& losses);

/// Tells which subroutine calls the format does not hold as they are.
void TellLosses(const ExportJob& job, const CallLosses& losses);

/// Tells which commands or inputs are not on the time line. `name` is "command" or "input".
void TellLosses(const ExportJob& job, const TimeTracks& line, std::string_view name);

/// Tells that there is no time line.
void TellNoTimeLine(const ExportJob& job);

}  // namespace ptick::exports
