#include "ptick_export/formats/format_table.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>
#include <vector>

#include "ptick_export/facts/counters.h"
#include "ptick_export/formats/callgrind.h"
#include "ptick_export/formats/folded.h"
#include "ptick_export/formats/json_profile.h"
#include "ptick_export/formats/pprof.h"
#include "ptick_export/formats/speedscope.h"
#include "ptick_export/formats/trace_events.h"
#include "value/value.h"

namespace ptick::exports {

namespace {

constexpr std::array kFormats = {
    Format{"json", "everything", kAllParts, false, WriteJsonProfile},
    Format{"csv", "one table", kAllParts, false, nullptr},
    Format{"callgrind", "ticks by line and subroutine calls, for KCachegrind",
           kLines | kSubroutines, false, WriteCallgrind},
    Format{"pprof", "ticks by line, for pprof", kLines, true, WritePprof},
    Format{"speedscope", "ticks by line and the commands in time, for speedscope",
           kLines | kCommands, false, WriteSpeedscope},
    Format{"trace", "commands and inputs in time, for Perfetto and chrome://tracing",
           kCommands | kInputs, false, WriteTraceEvents},
    Format{"folded", "ticks by line, for flame graphs and grep", kLines, false, WriteFolded},
};

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (std::size_t n = 0; n < texts.size(); ++n) {
    if (n > 0) {
      joined += n + 1 == texts.size() ? " and " : ", ";
    }
    joined += texts[n];
  }
  return joined;
}

std::uint64_t CountEntries(const TickTable& ticks) {
  std::uint64_t entries = 0;
  ticks.ForEach([&entries](const TickEntry& /*entry*/) { ++entries; });
  return entries;
}

// As reports count them: where they are not wanted the reader keeps none.
std::uint64_t CountInputs(const ProfileTables& tables) {
  const Number inputs = tables.InputCount.AsNumber();
  const auto* const whole = std::get_if<std::int64_t>(&inputs);
  return whole != nullptr && *whole > 0 ? static_cast<std::uint64_t>(*whole) : 0;
}

std::uint64_t CountCounters(const ProfileTables& tables) {
  const auto user_ticks = std::ranges::count_if(tables.UserTicks, &Value::IsTrue);
  return CountersOf(tables).size() + static_cast<std::uint64_t>(user_ticks) +
         (tables.Resource.empty() ? 0 : 1) + (tables.TypeRate ? 1 : 0);
}

}  // namespace

std::span<const Format> Formats() { return kFormats; }

void TellPartsLeftOut(const ExportJob& job, const Format& format) {
  const ProfileTables& tables = job.tables;
  std::vector<std::string> left_out;
  const auto add = [&](Part part, std::uint64_t count, std::string_view name) {
    if ((format.parts & part) == 0 && count > 0) {
      left_out.push_back(CountOf(count, name));
    }
  };
  add(kLines, (format.parts & kLines) != 0 ? 0 : CountEntries(tables.Details), "trace record");
  add(kCommands, tables.Performs.Count(), "command");
  add(kSubroutines, tables.Subroutines.Count(), "subroutine call");
  add(kObjects, tables.SharedObjects.size(), "shared object");
  add(kInputs, CountInputs(tables), "input");
  add(kCounters, CountCounters(tables), "counter");
  if (!left_out.empty()) {
    Tell(job, std::string(format.name) + " does not hold " + Joined(left_out) +
                  " of this profile; json holds everything");
  }
}

}  // namespace ptick::exports
