#include "profile/tables/perform_table.h"

#include <algorithm>

namespace ptick {

void PerformTable::Add(const PerformTexts& texts, bool keep) {
  const NameTable::Id command = commands_.Intern(texts.command);
  CountOne(command);
  if (!keep) {
    return;
  }
  Record::Entry entry{command, types_.Intern(texts.type), {}};
  std::ranges::transform(texts.numbers, entry.numbers.begin(),
                         [this](std::string_view text) { return numbers_.Add(text); });
  entries_.Append(entry);
}

void PerformTable::Count(std::span<const std::string_view> commands) {
  std::array<NameTable::Id, kNameBatch> ids;  // NOLINT(*-member-init): written by InternNames
  InternNames(commands_, commands, ids.data());
  for (std::size_t i = 0; i < commands.size(); ++i) {
    CountOne(ids[i]);
  }
}

void PerformTable::Add(std::span<const PerformLine> lines) {
  // Numbers of the usual form are their own places.
  static_assert(kNoOrdinaryNumber == NumberTexts::kEmpty);
  std::array<std::string_view, kNameBatch> commands;
  std::ranges::transform(lines, commands.begin(), &PerformLine::command);
  std::array<NameTable::Id, kNameBatch> ids;  // NOLINT(*-member-init): written by InternNames
  InternNames(commands_, std::span(commands).first(lines.size()), ids.data());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    CountOne(ids[i]);
    entries_.Append({ids[i], types_.Intern(lines[i].type), lines[i].numbers});
  }
}

}  // namespace ptick
