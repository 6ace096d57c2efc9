#include "profile/parse/record_parser.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "profile/parse/perform_fields.h"
#include "profile/parse/usual_lines.h"
#include "profile/scan/line_end.h"
#include "profile/scan/tab_fields.h"
#include "profile/scan/trace_line.h"
#include "profile/tables/record_types.h"
#include "value/arithmetic.h"
#include "value/list_operations.h"
#include "value/text.h"

namespace ptick {

// Nearly all lines are in the usual form of their type, most of them trace lines. Nothing that the
// loop needs for those is read from memory that an entry may be written to.
bool RecordParser::ParseBlock(std::string_view block) {
  const char* line = block.data();
  const char* const end = line + block.size();
  TickTable& details = tables_.Details;
  std::int64_t line_no = line_no_;
  while (line != end) {
    ++line_no;
    if (const TraceLine trace = ScanTraceLine(line); trace.next != nullptr) {
      details.Add(details.Programs().Intern(trace.program), trace.line, trace.ticks);
      line = trace.next;
      continue;
    }
    if (const char* const next = usual_lines_.Take(line); next != nullptr) {
      line = next;
      continue;
    }
    const LineEnd line_end = FindLineEnd(line);
    const std::string_view text(line, static_cast<std::size_t>(line_end.at - line));
    line_no_ = line_no;
    const bool is_valid = line_end.has_empty_field ? ParseLine(Trim(text, '\t')) : ParseLine(text);
    if (!is_valid) {
      usual_lines_.AddWaiting();
      return false;
    }
    line = line_end.at + 1;
  }
  line_no_ = line_no;
  usual_lines_.AddWaiting();
  return true;
}

bool RecordParser::ParseOthers(const OtherLines& others, std::int64_t line_count) {
  const std::int64_t before_piece = line_no_;
  const bool is_valid = others.ForEach([&](std::string_view lines, std::int64_t before) {
    line_no_ = before_piece + before;
    return ParseBlock(lines);
  });
  line_no_ = is_valid ? before_piece + line_count : line_no_;
  return is_valid;
}

// `profile_line` is trimmed: no TAB is at its ends or next to another.
bool RecordParser::ParseLine(std::string_view profile_line) {
  if (!profile_line.starts_with(kProfilePrefix)) {
    return true;
  }
  profile_line.remove_prefix(kProfilePrefix.size());
  TabFields fields(profile_line);
  const RecordType* type = FindRecordType(fields.Next());
  if (type == nullptr) {
    problem_.kind = ReadProblem::Kind::kInvalidLine;
    problem_.line = line_no_;
    problem_.text = profile_line;
    return false;
  }
  ParseRecord(*type, fields);
  return true;
}

// `fields` are those after the record type.
void RecordParser::ParseRecord(const RecordType& type, TabFields fields) {
  switch (type.kind) {
    case RecordKind::kTrace: {
      const std::string_view program = fields.Next();
      const std::string_view line = fields.Next();
      tables_.Details.Add(program, line, fields.Next());
      break;
    }
    case RecordKind::kProgram:
      ParseProgram(fields.Rest());
      break;
    case RecordKind::kSharedObject:
      ParseSharedObject(fields);
      break;
    case RecordKind::kSubroutineCall:
      ParseSubroutineCall(fields);
      break;
    case RecordKind::kInput:
      ParseInput(fields);
      break;
    case RecordKind::kPerform:
      usual_lines_.AddWaiting();
      AddPerform(fields, options_.keep_performs, tables_.Performs);
      break;
    case RecordKind::kHeader:
      SetHeader(type, fields.Next(), tables_);
      break;
    case RecordKind::kHertz:
      ParseClock(type, ClockSetting::Kind::kHertz, fields.Next());
      break;
    case RecordKind::kStartClock:
      ParseClock(type, ClockSetting::Kind::kStartClock, fields.Next());
      break;
    case RecordKind::kResource:
      tables_.Resource = fields.Rest();
      break;
    case RecordKind::kTypeRate: {
      const std::string_view characters = fields.Next();
      tables_.TypeRate = {std::string(characters), std::string(fields.Next())};
      break;
    }
    case RecordKind::kUserTicks:
      ParseUserTicks(fields);
      break;
  }
}

void RecordParser::ParseProgram(std::string_view command) {
  tables_.ProgramCommand = Change(command, "\t", " ");
  tables_.ProgramName = Field(tables_.ProgramCommand, ' ', 1).text;
}

void RecordParser::ParseSharedObject(TabFields fields) {
  const std::string_view name = fields.Next();
  if (Value(fields.Next()).IsTrue() && name != kMainObject) {
    tables_.SharedObjects.Append(name);
  }
}

// Field 2 of the record is the caller and the subroutine called, separated by a space.
void RecordParser::ParseSubroutineCall(TabFields fields) {
  const std::string_view call = fields.Next();
  const std::size_t space = std::min(call.find(' '), call.size());
  const std::string_view rest = call.substr(std::min(space + 1, call.size()));
  tables_.Subroutines.Add({.caller = call.substr(0, space),
                           .called = rest.substr(0, rest.find(' ')),
                           .times = fields.Next()},
                          options_.keep_callers);
}

void RecordParser::ParseInput(TabFields fields) {
  tables_.InputCount = Increment(tables_.InputCount);
  if (!options_.keep_inputs) {
    return;
  }
  KeyboardInputs::Texts texts;
  for (std::string_view& number : texts.numbers) {
    number = fields.Next();
  }
  texts.text = fields.Rest();
  tables_.Inputs.Add(texts);
}

void RecordParser::ParseClock(const RecordType& type, ClockSetting::Kind kind,
                              std::string_view value) {
  SetHeader(type, value, tables_);
  if (options_.keep_inputs) {
    tables_.Inputs.Add(kind, value);
  }
}

void RecordParser::ParseUserTicks(TabFields fields) {
  const Value index = fields.Next();
  if (!Num(index) || index < 1 || index > 10) {
    return;
  }
  const auto cell = std::get<std::int64_t>(Int(index).AsNumber()) - 1;
  Value& ticks = tables_.UserTicks.at(static_cast<std::size_t>(cell));
  ticks = Add(ticks, fields.Next());
}

std::optional<ReadProblem> ParseProfileLines(LineBlocks& lines, const ReadOptions& options,
                                             ProfileTables& tables) {
  RecordParser parser(options, tables);
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    if (!parser.ParseBlock(block)) {
      return parser.Problem();
    }
  }
  return std::nullopt;
}

}  // namespace ptick
