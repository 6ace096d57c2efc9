#include "model/random_profile.h"

#include <array>
#include <string_view>
#include <vector>

#include "model/random_fields.h"
#include "model/random_records.h"

namespace ptick::model {

namespace {

using namespace std::string_view_literals;

constexpr std::array kForeignLines = {
    ""sv,        "# comment"sv,         "profile:trace\tA\t1\t2"sv, " PROFILE:trace\tA\t1\t2"sv,
    "PROFILE"sv, "XPROFILE:ticks\t5"sv, "PROFILE trace\tA\t1\t2"sv, "\t\t"sv,
    "\r"sv,      "PROFILE\t:ticks\t5"sv};

constexpr std::array kInvalidTypes = {
    ""sv,          "tracex"sv,  "trac"sv,      " trace"sv,  "trace "sv,     "tick"sv,
    "user_tick"sv, "ticks:5"sv, "pid:x"sv,     "trace:"sv,  "\ttrace"sv,    "hertz\r"sv,
    "input\0"sv,   "\xFD"sv,    "endclock:"sv, "unknown"sv, "memused:a:b"sv};

std::string MixedCase(std::string text, RandomSource& random) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z' && random.Chance(50)) {
      c = static_cast<char>(c - 'a' + 'A');
    }
  }
  return text;
}

// The fields in a line, their separators doubled here and there.
std::string Joined(const std::vector<std::string>& fields, RandomSource& random) {
  std::string line = "PROFILE:";
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (i > 0) {
      line += random.Chance(2) ? "\t\t" : "\t";
    }
    line += fields[i];
  }
  return line;
}

// What happens to a line on its way: fields lost, gained or grown.
void SpoilFields(std::vector<std::string>& fields, RandomSource& random) {
  if (random.Chance(5)) {
    fields[0] = MixedCase(fields[0], random);
  }
  if (random.Chance(5)) {
    fields.resize(random.Between(1, fields.size()));
  }
  if (random.Chance(3)) {
    fields.push_back(RandomText(random));
  }
  if (random.Chance(1)) {
    fields.back().append(random.Between(100, 3000), 'L');
  }
}

std::string Spoiled(std::string line, RandomSource& random) {
  if (random.Chance(3)) {
    line.insert(0, random.Between(1, 2), '\t');
  }
  if (random.Chance(3)) {
    line.append(random.Between(1, 2), '\t');
  }
  if (random.Chance(2)) {
    line += '\r';
  }
  if (random.Chance(1)) {
    line.insert(random.Below(line.size() + 1), 1, static_cast<char>(254));
  }
  return line;
}

std::string LineOf(std::vector<std::string> fields, RandomSource& random) {
  SpoilFields(fields, random);
  return Spoiled(Joined(fields, random), random);
}

}  // namespace

std::string RandomProfileLine(RandomSource& random) {
  if (random.Chance(4)) {
    return random.Pick(kForeignLines);
  }
  return LineOf(RandomRecord(random), random);
}

std::string RandomInvalidLine(RandomSource& random) {
  return LineOf({random.Pick(kInvalidTypes), RandomName(random), RandomTicks(random)}, random);
}

std::string RandomProfile(RandomSource& random) {
  const std::size_t lines = random.Between(0, random.Chance(90) ? 40 : 250);
  const bool has_invalid = random.Chance(4);
  std::string text;
  for (std::size_t i = 0; i < lines; ++i) {
    text += has_invalid && random.Chance(5) ? RandomInvalidLine(random) : RandomProfileLine(random);
    text += '\n';
  }
  if (!text.empty() && random.Chance(20)) {
    text.pop_back();
  }
  return text;
}

}  // namespace ptick::model
