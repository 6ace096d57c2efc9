#include "ptick_annotate/shares.h"

#include "value/arithmetic.h"

namespace ptick::companion {

std::string Shares::Of(const Value& ticks) const {
  const Value tenths = Int(Divide(share_.Hundredths(ticks), 10));
  std::string text = Divide(tenths, 10).Text();
  if (text.find('.') == std::string::npos) {
    text += ".0";
  }
  return text;
}

Style Shares::StyleOf(const Value& ticks) const {
  const Value hundredths = share_.Hundredths(ticks);
  if (hundredths >= 500) {
    return Style::kHot;
  }
  return hundredths >= 100 ? Style::kWarm : Style::kPlain;
}

}  // namespace ptick::companion
