// Values, masks, conversions and lists on any text: total, and consistent with themselves.

#include <cstdlib>

#include "fuzz/fuzz_run.h"
#include "value/conversion.h"
#include "value/dynamic_array.h"
#include "value/mask.h"
#include "value/text.h"

namespace {

void Require(bool holds) {
  if (!holds) {
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using ptick::Value;
  ptick::FuzzInput input(data, size);
  const ptick::Place place = {.Field = input.TakeByte() % 8 - 1,
                              .Value = input.TakeByte() % 5 - 1,
                              .SubValue = input.TakeByte() % 5 - 1};
  const std::string text = input.TakeUpTo('\n');
  const std::string list = input.TakeRest();

  for (const char* mask : {"L#6", "R%3", "MR20", "MR22", "ML,", "L2"}) {
    ptick::Fmt(text, mask);
  }
  Require(ptick::Fmt(text, "L#6").size() == 6);
  for (const char* code : {"MCU", "MCL", "U0ff1", "U0ff0", "D", "MTS"}) {
    ptick::OConv(text, code);
  }
  const Value sum = ptick::Add(text, list);
  Require(ptick::Compare(sum, ptick::Add(list, text)) == 0);
  Require(ptick::ParseNumber(sum.Text()).has_value());
  ptick::Divide(text, list);
  ptick::Multiply(text, list);

  const std::string assigned = ptick::Assign(list, place, text);
  if (place.Field > 0 && place.Value > 0 && place.SubValue > 0 &&
      text.find_first_of("\xFC\xFD\xFE") == std::string::npos) {
    Require(ptick::Extract(assigned, place) == text);
  }
  ptick::DeleteAt(ptick::Insert(list, place, text), place);
  const ptick::Located located = ptick::Locate(text, list, {}, ptick::LocateOrder::kDescending);
  Require(located.Position >= 1 && located.Position <= ptick::DCount(list, ptick::kFieldMark) + 1);
  ptick::Matches(text, list);
  Require(ptick::DCount(ptick::Sort(list), ptick::kFieldMark) ==
          ptick::DCount(list, ptick::kFieldMark));
  return 0;
}
