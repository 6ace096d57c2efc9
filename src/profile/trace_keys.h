#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "profile/merge/merged_keys.h"
#include "profile/ticks/tick_table.h"

namespace ptick {

/// Takes merged keys that are trace entries into a table, without their text.
class TraceKeys {
 public:
  /// Both must outlive this.
  TraceKeys(const MergedKeys& keys, TickTable& ticks)
      : ticks_(ticks), programs_(keys.PartCount()) {}

  /// Calls `before` and takes the key. False for one that is no trace entry in its usual form: its
  /// line is for those who know all rules.
  template <typename Before>
  bool Take(const MergedKey& key, const Before& before) {
    const auto [head, line] = key.values->Keys().NumbersOf(key.key);
    const std::optional<std::uint32_t> ticks = key.values->OrdinaryOf(key.key);
    if (line >= TickEntry::kExactText || !ticks) {
      return false;
    }
    NameTable::Id& program = ProgramOf(head, key);
    if (program == kNone) {
      return false;
    }
    before();
    if (program == kNew) {
      program = ticks_.Programs().Intern(NameIn(key.values->Keys().Heads()[head]));
    }
    ticks_.Add(program, line, *ticks);
    return true;
  }

 private:
  static constexpr NameTable::Id kUnknown = ~NameTable::Id{0};
  static constexpr NameTable::Id kNone = kUnknown - 1;  ///< the head is none of a trace entry
  static constexpr NameTable::Id kNew = kUnknown - 2;   ///< the program has no number yet

  NameTable::Id& ProgramOf(NameTable::Id head, const MergedKey& key) {
    std::vector<NameTable::Id>& known = programs_[key.part];
    if (head >= known.size()) {
      known.resize(key.values->Keys().Heads().size(), kUnknown);
    }
    if (known[head] == kUnknown) {
      known[head] = NameIn(key.values->Keys().Heads()[head]).empty() ? kNone : kNew;
    }
    return known[head];
  }

  static std::string_view NameIn(std::string_view head);

  TickTable& ticks_;
  std::vector<std::vector<NameTable::Id>> programs_;  ///< by part and by the number of the head
};

}  // namespace ptick
