// The formats of ptick-export: the one list that help, dispatch and tests walk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "ptick_export/formats/export_job.h"
#include "ptick_export/formats/profile_parts.h"

namespace ptick::exports {

struct Format {
  std::string_view name;
  std::string_view help;
  /// What of a profile it holds.
  std::uint32_t parts;
  /// Bytes that are no text.
  bool is_binary;
  /// Null where a table of the profile is to be chosen, from CsvTables().
  Writer write;
};

std::span<const Format> Formats();

/// Tells which parts the profile has that the format does not hold.
void TellPartsLeftOut(const ExportJob& job, const Format& format);

}  // namespace ptick::exports
