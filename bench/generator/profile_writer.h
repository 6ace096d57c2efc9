#pragma once

#include <cstdint>
#include <filesystem>

#include "generator/options.h"

namespace ptick::bench {

/// Writes file number `file` (counted from 0) of the set to `path`. Throws std::runtime_error when
/// that fails, std::invalid_argument when the options ask for more distinct keys than there are.
void WriteProfile(const GenerateOptions& options, std::uint32_t file,
                  const std::filesystem::path& path);

/// Writes a source record per program into `directory`, which is made.
void WriteSources(const GenerateOptions& options, const std::filesystem::path& directory);

}  // namespace ptick::bench
