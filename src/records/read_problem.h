#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "records/record_place.h"

namespace ptick {

/// Why a profile, or another record that the user named, could not be read: facts, which the
/// program that asked for it puts into words.
struct ReadProblem {
  enum class Kind {
    kCannotOpenFile,    ///< the directory `place.directory` cannot be opened
    kCannotReadRecord,  ///< the record cannot be opened, or not read to its end
    kInvalidLine,       ///< a line is a record of no known type
  };

  Kind kind = Kind::kCannotReadRecord;
  std::string name;   ///< as the user gave it
  RecordPlace place;  ///< where it was looked for
  int error = 0;      ///< the system's error number, where the system is the reason

  std::int64_t line = 0;  ///< kInvalidLine: the line's number, from 1, lines that are no records
                          ///< included
  std::string text;       ///< kInvalidLine: the line without the prefix "PROFILE:"
};

/// Called with every problem that is met, in the order of the files.
using ProblemHandler = std::function<void(const ReadProblem&)>;

}  // namespace ptick
