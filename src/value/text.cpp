#include "value/text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace ptick {

namespace {

constexpr int kCodes = 256;

/// The remainder that is never negative; `number` may be far outside 64 bits.
int CodeOf(const Number& number) {
  if (const auto* whole = std::get_if<std::int64_t>(&number)) {
    return static_cast<int>((*whole % kCodes + kCodes) % kCodes);
  }
  const double code = std::fmod(std::trunc(std::get<double>(number)), kCodes);
  return (static_cast<int>(code) + kCodes) % kCodes;
}

template <typename CaseOf>
std::string WithCase(std::string_view x, CaseOf case_of) {
  std::string changed(x);
  std::transform(changed.begin(), changed.end(), changed.begin(), case_of);
  return changed;
}

}  // namespace

std::int64_t Len(std::string_view x) { return static_cast<std::int64_t>(x.size()); }

std::string_view Substring(std::string_view x, std::int64_t start, std::int64_t length) {
  if (start > Len(x) || length <= 0) {
    return {};
  }
  const auto skipped = static_cast<std::size_t>(std::max<std::int64_t>(start, 1) - 1);
  return x.substr(skipped, static_cast<std::size_t>(length));
}

std::string Change(std::string_view x, std::string_view from, std::string_view to) {
  if (from.empty()) {
    return std::string(x);
  }
  std::string changed;
  std::size_t begin = 0;
  for (std::size_t found = x.find(from); found != std::string_view::npos;
       found = x.find(from, begin)) {
    changed.append(x.substr(begin, found - begin)).append(to);
    begin = found + from.size();
  }
  return changed.append(x.substr(begin));
}

std::string Trim(std::string_view x, char c) {
  std::string trimmed;
  for (const char next : TrimTrailing(x, c)) {
    const bool repeats = trimmed.empty() || trimmed.back() == c;
    if (next != c || !repeats) {
      trimmed.push_back(next);
    }
  }
  return trimmed;
}

std::string_view TrimTrailing(std::string_view x, char c) {
  return x.substr(0, x.find_last_not_of(c) + 1);
}

std::string Space(std::int64_t n) {
  std::string blanks;
  return blanks.append(static_cast<std::size_t>(std::max<std::int64_t>(n, 0)), ' ');
}

std::string Char(const Value& code) {
  const auto byte = static_cast<unsigned char>(CodeOf(code.AsNumber()));
  return {static_cast<char>(byte)};
}

std::int64_t Seq(std::string_view x) {
  return x.empty() ? 0 : static_cast<unsigned char>(x.front());
}

std::string Quote(std::string_view x, char quote) {
  std::string quoted(1, quote);
  quoted.append(x).push_back(quote);
  return quoted;
}

std::string UpperCase(std::string_view x) {
  return WithCase(x, [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
}

std::string LowerCase(std::string_view x) {
  return WithCase(x, [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
}

}  // namespace ptick
