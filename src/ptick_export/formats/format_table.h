// The formats of ptick-export: the one list that help, dispatch and tests walk.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "profile/parse/read_options.h"
#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

/// The parts of a profile.
enum Part : std::uint32_t {
  kLines = 1,
  kCommands = 2,
  kSubroutines = 4,
  kObjects = 8,
  kInputs = 16,
  kCounters = 32,
  kAllParts = 63,
};

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

/// What a reader must keep of a profile for these parts; memory and lines are left alone.
ReadOptions OptionsFor(std::uint32_t parts);

/// Tells which parts the profile has that the format does not hold.
void TellPartsLeftOut(const ExportJob& job, const Format& format);

}  // namespace ptick::exports
