// The tables of a profile as CSV, one at a time.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

struct CsvTable {
  std::string_view name;
  std::string_view columns;  ///< with commas between them
  std::uint32_t parts;       ///< what of a profile is read for it
  Writer write;
};

/// The first one is what is written when none is asked for.
std::span<const CsvTable> CsvTables();

}  // namespace ptick::exports
