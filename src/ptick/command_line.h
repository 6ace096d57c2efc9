#pragma once

#include <string>
#include <vector>

#include "output/output.h"
#include "platform/platform.h"
#include "ptick/run_options.h"

namespace ptick {

/// The arguments of a command line, without the command's own name. An argument that holds a field
/// mark counts as several, for the command line is a list of fields.
std::vector<std::string> CommandArguments(const std::vector<std::string>& command_line);

/// Reads the options, and opens the source files that they name. Throws Stop with status 0 after
/// the usage text of -h, and with status 1 when that could not be written, after an unknown letter,
/// and for a -F list that cannot be used.
RunOptions ParseCommandLine(const std::vector<std::string>& arguments, Platform& platform,
                            Output& output);

}  // namespace ptick
