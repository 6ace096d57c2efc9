#pragma once

#include "output/output.h"

namespace ptick {

/// Prints the usage text on the terminal. False when it could not be written.
bool PrintUsage(Output& output);

}  // namespace ptick
