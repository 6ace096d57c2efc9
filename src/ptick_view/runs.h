// The runs that a page shows, as tables of all of them and as sides of comparisons.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "companion/inputs/profile_inputs.h"
#include "compare/comparison.h"
#include "compare/key_names.h"
#include "compare/side.h"
#include "profile/tables/profile_tables.h"

namespace ptick::view {

/// What a page compares, in the order of compare::Kind.
inline constexpr std::size_t kKinds = 5;

/// The sides of a comparison of one kind.
struct ComparedKind {
  explicit ComparedKind(compare::Kind kind) : old_side(kind, names), new_side(kind, names) {}
  ComparedKind(const ComparedKind&) = delete;
  ComparedKind& operator=(const ComparedKind&) = delete;
  ~ComparedKind() = default;

  compare::KeyNames names;
  compare::Side old_side;
  compare::Side new_side;
};

/// All kinds of one page.
class ComparedKinds {
 public:
  ComparedKind& operator[](compare::Kind kind) { return kinds_[static_cast<std::size_t>(kind)]; }
  const ComparedKind& operator[](compare::Kind kind) const {
    return kinds_[static_cast<std::size_t>(kind)];
  }

  /// Adds a run to the old or the new side of each kind.
  void AddRun(const ProfileTables& tables, bool is_new);

 private:
  std::array<ComparedKind, kKinds> kinds_ = {
      ComparedKind(compare::Kind::kLine), ComparedKind(compare::Kind::kProgram),
      ComparedKind(compare::Kind::kCommand), ComparedKind(compare::Kind::kSubroutine),
      ComparedKind(compare::Kind::kCounter)};
};

/// Reads profiles, each once, into empty tables: of one profile as it is, of several merged. Where
/// `kinds` are given, each profile is also a run of their old or new side. Throws Trouble.
void ReadRuns(const std::vector<std::string>& profiles, const companion::ProfileInputs& inputs,
              bool is_new, ComparedKinds* kinds, ProfileTables& tables);

}  // namespace ptick::view
