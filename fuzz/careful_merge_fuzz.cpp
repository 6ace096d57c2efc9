// Profiles of any bytes, divided by zero bytes, merged without the bad ones: each is taken whole or
// not at all, whatever waits and in whatever pieces it arrives, and what is wrong is told with the
// line that a literal search finds.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "companion/support/no_status_line.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "profile/profile_loader.h"
#include "profile/tables/record_types.h"
#include "ptick_merge/careful_merge.h"
#include "support/text_record.h"

namespace {

using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;
using ptick::testing::TextRecord;

constexpr int kMaxProfiles = 6;
constexpr char kFieldMark = '\xfe';

std::string LinesOf(ptick::ProfileMerge merge) {
  ptick::MergedLines lines = merge.TakeLines();
  std::string text;
  for (std::string_view block = lines.Next(); !block.empty(); block = lines.Next()) {
    text += block;
  }
  return text;
}

bool IsKnown(std::string type) {
  std::ranges::transform(type, type.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return std::ranges::any_of(ptick::RecordTypes(),
                             [&](const auto& known) { return known.name == type; });
}

/// The number of the first line with a record of no known type, counted by LF; 0 when there is
/// none.
std::uint64_t BadLine(const std::string& text) {
  std::uint64_t number = 1;
  std::string line;
  for (const char c : text + "\n") {
    if (c != '\n' && c != kFieldMark) {
      line += c;
      continue;
    }
    line.erase(0, line.find_first_not_of('\t'));
    constexpr std::string_view kPrefix = "PROFILE:";
    if (line.starts_with(kPrefix) &&
        !IsKnown(line.substr(kPrefix.size(), line.find('\t') - kPrefix.size()))) {
      return number;
    }
    line.clear();
    number += c == '\n' ? 1 : 0;
  }
  return 0;
}

/// What has to be told of a profile, empty when it is good.
std::string Want(const std::string& text, bool fails, const std::string& told) {
  if (const std::uint64_t line = BadLine(text); line != 0) {
    // A last line that is not ended has not been read when reading fails.
    const std::string start = "p: run: line " + std::to_string(line) + ": unknown record type: ";
    if (!fails || told.starts_with(start)) {
      return told.substr(0, told.starts_with(start) ? start.size() : 0) + "...";
    }
  }
  return fails ? "p: run: Input/output error\n" : "";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using ptick::companion::CarefulMerge;
  ptick::fuzz::FuzzInput input(data, size);
  CarefulMerge careful(std::pmr::get_default_resource(), input.TakeByte());
  const std::size_t piece = std::size_t{1} + input.TakeByte();
  ptick::ProfileMerge good;
  ptick::companion::testing::NoProgress progress;
  for (int profile = 0; profile < kMaxProfiles && !input.Empty(); ++profile) {
    const bool fails = input.TakeBetween(0, 9) == 0;
    const std::string text = input.TakeUpTo('\0');
    const auto end = fails ? TextRecord::End::kFails : TextRecord::End::kReached;
    ptick::companion::InputLines lines(std::make_unique<TextRecord>(text, piece, end), "run",
                                       progress.Get());
    const auto problem = careful.Take(lines);
    std::string told = problem ? ptick::companion::MessageLine("p", *problem) : "";
    const std::string want = Want(text, fails, told);
    if (want.ends_with("...")) {
      Require(want.size() > 3, "a bad line is told with its number");
    } else {
      RequireEqual(want, told, "what is wrong is told");
    }
    if (told.empty()) {
      Require(!ptick::MergeRecord(std::make_unique<TextRecord>(text), "run", good),
              "a good profile can be read");
    }
  }
  RequireEqual(LinesOf(std::move(good)), LinesOf(careful.TakeMerge()),
               "the lines are those of the good profiles");
  return 0;
}
