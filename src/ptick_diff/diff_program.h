// The program ptick-diff, to be run by main, tests and fuzz targets.
#pragma once

#include "companion/linux/program.h"
#include "ptick_diff/diff_options.h"

namespace ptick::compare {

/// The options live as long as the program.
companion::Program DiffProgram(DiffOptions& options);

}  // namespace ptick::compare
