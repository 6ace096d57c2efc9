#pragma once

#include <cstdint>

#include "value/arithmetic.h"
#include "value/value.h"

namespace ptick {

/// The share of a total in per cent, with all its decimals. Of a total that is zero or no number,
/// 0.
Value SharePercent(const Value& ticks, const Value& total);

/// Shares of a total tick count, in hundredths of a per cent, cut: 1 of 3 is 3333. Of a total that
/// is zero or no number every share is 0.
class TickShare {
 public:
  explicit TickShare(const Value& total_ticks);

  /// Whether the total is whole in 64 bits, so that Hundredths takes whole ticks.
  bool TotalIsWhole() const { return total_is_whole_; }

  /// The share of whole ticks. REQUIRES: TotalIsWhole.
  std::int64_t Hundredths(std::uint32_t ticks) const {
    const std::int64_t scaled = std::int64_t{ticks} * 10000;
    return whole_total_ == 0
               ? 0
               : static_cast<std::int64_t>(static_cast<double>(scaled) / whole_total_);
  }

  /// The share of any ticks, a whole number.
  Value Hundredths(const Value& ticks) const { return Int(ExactHundredths(ticks)); }

  /// The same before it is cut.
  Value ExactHundredths(const Value& ticks) const;

 private:
  Value total_;  ///< as a number, so that a long text is read once
  bool total_is_whole_;
  double whole_total_ = 0;
};

}  // namespace ptick
