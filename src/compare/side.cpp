#include "compare/side.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "figures/clock_time.h"
#include "figures/perform_times.h"
#include "figures/running_sum.h"
#include "profile/tables/record_types.h"
#include "value/arithmetic.h"

namespace ptick::compare {

namespace {

/// Sums up under a number that means nothing when runs are put together.
constexpr std::string_view kNoCounter = "portno";

bool IsCounter(const RecordType& type) {
  return type.kind == RecordKind::kHeader && type.merge == MergeKind::kAdded &&
         type.name != kNoCounter;
}

// Adds entries in batches: they come in no order, so that each would wait for memory several times.
class TickBatch {
 public:
  TickBatch(KeyTable& keys, Amounts& ticks) : keys_(keys), ticks_(ticks) {}

  void Add(Key key, std::uint32_t ticks) {
    keys_.PrefetchSlot(key);
    entries_[count_++] = {key, ticks};
    if (count_ == entries_.size()) {
      Flush();
    }
  }

  void Flush() {
    const std::span<const Entry> entries = std::span(entries_).first(count_);
    for (const Entry& entry : entries) {
      keys_.PrefetchKey(entry.key);
      ticks_.Prefetch(keys_.LikelyId(entry.key));
    }
    for (const Entry& entry : entries) {
      ticks_.Add(keys_.Intern(entry.key), std::int64_t{entry.ticks});
    }
    count_ = 0;
  }

 private:
  struct Entry {
    Key key;
    std::uint32_t ticks;
  };

  KeyTable& keys_;
  Amounts& ticks_;
  std::array<Entry, 64> entries_;
  std::size_t count_ = 0;
};

bool IsRate(const Value& hertz) { return CompareNumbers(hertz.AsNumber(), std::int64_t{0}) != 0; }

}  // namespace

ReadOptions Side::NeededOptions(Kind kind) {
  return {.keep_performs = kind == Kind::kCommand,
          .keep_callers = kind == Kind::kSubroutine,
          .keep_inputs = false};
}

void Side::AddRun(const ProfileTables& tables) {
  switch (kind_) {
    case Kind::kLine:
    case Kind::kProgram:
      AddTicks(tables);
      break;
    case Kind::kCommand:
      AddCommands(tables);
      break;
    case Kind::kSubroutine:
      AddSubroutines(tables);
      break;
    case Kind::kCounter:
      AddCounters(tables);
      break;
  }
  AddTotal(tables);
  values_.EndRun();
  for (Amounts& figures : figures_) {
    figures.EndRun();
  }
  total_.EndRun();
}

void Side::AddTicks(const ProfileTables& tables) {
  const TickTable& entries = tables.Details;
  std::vector<std::uint32_t> names(entries.Programs().size());
  for (NameTable::Id program = 0; program < names.size(); ++program) {
    names[program] = names_.Names().Intern(entries.Programs()[program]);
  }
  const bool by_line = kind_ == Kind::kLine;
  TickBatch batch(keys_, values_);
  entries.ForEach([&](const TickEntry& entry) {
    Key key{.name = names[entry.program]};
    if (!entry.HasExactText()) {
      key.detail = by_line ? entry.line : 0;
      batch.Add(key, entry.ticks);
    } else {
      key.detail = by_line ? names_.InternLine(entries.ExactLine(entry)) : 0;
      values_.Add(keys_.Intern(key), Value(entries.ExactTicks(entry)));
    }
  });
  batch.Flush();
}

void Side::AddCommands(const ProfileTables& tables) {
  const PerformTable& performs = tables.Performs;
  const Value hertz = tables.Hertz.AsNumber();
  const bool has_seconds = IsRate(hertz);
  for (std::size_t n = 0; n < performs.RecordCount(); ++n) {
    const PerformTable::Record perform = performs[n];
    const Amounts::Id key = NameId(perform.Command());
    values_.Add(key, Value(perform.AsNumber(PerformNumber::kTicks)));
    figures_[0].Add(key, std::int64_t{1});
    if (has_seconds) {
      const PerformTimes times = TimesOf(perform, hertz);
      figures_[1].Add(key, times.elapsed);
      figures_[2].Add(key, Add(times.usr_cpu, times.sys_cpu));
    }
  }
}

void Side::AddSubroutines(const ProfileTables& tables) {
  const SubroutineTable& calls = tables.Subroutines;
  for (std::size_t n = 0; n < calls.Count(); ++n) {
    const Key key{.name = names_.Names().Intern(calls.Caller(n)),
                  .detail = names_.Details().Intern(calls.Called(n))};
    values_.Add(keys_.Intern(key), Value(calls.Times(n)));
  }
}

void Side::AddCounters(const ProfileTables& tables) {
  for (const RecordType& type : RecordTypes()) {
    if (IsCounter(type)) {
      AddCounter(std::string(type.name), tables.*type.header);
    }
  }
  for (std::size_t n = 0; n < tables.UserTicks.size(); ++n) {
    AddCounter("user_ticks_" + std::to_string(n + 1), tables.UserTicks.at(n));
  }
  if (IsRate(tables.Hertz) && !tables.StartClock.Empty() && !tables.EndClock.Empty()) {
    AddCounter("elapsed", ElapsedSeconds(tables.StartClock, tables.EndClock, tables.Hertz));
  }
}

void Side::AddCounter(const std::string& name, const Value& value) {
  if (!value.Empty()) {
    values_.Add(NameId(name), value);
  }
}

Amounts::Id Side::NameId(std::string_view name) {
  return keys_.Intern({.name = names_.Names().Intern(name), .detail = 0});
}

void Side::AddTotal(const ProfileTables& tables) {
  if (!tables.TotalTicks.Empty()) {
    total_.Add(0, tables.TotalTicks);
    return;
  }
  RunningSum sum;
  tables.Details.ForEach([&](const TickEntry& entry) {
    if (!entry.HasExactText()) {
      sum.Add(std::int64_t{entry.ticks});
    } else {
      sum.Add(Value(tables.Details.ExactTicks(entry)));
    }
  });
  total_.Add(0, sum.Total());
}

}  // namespace ptick::compare
