#include "model/model_tables.h"

#include <string_view>

#include "model/model_records.h"
#include "value/arithmetic.h"
#include "value/list_operations.h"
#include "value/text.h"

namespace ptick::model {

namespace {

constexpr std::string_view kPrefix = "PROFILE:";

// Adds a field at the end of a list, as storing after its last element does.
void StoreAt(ValueList& list, std::int64_t position, const Value& x) {
  if (position > static_cast<std::int64_t>(list.size())) {
    list.resize(static_cast<std::size_t>(position));
  }
  list[static_cast<std::size_t>(position - 1)] = x;
}

void GrowDetails(ModelTables& tables, std::int64_t row) {
  if (row > tables.details_rows) {
    tables.details_rows = row + 10;
    tables.Details.resize(static_cast<std::size_t>(tables.details_rows));
  }
}

void ParseTrace(const Record& record, const RunOptions& options, ModelTables& tables) {
  const Value program = record.Field(2);
  const Value ticks = record.Field(4);
  std::int64_t row = 1;
  if (options.PerProgram) {
    const Located known = LocateIn(program, tables.program_names, LocateOrder::kNone);
    if (!known.found) {
      ++tables.program_count;
      StoreAt(tables.program_names, tables.program_count, program);
    }
    row = known.position;
  }
  GrowDetails(tables, row);
  DetailsRow& details = tables.Details.at(static_cast<std::size_t>(row - 1));
  const std::int64_t position =
      LocateIn(ticks, details.ticks, LocateOrderOf(options.TickOrder)).position;
  InsertAt(details.programs, position, program);
  InsertAt(details.lines, position, record.Field(3));
  InsertAt(details.ticks, position, ticks);
}

void ParseProgram(const Record& record, ModelTables& tables) {
  const std::string command = Change(record.After(1), "\t", " ");
  tables.ProgramCommand = command;
  tables.ProgramName = Field(command, ' ', 1).text;
}

void ParseSharedObject(const Record& record, ModelTables& tables) {
  const std::string name = record.Field(2);
  if (Value(record.Field(3)).IsTrue() && name != "main()") {
    tables.SharedObjects.emplace_back(name);
  }
}

void ParseSubroutineCall(const Record& record, ModelTables& tables) {
  const Value times = record.Field(3);
  const Located located = LocateIn(times, tables.SubroutineTimes, LocateOrder::kDescending);
  InsertAt(tables.SubroutineTimes, located.position, times);
  InsertAt(tables.SubroutinesCalled, located.position, Field(record.Field(2), ' ', 2).text);
}

void ParseUserTicks(const Record& record, ModelTables& tables) {
  const Value index = record.Field(2);
  if (Num(index) && index >= 1 && index <= 10) {
    const auto cell = std::get<std::int64_t>(Int(index).AsNumber()) - 1;
    Value& ticks = tables.UserTicks.at(static_cast<std::size_t>(cell));
    ticks = Add(ticks, record.Field(3));
  }
}

// Records that are more than a header value; false for any other type.
bool ParseSpecial(const Record& record, const RunOptions& options, ModelTables& tables) {
  const std::string type = record.Type();
  if (type == "trace") {
    ParseTrace(record, options, tables);
  } else if (type == "program") {
    ParseProgram(record, tables);
  } else if (type == "shared_object") {
    ParseSharedObject(record, tables);
  } else if (type == "subroutine_call") {
    ParseSubroutineCall(record, tables);
  } else if (type == "input") {
    ParseInput(record, options, tables);
  } else if (type == "perform") {
    ParsePerform(record, tables);
  } else if (type == "resource") {
    tables.Resource = record.After(1);
  } else if (type == "typerate") {
    tables.TypeRate = Assign(record.Field(2), {2}, record.Field(3));
  } else if (type == "user_ticks") {
    ParseUserTicks(record, tables);
  } else {
    return false;
  }
  return true;
}

bool ParseHeader(const Record& record, ModelTables& tables) {
  const auto header = tables.headers.find(record.Type());
  if (header == tables.headers.end()) {
    return false;
  }
  header->second = record.Field(2);
  if (record.Type() == "startclock") {
    tables.LastClock = record.Field(2);
  }
  return true;
}

}  // namespace

HeaderValues InitialHeaders() {
  return {{"memused", ""},        {"hertz", ""},       {"memfree", ""},
          {"pagesize", 0},        {"starttime", ""},   {"startclock", ""},
          {"endtime", ""},        {"endclock", ""},    {"ticks", ""},
          {"ticks_index", ""},    {"index_count", ""}, {"ticks_trigger", ""},
          {"trigger_count", ""},  {"usrcpu", ""},      {"syscpu", ""},
          {"read_count", 0},      {"write_count", 0},  {"delete_count", 0},
          {"clearfile_count", 0}, {"open_count", 0},   {"input_count", 0},
          {"portno", -1},         {"pid", -1},         {"ppid", -1}};
}

std::optional<InvalidLine> ParseModelLines(const std::vector<std::string>& profile_lines,
                                           const RunOptions& options, ModelTables& tables) {
  for (std::size_t line_no = 1; line_no <= profile_lines.size(); ++line_no) {
    const std::string line = Trim(profile_lines[line_no - 1], '\t');
    if (Substring(line, 1, 8) != kPrefix) {
      continue;
    }
    const Record record(Substring(line, 9, Len(line)));
    if (!ParseSpecial(record, options, tables) && !ParseHeader(record, tables)) {
      return InvalidLine{static_cast<std::int64_t>(line_no), record.Text()};
    }
  }
  return std::nullopt;
}

}  // namespace ptick::model
