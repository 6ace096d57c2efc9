#include "ptick_export/facts/reported_line.h"

#include "profile/scan/ordinary_number.h"

namespace ptick::exports {

ReportedLine ReportedLineOf(const OrderedTicks& ticks, const TickEntry& entry) {
  ReportedLine line;
  if (!entry.HasExactText()) {
    line.number = entry.line;
    line.ticks = std::int64_t{entry.ticks};
    return line;
  }
  line.text = ticks.ExactLine(entry);
  line.number = ParseOrdinary(line.text);
  line.ticks = Value(ticks.ExactTicks(entry)).AsNumber();
  return line;
}

}  // namespace ptick::exports
