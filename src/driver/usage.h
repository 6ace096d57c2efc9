#pragma once

#include "value/output.h"

namespace ptick {

/// Prints the usage text on the terminal.
void PrintUsage(Output& output);

}  // namespace ptick
