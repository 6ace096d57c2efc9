#pragma once

#include <memory>
#include <string_view>

#include "output/output.h"
#include "platform/platform.h"

namespace ptick {

/// Opens the record that a file name names. When that fails prints message 201 with the directory
/// or 202 with the record name, and returns null.
std::unique_ptr<RecordReader> OpenNamedRecord(std::string_view name, Platform& platform,
                                              Output& output);

/// Prints message 202 for a record whose reading failed.
void ReportUnreadable(std::string_view name, Output& output);

/// The same, and throws Stop with status 1.
[[noreturn]] void StopUnreadable(std::string_view name, Output& output);

}  // namespace ptick
