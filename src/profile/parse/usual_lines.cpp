#include "profile/parse/usual_lines.h"

#include <bit>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <string_view>
#include <variant>

#include "profile/scan/byte_masks.h"
#include "profile/scan/call_line.h"
#include "profile/scan/input_line.h"
#include "profile/scan/object_line.h"
#include "profile/scan/performed_command.h"
#include "profile/tables/record_types.h"
#include "value/arithmetic.h"

namespace ptick {

namespace {

bool StartsAt(const char* line, std::string_view start) {
  return std::memcmp(line, start.data(), start.size()) == 0;
}

// The count may be any value that an "input_count" record has set.
void CountOneMore(Value& count) {
  const Number number = count.AsNumber();
  const auto* whole = std::get_if<std::int64_t>(&number);
  const bool is_small = whole != nullptr && *whole < std::numeric_limits<std::int64_t>::max();
  count = is_small ? Value(*whole + 1) : Increment(count);
}

}  // namespace

const char* UsualLines::Take(const char* line) {
  if (StartsAt(line, kPerformStart)) {
    return options_.keep_performs ? TakePerform(line) : TakePerformCommand(line);
  }
  if (StartsAt(line, kCallStart)) {
    return TakeCall(line);
  }
  if (StartsAt(line, kInputStart)) {
    return options_.keep_inputs ? TakeInput(line) : CountInput(line);
  }
  if (StartsAt(line, kObjectStart)) {
    return TakeObject(line);
  }
  return nullptr;
}

const char* UsualLines::TakeObject(const char* line) {
  const ObjectLine object = ScanObjectLine(line);
  if (object.next != nullptr && object.used != 0 && object.name != kMainObject) {
    tables_.SharedObjects.Append(object.name);
  }
  return object.next;
}

const char* UsualLines::TakeCall(const char* line) {
  const CallLine call = ScanCallLine(line);
  if (call.next != nullptr) {
    tables_.Subroutines.Add(call, options_.keep_callers);
  }
  return call.next;
}

const char* UsualLines::TakeInput(const char* line) {
  InputLine input;  // NOLINT(*-member-init): filled by the scan
  if (!ScanInputLine(line, input)) {
    return nullptr;
  }
  CountOneMore(tables_.InputCount);
  tables_.Inputs.Add(input);
  return input.next;
}

// Whatever the line says, it is an input.
const char* UsualLines::CountInput(const char* line) {
  CountOneMore(tables_.InputCount);
  for (;; line += 64) {
    if (const std::uint64_t ends = ByteMasks<64>(line).Equal('\n'); ends != 0) {
      return line + std::countr_zero(ends) + 1;
    }
  }
}

const char* UsualLines::TakePerform(const char* line) {
  PerformLine& perform = performs_[waiting_];
  if (!ScanPerformLine(line, perform)) {
    return nullptr;
  }
  const char* const next = perform.next;
  if (++waiting_ == kNameBatch) {
    AddWaiting();
  }
  return next;
}

const char* UsualLines::TakePerformCommand(const char* line) {
  const PerformCommand command = ScanPerformCommand(line);
  if (command.next != nullptr) {
    commands_[waiting_] = command.text;
    if (++waiting_ == kNameBatch) {
      AddWaiting();
    }
  }
  return command.next;
}

void UsualLines::AddWaiting() {
  if (options_.keep_performs) {
    tables_.Performs.Add(std::span(performs_).first(waiting_));
  } else {
    tables_.Performs.Count(std::span(commands_).first(waiting_));
  }
  waiting_ = 0;
}

}  // namespace ptick
