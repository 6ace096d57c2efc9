#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "model/model_list.h"
#include "ptick/run_options.h"

namespace ptick::model {

/// A row of the tick table: program names, line numbers and ticks as three parallel lists.
struct DetailsRow {
  ValueList programs;
  ValueList lines;
  ValueList ticks;
};

/// Header values by their record type.
using HeaderValues = std::map<std::string, Value, std::less<>>;

/// The header values before the first record.
HeaderValues InitialHeaders();

/// The profile tables as they are defined: lists, filled by locating and inserting.
struct ModelTables {
  std::vector<DetailsRow> Details{100};
  std::int64_t details_rows = 100;
  ValueList program_names;  ///< only with -n
  std::int64_t program_count = 0;

  Value ProgramCommand;
  Value ProgramName = "(unknown)";
  ValueList SharedObjects;
  ValueList SubroutineTimes;
  ValueList SubroutinesCalled;
  ValueList Performs;
  ValueList KeyScript;
  Value TypeRate;  ///< two fields; empty without a record
  Value Resource;
  Value LastClock = 0;
  std::array<Value, 10> UserTicks{0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
  HeaderValues headers = InitialHeaders();
};

/// A line of an unknown record type.
struct InvalidLine {
  std::int64_t line_no = 0;  ///< from 1
  std::string profile_line;  ///< without its prefix

  bool operator==(const InvalidLine&) const = default;
};

/// Parses profile lines into the tables, up to the first invalid line, which is returned.
std::optional<InvalidLine> ParseModelLines(const std::vector<std::string>& profile_lines,
                                           const RunOptions& options, ModelTables& tables);

}  // namespace ptick::model
