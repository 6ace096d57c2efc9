#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "profile/parse/other_lines.h"
#include "profile/parse/read_options.h"
#include "profile/parse/usual_lines.h"
#include "profile/scan/tab_fields.h"
#include "profile/tables/profile_tables.h"
#include "profile/tables/record_types.h"
#include "records/line_blocks.h"
#include "records/read_problem.h"

namespace ptick {

/// Fills tables from profile lines, block by block.
class RecordParser {
 public:
  /// Both must outlive this.
  RecordParser(const ReadOptions& options, ProfileTables& tables)
      : options_(options), tables_(tables), usual_lines_(options, tables) {}

  /// Takes the lines of a block as LineBlocks hands them out; false at one of an unknown record
  /// type, and Problem tells which.
  bool ParseBlock(std::string_view block);

  /// The same for the lines that TakeTraceLines left of a piece of `line_count` lines.
  bool ParseOthers(const OtherLines& others, std::int64_t line_count);

  /// As ReadProblem says, without a name.
  const ReadProblem& Problem() const { return problem_; }

  /// Sets the number of the line that came last, where lines were taken by others.
  void SetLineNo(std::int64_t line_no) { line_no_ = line_no; }

 private:
  bool ParseLine(std::string_view profile_line);
  void ParseRecord(const RecordType& type, TabFields fields);
  void ParseProgram(std::string_view command);
  void ParseSharedObject(TabFields fields);
  void ParseSubroutineCall(TabFields fields);
  void ParseInput(TabFields fields);
  void ParseClock(const RecordType& type, ClockSetting::Kind kind, std::string_view value);
  void ParseUserTicks(TabFields fields);

  const ReadOptions& options_;
  ProfileTables& tables_;
  UsualLines usual_lines_;
  std::int64_t line_no_ = 0;
  ReadProblem problem_;
};

/// Reads profile lines to their end and fills the tables. Lines that do not begin with "PROFILE:"
/// are passed over. At a line of an unknown record type it ends early: the problem that is returned
/// then has the kind, the line's number and the text, but no name.
std::optional<ReadProblem> ParseProfileLines(LineBlocks& lines, const ReadOptions& options,
                                             ProfileTables& tables);

}  // namespace ptick
