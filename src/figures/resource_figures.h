#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace ptick {

/// How many figures of resource usage a process reports.
inline constexpr std::size_t kResourceFigures = 12;

/// The first of them are resident set sizes, counted in pages.
inline constexpr std::size_t kPageFigures = 2;

/// The figures of a "resource" record, as they were read; what was not recorded is empty. They
/// point into `resource`.
std::array<std::string_view, kResourceFigures> ResourceFigures(std::string_view resource);

}  // namespace ptick
