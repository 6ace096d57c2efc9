#include "profile/ticks/name_batch.h"

#include <array>
#include <cstdint>

namespace ptick {

namespace {

// Fewer names than this are in the cache anyway.
constexpr std::size_t kManyNames = 2000;

}  // namespace

void InternNames(NameTable& table, std::span<const std::string_view> names, NameTable::Id* ids) {
  std::array<std::uint32_t, kNameBatch> hashes;  // NOLINT(*-member-init): filled step by step
  for (std::size_t i = 0; i < names.size(); ++i) {
    hashes[i] = table.Hash(names[i]);
    table.PrefetchSlot(hashes[i]);
  }
  if (table.size() > kManyNames) {
    for (std::size_t i = 0; i < names.size(); ++i) {
      ids[i] = table.LikelyId(hashes[i]);
      table.PrefetchEnd(ids[i]);
    }
    for (std::size_t i = 0; i < names.size(); ++i) {
      table.PrefetchText(ids[i]);
    }
  }
  for (std::size_t i = 0; i < names.size(); ++i) {
    ids[i] = table.Intern(names[i], hashes[i]);
  }
}

}  // namespace ptick
