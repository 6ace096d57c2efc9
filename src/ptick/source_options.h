#pragma once

#include <string_view>

#include "output/output.h"
#include "platform/platform.h"
#include "ptick/run_options.h"

namespace ptick {

/// Opens a source file and gives it the next place; message 201 when that fails.
void OpenSourceFile(std::string_view name, Platform& platform, Output& output, RunOptions& options);

/// Opens every file that the record at `path` names, one per field. Throws Stop with status 1 when
/// the record cannot be read (after message 201 or 202) and when the list would pass
/// kSourceFileLimit.
void OpenSourceFileList(std::string_view path, Platform& platform, Output& output,
                        RunOptions& options);

}  // namespace ptick
