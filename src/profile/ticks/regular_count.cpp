#include "profile/ticks/regular_count.h"

#include <limits>
#include <variant>

namespace ptick {

std::optional<std::uint32_t> RegularCount(const Number& count) {
  constexpr auto kMax = std::numeric_limits<std::uint32_t>::max();
  if (CompareNumbers(count, std::int64_t{0}) < 0 || CompareNumbers(count, std::int64_t{kMax}) > 0) {
    return std::nullopt;
  }
  const auto whole = std::visit([](auto form) { return static_cast<std::uint32_t>(form); }, count);
  return CompareNumbers(count, std::int64_t{whole}) == 0 ? std::optional(whole) : std::nullopt;
}

}  // namespace ptick
