#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "profile/merge/profile_merge.h"
#include "profile/tables/profile_tables.h"
#include "records/line_blocks.h"
#include "reports/run_options.h"

namespace ptick::testing {

/// How the tests write records: `text` with a TAB for each "|".
std::string Tabs(std::string_view text);

/// Profile lines, each "PROFILE:", the record with a TAB for each "|", and a line end.
std::string Records(std::initializer_list<std::string_view> records);

/// All blocks together; says so where one does not end with a line end.
std::string LinesOf(LineBlocks& blocks);

/// Hands lines to a merge as a block, with no more readable bytes behind them than a block has.
void AddLines(ProfileMerge& merge, std::string_view lines);

/// What a parse left behind.
struct Parsed {
  std::unique_ptr<ProfileTables> tables = std::make_unique<ProfileTables>();
  std::string terminal;
  std::optional<int> stopped;  ///< the status, when the parse ended the run
};

/// Parses a profile text as the only file of a run.
Parsed Parse(std::string_view text, const RunOptions& options = {});

/// A row of `Details`, its entries as "program|line|ticks" with a blank between each two.
std::string RowText(const TickTable& details, std::size_t row);

/// All rows, with " / " between each two.
std::string RowTexts(const TickTable& details);

std::vector<std::string> Texts(const FieldList& list);

}  // namespace ptick::testing
