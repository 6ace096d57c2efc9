#include "model/random_records.h"

#include <array>
#include <string_view>

#include "model/random_fields.h"
#include "profile/tables/record_types.h"

namespace ptick::model {

namespace {

using namespace std::string_view_literals;
using Fields = std::vector<std::string>;

constexpr std::array kPerformKeys = {"startclock"sv, "endclock"sv, "starttime"sv, "endtime"sv,
                                     "ticks"sv,      "usrcpu"sv,   "syscpu"sv,    "type"sv};

constexpr std::array kStrangeKeys = {"unknown"sv, "CMD"sv,     "Type"sv,
                                     "cmd "sv,    "memused"sv, "\xFD"sv};

constexpr std::array kCommands = {
    "LIST X"sv,     "SORT Y"sv,   "list x"sv, "A*B*C"sv,      "*"sv,        "LIST X Z"sv,
    "RUN\tIT"sv,    "A\375B"sv,   "\375B"sv,  "\xFFkls -l"sv, "\xFF"sv,     "\xFFk"sv,
    "\xFFk\375x"sv, "\xFF\tls"sv, "A\374B"sv, ""sv,           "LIST X\r"sv, "0"sv};

std::string RandomHeaderType(RandomSource& random) {
  static const std::vector<std::string> types = [] {
    std::vector<std::string> names;
    for (const RecordType& type : RecordTypes()) {
      if (type.header != nullptr) {
        names.emplace_back(type.name);
      }
    }
    return names;
  }();
  return random.Pick(types);
}

Fields RandomInput(RandomSource& random) {
  return {"input",
          RandomCode(random),
          random.Chance(80) ? std::to_string(random.Below(4)) : RandomTicks(random),
          RandomClock(random),
          RandomClock(random),
          RandomText(random)};
}

void AppendPair(Fields& fields, RandomSource& random) {
  fields.push_back(random.Chance(90) ? random.Pick(kPerformKeys) : random.Pick(kStrangeKeys));
  fields.push_back(random.Chance(90) ? RandomClock(random) : RandomText(random));
}

Fields RandomPerform(RandomSource& random) {
  Fields fields = {"perform"};
  const std::size_t pairs = random.Chance(2) ? random.Between(495, 503) : random.Below(10);
  for (std::size_t i = 0; i < pairs; ++i) {
    AppendPair(fields, random);
  }
  if (random.Chance(95)) {
    fields.emplace_back("cmd");
    fields.push_back(random.Pick(kCommands));
  }
  return fields;
}

Fields RandomUserTicks(RandomSource& random) {
  return {"user_ticks", random.Chance(70) ? std::to_string(random.Below(12)) : RandomTicks(random),
          RandomTicks(random)};
}

Fields RandomCall(RandomSource& random) {
  std::string call = RandomName(random);
  if (random.Chance(95)) {
    call.append(" ").append(RandomName(random));
  }
  return {"subroutine_call", call, RandomTicks(random)};
}

Fields RandomOther(RandomSource& random) {
  switch (random.Below(7)) {
    case 0:
      return {"program", RandomName(random), RandomText(random)};
    case 1:
      return {"shared_object", RandomName(random), random.Chance(60) ? "1" : RandomTicks(random)};
    case 2:
      return RandomCall(random);
    case 3:
      return {"resource", RandomText(random), RandomText(random)};
    case 4:
      return {"typerate", RandomTicks(random), RandomClock(random)};
    case 5:
      return RandomUserTicks(random);
    default:
      return {"trace"};
  }
}

}  // namespace

std::vector<std::string> RandomRecord(RandomSource& random) {
  const std::size_t kind = random.Below(100);
  if (kind < 50) {
    return {"trace", RandomName(random), RandomLineNumber(random), RandomTicks(random)};
  }
  if (kind < 58) {
    return RandomInput(random);
  }
  if (kind < 66) {
    return RandomPerform(random);
  }
  if (kind < 84) {
    return RandomOther(random);
  }
  return {RandomHeaderType(random), random.Chance(50) ? RandomClock(random) : RandomTicks(random)};
}

}  // namespace ptick::model
