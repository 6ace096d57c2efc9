#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "profile/ticks/name_table.h"

namespace ptick {

/// How many names are looked up at a time: as many as there are misses that the processor can wait
/// for at once, and some.
inline constexpr std::size_t kNameBatch = 32;

/// The numbers of at most kNameBatch names, each given at its first appearance. In a big table
/// every step of a lookup misses the cache; here each step is done for all names, and brings near
/// what the next one reads.
void InternNames(NameTable& table, std::span<const std::string_view> names, NameTable::Id* ids);

}  // namespace ptick
