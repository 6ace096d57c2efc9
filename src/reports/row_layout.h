#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "figures/running_sum.h"
#include "figures/tick_share.h"
#include "profile/ticks/ordered_ticks.h"
#include "value/mask.h"
#include "value/value.h"

namespace ptick {

/// The columns of the per-line report, all left-justified, with a space between them.
inline constexpr std::size_t kSourceNameWidth = 20;
inline constexpr std::size_t kLineWidth = 6;
inline constexpr std::size_t kTicksWidth = 8;
inline constexpr std::size_t kPercentWidth = 6;
inline constexpr std::size_t kRowWidth =
    kSourceNameWidth + 1 + kLineWidth + 1 + kTicksWidth + 1 + kPercentWidth;

/// One line of the report from the texts of its four columns.
std::string LayOutColumns(std::string_view source_name, std::string_view line,
                          std::string_view ticks, std::string_view percent);

/// Lays out the rows of the per-line report, and adds up their ticks and percentages. A copy, for
/// another thread, shares what does not change.
class RowLayout {
 public:
  RowLayout(const OrderedTicks& ticks, const Value& total_ticks);

  /// Begins a list of rows: the sums start at 0, and the first row shows its name.
  void StartList();

  /// The same for a part of a list, after a row of that program if it is not the first part.
  void StartList(std::optional<NameTable::Id> previous_program);

  /// Writes the row of `entry` to `row`, kRowWidth bytes. The name shows where it differs from that
  /// of the row before.
  void LayOut(const TickEntry& entry, char* row);

  /// The sums over the rows since StartList; the percentage is that of the rows as they are shown.
  Value SubtotalTicks() const { return subtotal_ticks_.Total(); }
  Value SubtotalPercent() const;

  /// The sum of the ticks and that of the percentages in hundredths, where all of the rows have
  /// ordinary ticks and both are whole in 64 bits: then nothing has decreased from row to row, or
  /// nothing has increased, and pieces of a list can be added up.
  struct WholeSums {
    std::int64_t ticks;
    std::int64_t hundredths;
  };
  std::optional<WholeSums> SubtotalWhole() const;

 private:
  using NameColumn = std::array<char, kSourceNameWidth>;
  using TicksColumns = std::array<char, 1 + kTicksWidth + 1 + kPercentWidth>;

  void SetTicks(std::uint32_t ticks);
  void SetTicks(std::string_view ticks);
  void SetTicksColumns(std::string_view ticks, const Value& hundredths);

  const OrderedTicks& ticks_;
  TickShare share_;
  std::shared_ptr<const std::vector<NameColumn>> name_columns_;

  // The state of the list: entries are in the order of their ticks, so a row often has the ticks of
  // the row before.
  bool first_ = true;
  NameTable::Id previous_program_ = 0;
  bool ticks_known_ = false;
  std::uint32_t previous_ticks_ = 0;
  std::int64_t previous_hundredths_ = 0;
  TicksColumns ticks_columns_{};  ///< with the space before them
  bool ordinary_ = true;          ///< no row has had ticks of another kind
  RunningSum subtotal_ticks_;
  RunningSum subtotal_hundredths_;
};

}  // namespace ptick
