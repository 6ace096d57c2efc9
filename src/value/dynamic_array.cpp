// A place is walked level by level: fields of the array, values of that field, sub-values of that
// value. Each step narrows the span of bytes that holds what is left of the place. An empty list is
// walked as one empty element.

#include "value/dynamic_array.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ptick {

namespace {

constexpr std::array<char, 3> kMarks = {kFieldMark, kValueMark, kSubValueMark};
constexpr std::int64_t kAppend = -1;

/// The positions of a place, outermost first, down to the level it names.
struct Path {
  std::array<std::int64_t, 3> positions{};
  std::size_t depth = 0;
};

/// Nothing for a place that names no element, existing or new.
std::optional<Path> PathTo(Place place) {
  Path path{{place.field, place.value, place.sub_value}, 3};
  if (place.value == 0) {
    path.depth = 1;
  } else if (place.sub_value == 0) {
    path.depth = 2;
  }
  for (std::size_t level = 0; level < path.depth; ++level) {
    const std::int64_t position = path.positions.at(level);
    if (position < kAppend || position == 0) {
      return std::nullopt;
    }
  }
  return path;
}

/// Bytes Begin to End, without End, of an array.
struct Span {
  std::size_t begin = 0;
  std::size_t end = 0;

  bool Empty() const { return begin == end; }
};

/// An element's own bytes; or, where it is missing, how many marks at the end of the list bring it
/// there.
struct Step {
  Span element;
  std::size_t missing = 0;
};

Step StepInto(std::string_view array, Span list, char mark, std::int64_t position) {
  if (position == kAppend) {
    return {{list.end, list.end}, list.Empty() ? std::size_t{0} : std::size_t{1}};
  }
  const std::string_view searched = array.substr(0, list.end);
  Span element{list.begin, list.begin};
  for (std::int64_t at = 1;; ++at) {
    element.end = std::min(searched.find(mark, element.begin), list.end);
    if (at == position) {
      return {element, 0};
    }
    if (element.end == list.end) {
      return {{list.end, list.end}, static_cast<std::size_t>(position - at)};
    }
    element.begin = element.end + 1;
  }
}

/// Where the element of a path is or is to be added.
struct Spot {
  Span list;          ///< the innermost list that is there
  Span element;       ///< empty, at the end of List, when the element is missing
  std::string marks;  ///< what to add before a missing element; empty when it is there
};

Spot FindSpot(std::string_view array, const Path& path) {
  Spot spot{{}, {0, array.size()}, ""};
  for (std::size_t level = 0; level < path.depth; ++level) {
    const std::int64_t position = path.positions.at(level);
    if (spot.marks.empty()) {
      spot.list = spot.element;
      const Step step = StepInto(array, spot.list, kMarks.at(level), position);
      spot.element = step.element;
      spot.marks.append(step.missing, kMarks.at(level));
    } else {
      const std::int64_t before = std::max<std::int64_t>(position, 1) - 1;
      spot.marks.append(static_cast<std::size_t>(before), kMarks.at(level));
    }
  }
  return spot;
}

struct Element {
  Span list;
  Span itself;
};

/// The element of a place when it is there; an appended one never is.
std::optional<Element> FindElement(std::string_view array, Place place) {
  const std::optional<Path> path = PathTo(place);
  if (!path) {
    return std::nullopt;
  }
  Element found{{}, {0, array.size()}};
  for (std::size_t level = 0; level < path->depth; ++level) {
    const std::int64_t position = path->positions.at(level);
    found.list = found.itself;
    const Step step = StepInto(array, found.list, kMarks.at(level), position);
    if (position == kAppend || step.missing > 0) {
      return std::nullopt;
    }
    found.itself = step.element;
  }
  return found;
}

std::string Replace(std::string_view array, Span span, std::string_view text) {
  std::string changed(array.substr(0, span.begin));
  return changed.append(text).append(array.substr(span.end));
}

}  // namespace

std::string Extract(std::string_view array, Place place) {
  const std::optional<Element> found = FindElement(array, place);
  if (!found) {
    return "";
  }
  return std::string(array.substr(found->itself.begin, found->itself.end - found->itself.begin));
}

std::string Assign(std::string_view array, Place place, const Value& x) {
  const std::optional<Path> path = PathTo(place);
  if (!path) {
    return std::string(array);
  }
  Spot spot = FindSpot(array, *path);
  return Replace(array, spot.element, spot.marks.append(x.Text()));
}

std::string Insert(std::string_view array, Place place, const Value& x) {
  const std::optional<Path> path = PathTo(place);
  if (!path) {
    return std::string(array);
  }
  Spot spot = FindSpot(array, *path);
  if (spot.list.Empty() || !spot.marks.empty()) {
    return Replace(array, spot.element, spot.marks.append(x.Text()));
  }
  const std::size_t at = spot.element.begin;
  return Replace(array, {at, at}, x.Text() + kMarks.at(path->depth - 1));
}

std::string DeleteAt(std::string_view array, Place place) {
  const std::optional<Element> found = FindElement(array, place);
  if (!found) {
    return std::string(array);
  }
  Span cut = found->itself;
  if (cut.end < found->list.end) {
    ++cut.end;
  } else if (cut.begin > found->list.begin) {
    --cut.begin;
  }
  return Replace(array, cut, "");
}

}  // namespace ptick
