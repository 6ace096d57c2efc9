#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ptick/run_options.h"
#include "support/memory_platform.h"

namespace ptick::testing {

/// The usage text as it must be on the terminal.
std::string_view UsageText();

/// What came of a command line.
struct ParsedCommand {
  RunOptions options;
  std::optional<int> stopped;  ///< the status, when it ended the run
};

/// Reads a command line, without the command's own name. What it prints and opens is in `platform`.
ParsedCommand ParseCommand(const std::vector<std::string>& arguments, MemoryPlatform& platform);

/// The options that differ from their defaults, as the letters of their flags in the order
/// "nuiapvtosAj", then "k=NAME", "profiles=A,B" and "sources=A,B" where there are any.
std::string OptionsText(const RunOptions& options);

/// A whole run of the program; returns its exit status.
int RunProgram(const std::vector<std::string>& arguments, MemoryPlatform& platform);

}  // namespace ptick::testing
