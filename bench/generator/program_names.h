#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ptick::bench {

/// `count` program names as an application of many programs has them: ORDER.ENTRY.001,
/// STOCK.COUNT.001, ..., numbered with at least three digits.
std::vector<std::string> ProgramNames(std::uint32_t count);

}  // namespace ptick::bench
