// Shares of a profile's ticks, in per cent, cut to one decimal.
#pragma once

#include <string>

#include "companion/text_form.h"
#include "figures/tick_share.h"
#include "value/value.h"

namespace ptick::companion {

class Shares {
 public:
  explicit Shares(const Value& total) : share_(total) {}

  /// "13.7"; "0.0" of a total that is zero or no number.
  std::string Of(const Value& ticks) const;

  /// How hot that share is: from 5 per cent on hot, from 1 on warm.
  Style StyleOf(const Value& ticks) const;

 private:
  TickShare share_;
};

}  // namespace ptick::companion
