#include "compare/line_moves.h"

#include <cstddef>
#include <utility>

#include "compare/key_names.h"

namespace ptick::compare {

namespace {

bool IsSourceLine(std::uint32_t line) { return KeyNames::IsLineNumber(line) && line != 0; }

// Where a line of one version is in the other. `there` says so for each line of the one version,
// counted from 0; the other has `other_lines`.
std::optional<std::uint32_t> Follow(std::uint32_t line, const std::vector<std::uint32_t>& there,
                                    std::size_t other_lines) {
  if (line > there.size()) {
    return line > other_lines ? std::optional(line) : std::nullopt;
  }
  const std::uint32_t other = there[line - 1];
  return other == Alignment::kNone ? std::nullopt : std::optional(other + 1);
}

}  // namespace

void LineMoves::Set(std::uint32_t program, Alignment alignment) {
  alignments_.insert_or_assign(program, std::move(alignment));
}

const Alignment* LineMoves::Find(std::uint32_t program) const {
  const auto found = alignments_.find(program);
  return found == alignments_.end() ? nullptr : &found->second;
}

std::optional<std::uint32_t> LineMoves::NewLine(std::uint32_t program,
                                                std::uint32_t old_line) const {
  const Alignment* const alignment = Find(program);
  if (alignment == nullptr || !IsSourceLine(old_line)) {
    return old_line;
  }
  return Follow(old_line, alignment->new_of_old, alignment->old_of_new.size());
}

std::optional<std::uint32_t> LineMoves::OldLine(std::uint32_t program,
                                                std::uint32_t new_line) const {
  const Alignment* const alignment = Find(program);
  if (alignment == nullptr || !IsSourceLine(new_line)) {
    return new_line;
  }
  return Follow(new_line, alignment->old_of_new, alignment->new_of_old.size());
}

bool LineMoves::IsPastOldEnd(std::uint32_t program, std::uint32_t old_line) const {
  const Alignment* const alignment = Find(program);
  return alignment != nullptr && IsSourceLine(old_line) && old_line > alignment->new_of_old.size();
}

bool LineMoves::IsPastNewEnd(std::uint32_t program, std::uint32_t new_line) const {
  const Alignment* const alignment = Find(program);
  return alignment != nullptr && IsSourceLine(new_line) && new_line > alignment->old_of_new.size();
}

}  // namespace ptick::compare
