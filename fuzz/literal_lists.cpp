#include "fuzz/literal_lists.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>

namespace ptick::fuzz {

namespace {

constexpr std::string_view kMarks = "\xFE\xFD\xFC";
constexpr std::int64_t kAppend = -1;

/// Positions from the level that is looked at down to the one that is named.
using Positions = std::span<const std::int64_t>;

std::vector<std::int64_t> PositionsOf(Place place) {
  if (place.value == 0) {
    return {place.field};
  }
  if (place.sub_value == 0) {
    return {place.field, place.value};
  }
  return {place.field, place.value, place.sub_value};
}

bool IsNowhere(Positions positions) {
  return std::ranges::any_of(positions, [](std::int64_t n) { return n == 0 || n < kAppend; });
}

char MarkOf(const std::vector<std::int64_t>& all, Positions left) {
  return kMarks[all.size() - left.size()];
}

// A change of one level: the element at the place named, or the list below it, is replaced.
class Change {
 public:
  enum class Kind { kAssign, kInsert, kDelete };

  Change(Kind kind, Place place, std::string x)
      : kind_(kind), all_(PositionsOf(place)), x_(std::move(x)) {}

  std::string Of(const std::string& array) const {
    return IsNowhere(all_) ? array : In(array, all_);
  }

 private:
  std::string In(const std::string& list, Positions positions) const {
    const char mark = MarkOf(all_, positions);
    std::vector<std::string> elements = SplitAt(list, mark);
    std::int64_t position = positions.front();
    const auto count = static_cast<std::int64_t>(elements.size());
    if (kind_ == Kind::kDelete && (position == kAppend || position > count)) {
      return list;
    }
    if (position == kAppend) {
      position = list.empty() ? 1 : count + 1;
    }
    const bool grows = position > count;
    if (grows) {
      elements.resize(static_cast<std::size_t>(position));
    }
    const auto at = elements.begin() + (position - 1);
    if (positions.size() > 1) {
      *at = In(*at, positions.subspan(1));
    } else if (kind_ == Kind::kDelete) {
      elements.erase(at);
    } else if (kind_ == Kind::kInsert && !grows && !list.empty()) {
      elements.insert(at, x_);
    } else {
      *at = x_;
    }
    return JoinWith(elements, mark);
  }

  Kind kind_;
  std::vector<std::int64_t> all_;
  std::string x_;
};

}  // namespace

std::vector<std::string> SplitAt(std::string_view list, char mark) {
  std::vector<std::string> elements(1);
  for (const char c : list) {
    if (c == mark) {
      elements.emplace_back();
    } else {
      elements.back() += c;
    }
  }
  return elements;
}

std::string JoinWith(const std::vector<std::string>& elements, char mark) {
  std::string list;
  for (const std::string& element : elements) {
    list += (&element == elements.data() ? "" : std::string(1, mark)) + element;
  }
  return list;
}

std::string LiteralExtract(const std::string& array, Place place) {
  const std::vector<std::int64_t> all = PositionsOf(place);
  std::string found = array;
  for (Positions left = all; !left.empty(); left = left.subspan(1)) {
    const std::vector<std::string> elements = SplitAt(found, MarkOf(all, left));
    const std::int64_t position = left.front();
    if (position < 1 || position > static_cast<std::int64_t>(elements.size())) {
      return "";
    }
    found = elements[static_cast<std::size_t>(position - 1)];
  }
  return found;
}

std::string LiteralAssign(const std::string& array, Place place, const std::string& x) {
  return Change(Change::Kind::kAssign, place, x).Of(array);
}

std::string LiteralInsert(const std::string& array, Place place, const std::string& x) {
  return Change(Change::Kind::kInsert, place, x).Of(array);
}

std::string LiteralDelete(const std::string& array, Place place) {
  return Change(Change::Kind::kDelete, place, "").Of(array);
}

}  // namespace ptick::fuzz
