#include "profile/parse/record_parser.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <variant>

#include "output/stop.h"
#include "profile/parse/perform_entry.h"
#include "profile/scan/tab_fields.h"
#include "profile/scan/trace_line.h"
#include "profile/tables/record_types.h"
#include "reports/keyboard_lines.h"
#include "reports/subroutine_order.h"
#include "value/arithmetic.h"
#include "value/list_operations.h"
#include "value/text.h"

namespace ptick {

namespace {

/// Trims TABs: none at the ends, runs cut to one. Lines that need nothing done are not copied.
class TabTrimmer {
 public:
  std::string_view Trimmed(std::string_view line) {
    if (line.empty() || (line.front() != '\t' && line.back() != '\t' &&
                         line.find("\t\t") == std::string_view::npos)) {
      return line;
    }
    trimmed_ = Trim(line, '\t');
    return trimmed_;
  }

 private:
  std::string trimmed_;
};

class RecordParser {
 public:
  RecordParser(const RunOptions& options, Output& output, ProfileTables& tables)
      : options_(options), output_(output), tables_(tables) {}

  void ParseBlock(std::string_view block);
  void Finish();

 private:
  void ParseLine(std::string_view line);
  void ParseRecord(const RecordType& type, std::string_view profile_line);
  void ParseProgram(std::string_view command);
  void ParseSharedObject(TabFields fields);
  void ParseUserTicks(TabFields fields);
  [[noreturn]] void StopAtInvalidLine(std::string_view profile_line);

  const RunOptions& options_;
  Output& output_;
  ProfileTables& tables_;
  TabTrimmer trimmer_;
  std::int64_t line_no_ = 0;
};

void RecordParser::ParseBlock(std::string_view block) {
  const char* line = block.data();
  const char* const end = line + block.size();
  while (line != end) {
    ++line_no_;
    if (const TraceLine trace = ScanTraceLine(line); trace.next != nullptr) {
      TickTable& details = tables_.Details;
      details.Add(details.Programs().Intern(trace.program), trace.line, trace.ticks);
      line = trace.next;
      continue;
    }
    const auto* line_end =
        static_cast<const char*>(std::memchr(line, '\n', static_cast<std::size_t>(end - line)));
    ParseLine({line, static_cast<std::size_t>(line_end - line)});
    line = line_end + 1;
  }
}

void RecordParser::ParseLine(std::string_view line) {
  std::string_view profile_line = trimmer_.Trimmed(line);
  if (!profile_line.starts_with(kProfilePrefix)) {
    return;
  }
  profile_line.remove_prefix(kProfilePrefix.size());
  const RecordType* type = FindRecordType(TabFields(profile_line).Next());
  if (type == nullptr) {
    StopAtInvalidLine(profile_line);
  }
  ParseRecord(*type, profile_line);
}

void RecordParser::ParseRecord(const RecordType& type, std::string_view profile_line) {
  TabFields fields(profile_line);
  fields.Next();  // the record type
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
    case RecordKind::kSubroutineCall: {
      const std::string_view call = fields.Next();
      tables_.SubroutinesCalled.Append(Field(call, ' ', 2).text);
      tables_.SubroutineTimes.Append(fields.Next());
      break;
    }
    case RecordKind::kInput:
      tables_.InputCount = Increment(tables_.InputCount);
      if (!options_.KeyScriptFile.empty()) {
        AppendKeyboardLines(profile_line, options_.TypeRateOption, tables_);
      }
      break;
    case RecordKind::kPerform:
      if (const std::string entry = PerformEntry(profile_line); !entry.empty()) {
        tables_.Performs.Append(entry);
      }
      break;
    case RecordKind::kHeader:
      tables_.*type.header = fields.Next();
      break;
    case RecordKind::kStartClock:
      tables_.LastClock = tables_.*type.header = fields.Next();
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
  if (Value(fields.Next()).IsTrue() && name != "main()") {
    tables_.SharedObjects.Append(name);
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

void RecordParser::StopAtInvalidLine(std::string_view profile_line) {
  output_.PrintTerminal("Invalid format in profile file at line " + std::to_string(line_no_));
  output_.PrintTerminal(std::string("\t").append(profile_line));
  throw Stop{2};
}

void RecordParser::Finish() {
  tables_.Details.Order(options_.TickOrder, options_.PerProgram);
  OrderSubroutines(tables_);
}

}  // namespace

void ParseProfileLines(LineBlocks& lines, const RunOptions& options, Output& output,
                       ProfileTables& tables) {
  RecordParser parser(options, output, tables);
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    parser.ParseBlock(block);
  }
  parser.Finish();
}

}  // namespace ptick
