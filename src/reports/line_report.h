#pragma once

#include "output/output.h"
#include "profile/tables/profile_tables.h"
#include "reports/run_options.h"

namespace ptick {

/// Prints the per-line tick report: a row per trace entry with its ticks and its share of the
/// total, with open source files also the text of the line; with -n a group and a subtotal per
/// program.
void PrintLineReport(const ProfileTables& tables, const RunOptions& options, Output& output);

}  // namespace ptick
