#pragma once

#include <string_view>

#include "output/output.h"
#include "records/read_problem.h"

namespace ptick {

/// Message 201: the platform file `directory` cannot be opened, for the system's reason `error`.
void PrintCannotOpen(std::string_view directory, int error, Output& output);

/// Message 202: the record at `place` cannot be read.
void PrintCannotRead(const RecordPlace& place, int error, Output& output);

/// What was wrong with a profile: one of the above, or its invalid line with its number.
void PrintProblem(const ReadProblem& problem, Output& output);

}  // namespace ptick
