// One side of a comparison: what its runs say of each key.
#pragma once

#include <array>
#include <cstddef>

#include "compare/amounts.h"
#include "compare/key_names.h"
#include "compare/key_table.h"
#include "compare/kind.h"
#include "profile/parse/read_options.h"
#include "profile/tables/profile_tables.h"

namespace ptick::compare {

/// What a command has besides its ticks.
enum class CommandFigure { kTimes, kElapsed, kCpu };
constexpr std::size_t kCommandFigures = 3;

/// Memory follows the distinct keys, not the runs.
class Side {
 public:
  /// Both sides of a comparison share the names, which outlive them.
  Side(Kind kind, KeyNames& names) : kind_(kind), names_(names) {}

  /// What a reader of profiles is to keep for this kind of comparison.
  static ReadOptions NeededOptions(Kind kind);

  /// Adds what a run recorded, read with at least the options needed.
  void AddRun(const ProfileTables& tables);

  Kind GetKind() const { return kind_; }
  std::size_t Runs() const { return total_.Runs(); }
  const KeyNames& Names() const { return names_; }
  const KeyTable& Keys() const { return keys_; }

  /// What is compared: ticks; times of subroutines; the value of a counter.
  const Amounts& Values() const { return values_; }
  /// In seconds but for the times. Commands whose seconds nobody knows do not have them.
  const Amounts& Figures(CommandFigure figure) const {
    return figures_[static_cast<std::size_t>(figure)];
  }

  /// The ticks of each run, as key 0: those of its header, or the sum of its entries where it has
  /// none.
  const Amounts& Total() const { return total_; }

 private:
  void AddTicks(const ProfileTables& tables);
  void AddCommands(const ProfileTables& tables);
  void AddSubroutines(const ProfileTables& tables);
  void AddCounters(const ProfileTables& tables);
  void AddTotal(const ProfileTables& tables);
  void AddCounter(const std::string& name, const Value& value);
  Amounts::Id NameId(std::string_view name);

  Kind kind_;
  KeyNames& names_;
  KeyTable keys_;
  Amounts values_;
  std::array<Amounts, kCommandFigures> figures_;
  Amounts total_;
};

}  // namespace ptick::compare
