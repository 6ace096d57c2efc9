#include "reports/perform_rows.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "figures/perform_times.h"
#include "figures/seconds_text.h"
#include "reports/columns.h"
#include "value/text.h"

namespace ptick {

namespace {

// The columns, with a blank after each.
constexpr std::size_t kElapsedWidth = 7;
constexpr std::size_t kTypeWidth = 4;
constexpr std::size_t kTicksWidth = 7;
constexpr std::size_t kCpuWidth = 13;
constexpr std::size_t kTypePlace = kElapsedWidth + 1;
constexpr std::size_t kTicksPlace = kTypePlace + kTypeWidth + 1;
constexpr std::size_t kCpuPlace = kTicksPlace + kTicksWidth + 1;
constexpr std::size_t kCommandPlace = kCpuPlace + kCpuWidth + 1;

/// Room for columns while they are laid out: a text may be longer than what is shown of it.
constexpr std::size_t kColumnsRoom = kCpuPlace + 2 * SecondsText::kMaxSize + 1 + kCpuWidth;

using TypeColumn = std::array<char, kTypeWidth>;

std::vector<TypeColumn> TypeColumns(const NameTable& types) {
  std::vector<TypeColumn> columns(types.size());
  for (std::size_t type = 0; type < columns.size(); ++type) {
    const std::string_view text = types[static_cast<NameTable::Id>(type)].substr(0, kTypeWidth);
    PutLeft(UpperCase(text), kTypeWidth, columns[type].data());
  }
  return columns;
}

class PerformRows {
 public:
  PerformRows(const ProfileTables& tables, std::int64_t page_width)
      : hertz_(tables.Hertz.AsNumber()),
        seconds_(hertz_),
        types_(TypeColumns(tables.Performs.Types())),
        room_(static_cast<std::size_t>(
            std::max<std::int64_t>(page_width - std::int64_t{kCommandPlace} - 1, 0))) {}

  void Print(const PerformTable::Record& perform, Output& output) const {
    const std::string_view command = perform.Command().substr(0, room_);
    char* const row = output.LineRoom(kColumnsRoom + command.size());
    if (!seconds_.IsQuick() || !LayOutWhole(perform, row)) {
      LayOut(perform, row);
    }
    std::memcpy(row + kTypePlace, types_[perform.TypeId()].data(), kTypeWidth);
    for (const std::size_t place : {kTypePlace, kTicksPlace, kCpuPlace, kCommandPlace}) {
      row[place - 1] = ' ';
    }
    output.EndLineAt(std::ranges::copy(command, row + kCommandPlace).out);
  }

 private:
  /// The numbers of a PERFORM where all of them are whole.
  struct WholeNumbers {
    std::int64_t elapsed;
    std::uint32_t ticks;
    std::uint32_t usr_cpu;
    std::uint32_t sys_cpu;
  };

  static std::optional<WholeNumbers> WholeNumbersOf(const PerformTable::Record& perform) {
    const std::optional<std::uint32_t> start = perform.Whole(PerformNumber::kStartClock);
    const std::optional<std::uint32_t> end = perform.Whole(PerformNumber::kEndClock);
    const std::optional<std::uint32_t> ticks = perform.Whole(PerformNumber::kTicks);
    const std::optional<std::uint32_t> usr_cpu = perform.Whole(PerformNumber::kUsrCpu);
    const std::optional<std::uint32_t> sys_cpu = perform.Whole(PerformNumber::kSysCpu);
    if (!start || !end || !ticks || !usr_cpu || !sys_cpu) {
      return std::nullopt;
    }
    return WholeNumbers{std::int64_t{*end} - *start, *ticks, *usr_cpu, *sys_cpu};
  }

  // Lays out all columns but the type and the command, each after the one before: what is too long
  // for a column is covered by the next one. False where not all numbers are whole.
  bool LayOutWhole(const PerformTable::Record& perform, char* row) const {
    const std::optional<WholeNumbers> numbers = WholeNumbersOf(perform);
    if (!numbers) {
      return false;
    }
    PutBlanks<kElapsedWidth>(seconds_.Put(numbers->elapsed, row));
    char* at = row + kTicksPlace;
    if (perform.Has(PerformNumber::kTicks)) {
      at = PutNumber(numbers->ticks, at);
    }
    PutBlanks<kTicksWidth>(at);
    at = seconds_.Put(numbers->usr_cpu, row + kCpuPlace);
    *at++ = ',';
    PutBlanks<kCpuWidth>(seconds_.Put(numbers->sys_cpu, at));
    return true;
  }

  // The same whatever the numbers are.
  void LayOut(const PerformTable::Record& perform, char* row) const {
    const PerformTimes times = TimesOf(perform, hertz_);
    PutLeft(times.elapsed.Text(), kElapsedWidth, row);
    PutLeft(perform.Text(PerformNumber::kTicks), kTicksWidth, row + kTicksPlace);
    PutLeft(times.usr_cpu.Text() + ',' + times.sys_cpu.Text(), kCpuWidth, row + kCpuPlace);
  }

  template <std::size_t count>
  static void PutBlanks(char* at) {
    std::memset(at, ' ', count);
  }

  Value hertz_;
  SecondsText seconds_;
  std::vector<TypeColumn> types_;
  std::size_t room_;  ///< for the command
};

}  // namespace

void PrintPerformRows(const ProfileTables& tables, std::int64_t page_width, Output& output) {
  const PerformRows rows(tables, page_width);
  tables.Performs.ForEachRecord(
      [&](const PerformTable::Record& perform) { rows.Print(perform, output); });
}

}  // namespace ptick
