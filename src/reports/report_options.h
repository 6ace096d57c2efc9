#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "records/source_files.h"

namespace ptick {

/// At most this many source files are open, those of -f and -F together.
inline constexpr std::size_t kSourceFileLimit = 500;

/// What the reports can be told.
struct ReportOptions {
  bool PerProgram = false;                       ///< -n: subtotal and sort by program
  bool CpuOption = false;                        ///< -u: with -n, programs by their total ticks
  SortOrder TickOrder = SortOrder::kDescending;  ///< -i: ascending
  bool Verbose = false;                          ///< -v
  bool TypeRateOption = false;          ///< -t: the keyboard script gets a typing delay per input
  bool AllReports = false;              ///< -A: reports come without page headings
  std::string KeyScriptFile;            ///< -k: non-empty asks for the keyboard script
  std::vector<SourceFile> SourceFiles;  ///< in command-line order, at most kSourceFileLimit
  std::int64_t ReportWidth = 79;        ///< page width minus 1: heading padding and source column
};

}  // namespace ptick
