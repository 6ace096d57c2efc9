#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/merge/profile_merge.h"
#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"
#include "profile/ticks/ordered_ticks.h"
#include "records/line_blocks.h"
#include "records/read_problem.h"

namespace ptick::testing {

/// How the tests write records: `text` with a TAB for each "|".
std::string Tabs(std::string_view text);

/// Profile lines, each "PROFILE:", the record with a TAB for each "|", and a line end.
std::string Records(std::initializer_list<std::string_view> records);

/// All blocks together; says so where one does not end with a line end.
std::string LinesOf(LineBlocks& blocks);

/// What has been merged; nothing is left there.
std::string LinesOf(ProfileMerge& merge);

/// Hands lines to a merge as a block, with no more readable bytes after them than a block has.
void AddLines(ProfileMerge& merge, std::string_view lines);

/// What a parse left.
struct Parsed {
  std::unique_ptr<ProfileTables> tables = std::make_unique<ProfileTables>();
  std::optional<ReadProblem> problem;
};

/// Parses a profile text as the only file of a run; keeps everything where not told otherwise.
Parsed Parse(std::string_view text, const ReadOptions& options = {});

/// A row of entries as "program|line|ticks" with a space between each two.
std::string RowText(const OrderedTicks& ticks, std::size_t row);

/// All rows, with " / " between each two.
std::string RowTexts(const OrderedTicks& ticks);

/// The same for the entries of a table, which loses them.
std::string RowTexts(TickTable&& ticks, SortOrder order = SortOrder::kDescending,
                     bool per_program = false);

/// Each record kept of the table: its nine values with "]" between each two.
std::vector<std::string> Texts(const PerformTable& performs);

/// The lines of a keyboard script for the inputs.
std::vector<std::string> ScriptLines(const KeyboardInputs& inputs, bool typing_rate = false);

std::vector<std::string> Texts(const NameList& list);

}  // namespace ptick::testing
