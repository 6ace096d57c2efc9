// The run that a page shows, and the one that it is compared with.
#pragma once

#include "profile/tables/profile_tables.h"
#include "ptick_view/document_writer.h"
#include "ptick_view/line_table.h"

namespace ptick::view {

enum class Lines { kWithLines, kWithoutLines };

/// Writes an object that holds a profile; its lines, too, where they are wanted: that is the run,
/// the other is the baseline. Of what is left out a note is made.
void WriteProfile(const ProfileTables& tables, const LineTable& lines, Lines with_lines,
                  DocumentWriter& writer);

}  // namespace ptick::view
