#pragma once

#include <memory>
#include <string_view>

#include "platform/record_file.h"
#include "records/read_problem.h"

namespace ptick {

/// Opens the record that a file name names. Null when that fails; `problem` says why then.
std::unique_ptr<RecordReader> OpenNamedRecord(std::string_view name, RecordFiles& files,
                                              ReadProblem& problem);

/// The problem of a record whose reading failed with the system's error number `error`.
ReadProblem UnreadableRecord(std::string_view name, int error);

}  // namespace ptick
