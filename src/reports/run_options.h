#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/platform.h"
#include "profile/ticks/sort_order.h"
#include "value/dynamic_array.h"

namespace ptick {

/// A source file named by -f or -F, open.
struct SourceFile {
  std::string name;
  std::unique_ptr<RecordFile> file;
};

/// At most this many source files are open, those of -f and -F together.
inline constexpr std::size_t kSourceFileLimit = 500;

/// What the command line asks for; written by its parser only.
struct RunOptions {
  bool PerProgram = false;                       ///< -n: subtotal and sort by program
  bool CpuOption = false;                        ///< -u: with -n, programs by their total ticks
  SortOrder TickOrder = SortOrder::kDescending;  ///< -i: ascending
  bool AncillaryOption = false;                  ///< -a
  bool PerformsOption = false;                   ///< -p
  bool Verbose = false;                          ///< -v
  bool TypeRateOption = false;           ///< -t: the keyboard script gets a typing delay per input
  bool SharedObjectsOption = false;      ///< -o
  bool SubroutinesOption = false;        ///< -s
  bool AllReports = false;               ///< -A
  bool MonitorOption = false;            ///< -j
  std::string KeyScriptFile;             ///< -k: non-empty asks for the keyboard script
  std::vector<std::string> ProfileList;  ///< profile names in command-line order
  std::vector<SourceFile> SourceFiles;   ///< in command-line order, at most kSourceFileLimit
  std::int64_t PageWidth = 80;           ///< system value 2
  std::int64_t ReportWidth = 79;         ///< PageWidth minus 1: heading padding and source column
};

}  // namespace ptick
