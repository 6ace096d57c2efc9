#include "ptick_diff/read_sides.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

#include "compare/alignment.h"

namespace ptick::compare {

namespace {

std::vector<std::string_view> LinesOf(const RecordText& text) {
  std::vector<std::string_view> lines;
  lines.reserve(text.FieldCount());
  for (std::size_t n = 1; n <= text.FieldCount(); ++n) {
    lines.push_back(text.ReadField(n).value_or(std::string_view()));
  }
  return lines;
}

}  // namespace

void ReadRuns(std::span<const std::string> profiles, const companion::ProfileInputs& inputs,
              Side& side) {
  const ReadOptions options = Side::NeededOptions(side.GetKind());
  for (const std::string& profile : profiles) {
    const auto tables = std::make_unique<ProfileTables>();
    inputs.ReadOne(profile, options, *tables);
    side.AddRun(*tables);
  }
}

LineMoves AlignSources(const KeyNames& names, const companion::SourceFolders& old_sources,
                       const companion::SourceFolders& new_sources,
                       std::vector<std::string>& without_source) {
  LineMoves moves;
  for (NameTable::Id program = 0; program < names.Names().size(); ++program) {
    const std::string_view name = names.Names()[program];
    const std::optional<companion::SourceText> old_source = old_sources.Read(name);
    const std::optional<companion::SourceText> new_source =
        old_source ? new_sources.Read(name) : std::nullopt;
    if (new_source) {
      moves.Set(program, AlignLines(LinesOf(old_source->text), LinesOf(new_source->text)));
    } else {
      without_source.emplace_back(name);
    }
  }
  std::ranges::sort(without_source);
  return moves;
}

}  // namespace ptick::compare
