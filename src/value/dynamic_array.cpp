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
  std::array<std::int64_t, 3> Positions{};
  std::size_t Depth = 0;
};

/// Nothing for a place that names no element, existing or new.
std::optional<Path> PathTo(Place place) {
  Path path{{place.Field, place.Value, place.SubValue}, 3};
  if (place.Value == 0) {
    path.Depth = 1;
  } else if (place.SubValue == 0) {
    path.Depth = 2;
  }
  for (std::size_t level = 0; level < path.Depth; ++level) {
    const std::int64_t position = path.Positions.at(level);
    if (position < kAppend || position == 0) {
      return std::nullopt;
    }
  }
  return path;
}

/// Bytes Begin to End, without End, of an array.
struct Span {
  std::size_t Begin = 0;
  std::size_t End = 0;

  bool Empty() const { return Begin == End; }
};

/// An element's own bytes; or, where it is missing, how many marks at the end of the list bring it
/// there.
struct Step {
  Span Element;
  std::size_t Missing = 0;
};

Step StepInto(std::string_view array, Span list, char mark, std::int64_t position) {
  if (position == kAppend) {
    return {{list.End, list.End}, list.Empty() ? std::size_t{0} : std::size_t{1}};
  }
  const std::string_view searched = array.substr(0, list.End);
  Span element{list.Begin, list.Begin};
  for (std::int64_t at = 1;; ++at) {
    element.End = std::min(searched.find(mark, element.Begin), list.End);
    if (at == position) {
      return {element, 0};
    }
    if (element.End == list.End) {
      return {{list.End, list.End}, static_cast<std::size_t>(position - at)};
    }
    element.Begin = element.End + 1;
  }
}

/// Where the element of a path is or is to be added.
struct Spot {
  Span List;          ///< the innermost list that is there
  Span Element;       ///< empty, at the end of List, when the element is missing
  std::string Marks;  ///< what to add in front of a missing element; empty when it is there
};

Spot FindSpot(std::string_view array, const Path& path) {
  Spot spot{{}, {0, array.size()}, ""};
  for (std::size_t level = 0; level < path.Depth; ++level) {
    const std::int64_t position = path.Positions.at(level);
    if (spot.Marks.empty()) {
      spot.List = spot.Element;
      const Step step = StepInto(array, spot.List, kMarks.at(level), position);
      spot.Element = step.Element;
      spot.Marks.append(step.Missing, kMarks.at(level));
    } else {
      const std::int64_t before = std::max<std::int64_t>(position, 1) - 1;
      spot.Marks.append(static_cast<std::size_t>(before), kMarks.at(level));
    }
  }
  return spot;
}

struct Element {
  Span List;
  Span Itself;
};

/// The element of a place when it is there; an appended one never is.
std::optional<Element> FindElement(std::string_view array, Place place) {
  const std::optional<Path> path = PathTo(place);
  if (!path) {
    return std::nullopt;
  }
  Element found{{}, {0, array.size()}};
  for (std::size_t level = 0; level < path->Depth; ++level) {
    const std::int64_t position = path->Positions.at(level);
    found.List = found.Itself;
    const Step step = StepInto(array, found.List, kMarks.at(level), position);
    if (position == kAppend || step.Missing > 0) {
      return std::nullopt;
    }
    found.Itself = step.Element;
  }
  return found;
}

std::string Replace(std::string_view array, Span span, std::string_view text) {
  std::string changed(array.substr(0, span.Begin));
  return changed.append(text).append(array.substr(span.End));
}

}  // namespace

std::string Extract(std::string_view array, Place place) {
  const std::optional<Element> found = FindElement(array, place);
  if (!found) {
    return "";
  }
  return std::string(array.substr(found->Itself.Begin, found->Itself.End - found->Itself.Begin));
}

std::string Assign(std::string_view array, Place place, const Value& x) {
  const std::optional<Path> path = PathTo(place);
  if (!path) {
    return std::string(array);
  }
  Spot spot = FindSpot(array, *path);
  return Replace(array, spot.Element, spot.Marks.append(x.Text()));
}

std::string Insert(std::string_view array, Place place, const Value& x) {
  const std::optional<Path> path = PathTo(place);
  if (!path) {
    return std::string(array);
  }
  Spot spot = FindSpot(array, *path);
  if (spot.List.Empty() || !spot.Marks.empty()) {
    return Replace(array, spot.Element, spot.Marks.append(x.Text()));
  }
  const std::size_t at = spot.Element.Begin;
  return Replace(array, {at, at}, x.Text() + kMarks.at(path->Depth - 1));
}

std::string DeleteAt(std::string_view array, Place place) {
  const std::optional<Element> found = FindElement(array, place);
  if (!found) {
    return std::string(array);
  }
  Span cut = found->Itself;
  if (cut.End < found->List.End) {
    ++cut.End;
  } else if (cut.Begin > found->List.Begin) {
    --cut.Begin;
  }
  return Replace(array, cut, "");
}

}  // namespace ptick
