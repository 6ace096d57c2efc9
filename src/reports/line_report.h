#pragma once

#include "profile/profile_tables.h"
#include "profile/run_options.h"
#include "value/output.h"

namespace ptick {

/// Prints the per-line tick report: a row per trace entry with its ticks and its share of the
/// total, with open source files also the text of the line; with -n a group and a subtotal per
/// program.
void PrintLineReport(const ProfileTables& tables, const RunOptions& options, Output& output);

}  // namespace ptick
