// Ordering is a stable counting sort, digit by digit from the least significant one, over the
// entries from the last to the first: walking backwards is what puts entries with equal ticks in
// reverse order of arrival.

#include "profile/ticks/tick_entries.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "profile/ticks/sort_order.h"

namespace ptick {

namespace {

// 2,048 counters and write positions still fit the first-level cache.
constexpr unsigned kMaxDigitBits = 11;

/// One digit of the sort key: some bits of the ticks.
struct Digit {
  unsigned shift;
  std::uint32_t mask;

  std::uint32_t Of(const TickEntry& entry) const { return (entry.ticks >> shift) & mask; }
};

/// The digits of tick counts of up to `bits` bits, the least significant one first.
std::vector<Digit> TickDigits(unsigned bits) {
  const unsigned count = (bits + kMaxDigitBits - 1) / kMaxDigitBits;
  std::vector<Digit> digits;
  for (unsigned i = 0, shift = 0; i < count; ++i) {
    const unsigned width = (bits - shift + count - i - 1) / (count - i);
    digits.push_back({shift, (std::uint32_t{1} << width) - 1});
    shift += width;
  }
  return digits;
}

/// Where the next entry of each digit value goes.
class SortOffsets {
 public:
  explicit SortOffsets(const Digit& digit) : digit_(digit), places_(std::size_t{digit.mask} + 1) {}

  void Count(const TickEntry& entry) { ++places_[digit_.Of(entry)]; }

  void CountsToOffsets(SortOrder order) {
    std::size_t place = 0;
    const auto assign = [&place](std::size_t& count) { place += std::exchange(count, place); };
    if (order == SortOrder::kDescending) {
      std::for_each(places_.rbegin(), places_.rend(), assign);
    } else {
      std::for_each(places_.begin(), places_.end(), assign);
    }
  }

  std::size_t Take(const TickEntry& entry) { return places_[digit_.Of(entry)]++; }

 private:
  Digit digit_;
  std::vector<std::size_t> places_;
};

}  // namespace

void TickEntries::AddChunk() {
  last_ = chunks_.emplace_back(kChunk).Entries().data();
  used_ = 0;
}

TickEntryBlock TickEntries::TakeOrdered(SortOrder order) {
  std::vector<TickEntryBlock> chunks = std::exchange(chunks_, {});
  const std::size_t in_last = std::exchange(used_, kChunk);
  if (chunks.empty()) {
    return {};
  }
  const std::size_t last = chunks.size() - 1;
  const auto used = [&](std::size_t chunk) {
    return chunks[chunk].Entries().first(chunk < last ? kChunk : in_last);
  };
  std::vector<SortOffsets> passes;
  const auto bits = static_cast<unsigned>(std::bit_width(std::exchange(ticks_seen_, 0)));
  for (const Digit& digit : TickDigits(std::max(bits, 1U))) {
    passes.emplace_back(digit);
  }
  for (std::size_t chunk = 0; chunk <= last; ++chunk) {
    for (const TickEntry& entry : used(chunk)) {
      for (SortOffsets& pass : passes) {
        pass.Count(entry);
      }
    }
  }
  for (SortOffsets& pass : passes) {
    pass.CountsToOffsets(order);
  }

  TickEntryBlock ordered(last * kChunk + in_last);
  for (std::size_t chunk = last + 1; chunk-- > 0;) {
    const std::span<const TickEntry> entries = used(chunk);
    std::for_each(entries.rbegin(), entries.rend(), [&](const TickEntry& entry) {
      ordered.Entries()[passes.front().Take(entry)] = entry;
    });
    chunks.pop_back();
  }
  for (auto pass = passes.begin() + 1; pass != passes.end(); ++pass) {
    TickEntryBlock next(ordered.Entries().size());
    for (const TickEntry& entry : ordered.Entries()) {
      next.Entries()[pass->Take(entry)] = entry;
    }
    ordered = std::move(next);
  }
  return ordered;
}

}  // namespace ptick
