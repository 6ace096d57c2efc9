#include "figures/tick_share.h"

#include <variant>

namespace ptick {

TickShare::TickShare(const Value& total_ticks) : total_(total_ticks.AsNumber()) {
  const Number total = total_.AsNumber();
  const auto* whole = std::get_if<std::int64_t>(&total);
  total_is_whole_ = whole != nullptr;
  if (total_is_whole_) {
    whole_total_ = static_cast<double>(*whole);
  }
}

Value TickShare::ExactHundredths(const Value& ticks) const {
  return Divide(Multiply(ticks, 10000), total_);
}

Value SharePercent(const Value& ticks, const Value& total) {
  return Multiply(Divide(ticks, total), 100);
}

}  // namespace ptick
