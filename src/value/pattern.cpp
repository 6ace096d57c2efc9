// Pattern matching. All places in the text that the codes read so far can end at are carried along
// together, so "0N1N" needs no second try: each code turns one set of places into the next.

#include "value/pattern.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <system_error>
#include <vector>

namespace ptick {

namespace {

/// Whether a place in the text, from 0 to its length, is reached.
using Places = std::vector<bool>;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

Places AfterLiteral(std::string_view x, const Places& reached, std::string_view literal) {
  Places next(reached.size(), false);
  for (std::size_t place = 0; place + literal.size() <= x.size(); ++place) {
    next[place + literal.size()] = reached[place] && x.substr(place, literal.size()) == literal;
  }
  return next;
}

Places AfterDigits(std::string_view x, const Places& reached, std::size_t count) {
  Places next(reached.size(), false);
  std::size_t run = 0;  // digits just before the place
  for (std::size_t place = 0; place <= x.size(); ++place) {
    run = place > 0 && IsDigit(x[place - 1]) ? run + 1 : 0;
    next[place] = run >= count && reached[place - count];
  }
  return next;
}

Places AfterAnyDigits(std::string_view x, Places reached) {
  for (std::size_t place = 0; place < x.size(); ++place) {
    if (reached[place] && IsDigit(x[place])) {
      reached[place + 1] = true;
    }
  }
  return reached;
}

/// Takes the first code off the pattern; nothing when it is malformed.
std::optional<Places> AfterCode(std::string_view x, const Places& reached,
                                std::string_view& pattern) {
  if (pattern.front() == '\'') {
    const std::size_t end = pattern.find('\'', 1);
    if (end == std::string_view::npos) {
      return std::nullopt;
    }
    const std::string_view literal = pattern.substr(1, end - 1);
    pattern.remove_prefix(end + 1);
    return AfterLiteral(x, reached, literal);
  }
  std::size_t count = 0;
  const auto read = std::from_chars(pattern.data(), pattern.data() + pattern.size(), count);
  pattern.remove_prefix(static_cast<std::size_t>(read.ptr - pattern.data()));
  if (read.ec != std::errc() || pattern.empty() || pattern.front() != 'N') {
    return std::nullopt;
  }
  pattern.remove_prefix(1);
  return count == 0 ? AfterAnyDigits(x, reached) : AfterDigits(x, reached, count);
}

}  // namespace

bool Matches(std::string_view x, std::string_view pattern) {
  Places reached(x.size() + 1, false);
  reached.front() = true;
  while (!pattern.empty()) {
    std::optional<Places> next = AfterCode(x, reached, pattern);
    if (!next) {
      return false;
    }
    reached = std::move(*next);
  }
  return reached.back();
}

}  // namespace ptick
