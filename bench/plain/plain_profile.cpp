#include "plain/plain_profile.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <ios>
#include <numeric>
#include <utility>

namespace ptick::bench {

namespace {

constexpr std::size_t kBlockSize = std::size_t{1} << 20U;

// Cuts the next TAB-separated field off the front of `text`.
std::string_view CutField(std::string_view& text) {
  const std::size_t tab = std::min(text.find('\t'), text.size());
  const std::string_view field = text.substr(0, tab);
  text.remove_prefix(std::min(tab + 1, text.size()));
  return field;
}

template <typename Number>
Number ParseNumber(std::string_view text) {
  Number number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// A stable counting sort by `key_of`, which is below `limit`.
template <typename KeyOf>
void SortByKey(std::vector<PlainEntry>& entries, std::size_t limit, KeyOf key_of) {
  std::vector<std::size_t> places(limit + 1);
  for (const PlainEntry& entry : entries) {
    ++places[key_of(entry) + 1];
  }
  std::partial_sum(places.begin(), places.end(), places.begin());
  std::vector<PlainEntry> sorted(entries.size());
  for (const PlainEntry& entry : entries) {
    sorted[places[key_of(entry)]++] = entry;
  }
  entries = std::move(sorted);
}

}  // namespace

PlainProfile::PlainProfile(std::istream& file) {
  std::vector<char> block(kBlockSize);
  std::size_t kept = 0;
  while (file) {
    file.read(block.data() + kept, static_cast<std::streamsize>(block.size() - kept));
    const char* at = block.data();
    const char* const end = at + kept + file.gcount();
    while (const void* found = std::memchr(at, '\n', static_cast<std::size_t>(end - at))) {
      const char* const line_end = static_cast<const char*>(found);
      TakeLine({at, static_cast<std::size_t>(line_end - at)});
      at = line_end + 1;
    }
    kept = static_cast<std::size_t>(end - at);
    std::memmove(block.data(), at, kept);
  }
}

void PlainProfile::TakeLine(std::string_view line) {
  const std::string_view type = CutField(line);
  if (type == "PROFILE:trace") {
    const std::uint32_t program = NumberOf(CutField(line));
    const auto number = ParseNumber<std::uint32_t>(CutField(line));
    entries_.push_back({program, number, ParseNumber<std::uint32_t>(CutField(line))});
  } else if (type == "PROFILE:ticks") {
    total_ = ParseNumber<std::uint64_t>(CutField(line));
  }
}

std::uint32_t PlainProfile::NumberOf(std::string_view name) {
  const auto known = numbers_.find(name);
  if (known != numbers_.end()) {
    return known->second;
  }
  const auto number = static_cast<std::uint32_t>(names_.size());
  names_.emplace_back(name);
  numbers_.emplace(name, number);
  return number;
}

void PlainProfile::Order(bool per_program) {
  constexpr std::uint32_t kMaxCounters = 1U << 22U;
  std::uint32_t most = 0;
  for (const PlainEntry& entry : entries_) {
    most = std::max(most, entry.ticks);
  }
  std::reverse(entries_.begin(), entries_.end());
  if (most < kMaxCounters) {
    SortByKey(entries_, std::size_t{most} + 1,
              [most](const PlainEntry& entry) { return most - entry.ticks; });
  } else {
    std::stable_sort(entries_.begin(), entries_.end(),
                     [](const PlainEntry& a, const PlainEntry& b) { return a.ticks > b.ticks; });
  }
  if (per_program) {
    SortByKey(entries_, names_.size(),
              [ranks = NameRanks()](const PlainEntry& entry) { return ranks[entry.program]; });
  }
}

// The position of every program in the order of their names.
std::vector<std::uint32_t> PlainProfile::NameRanks() const {
  std::vector<std::uint32_t> programs(names_.size());
  std::iota(programs.begin(), programs.end(), 0U);
  std::sort(programs.begin(), programs.end(),
            [this](std::uint32_t a, std::uint32_t b) { return names_[a] < names_[b]; });
  std::vector<std::uint32_t> ranks(names_.size());
  for (std::uint32_t rank = 0; rank < programs.size(); ++rank) {
    ranks[programs[rank]] = rank;
  }
  return ranks;
}

}  // namespace ptick::bench
