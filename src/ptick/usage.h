#pragma once

#include "output/output.h"

namespace ptick {

/// Prints the usage text on the terminal.
void PrintUsage(Output& output);

}  // namespace ptick
