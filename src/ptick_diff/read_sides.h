// Reads the profiles and sources of ptick-diff.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "companion/inputs/profile_inputs.h"
#include "companion/inputs/source_folders.h"
#include "compare/line_moves.h"
#include "compare/side.h"

namespace ptick::compare {

/// Reads each profile by itself, as a run of the side. Throws Trouble.
void ReadRuns(std::span<const std::string> profiles, const companion::ProfileInputs& inputs,
              Side& side);

/// Aligns the sources of all programs that have them in both places. The others are named in
/// `without_source`, sorted.
LineMoves AlignSources(const KeyNames& names, const companion::SourceFolders& old_sources,
                       const companion::SourceFolders& new_sources,
                       std::vector<std::string>& without_source);

}  // namespace ptick::compare
