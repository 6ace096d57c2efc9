#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "value/dynamic_array.h"
#include "value/value.h"

namespace ptick {

/// How a list that is searched is kept.
enum class LocateOrder {
  kNone,        ///< any order; texts are compared byte by byte
  kAscending,   ///< "AR": ascending, compared as numbers
  kDescending,  ///< "DR": descending, compared as numbers
};

/// "AR" and "DR" as orders; anything else is no order.
LocateOrder ParseLocateOrder(std::string_view code);

struct Located {
  bool found = false;
  std::int64_t position = 1;  ///< of the match, or where x must be inserted
};

/// Searches a list for x: the fields of `array` (level.Field 0), the values of a field (level.Value
/// 0) or the sub-values of a value. In an order the search stops at the first element that x equals
/// or should precede; elements that are not numeric, and such an x, count as 0. Without one, what
/// is not found belongs after the last element. An empty list has no elements: position 1.
Located Locate(const Value& x, std::string_view array, Place level, LocateOrder order);

/// The number of elements between delimiters: 0 for the empty text. `delimiter` is a single byte.
std::int64_t DCount(std::string_view x, char delimiter);

/// A run of delimited elements, and where it was.
struct FieldResult {
  std::string text;
  std::size_t col1 = 0;  ///< 1-based position of the byte just before Text in x; 0 at the front
  std::size_t col2 =
      0;  ///< just after Text; LEN(x) + 1 where Text ends with x or lies past its end
};

/// `count` elements from element n on, joined by the delimiter, or as many as there are. Past the
/// end the text is empty and both columns are LEN(x) + 1, so that nothing is left after it. n and
/// count below 1 count as 1.
FieldResult Field(std::string_view x, char delimiter, std::int64_t n, std::int64_t count = 1);

/// The fields sorted ascending as unsigned bytes.
std::string Sort(std::string_view array);

/// The numeric sum of all elements, whatever mark separates them: each added in turn as Add does; 0
/// for the empty text.
Value Sum(std::string_view array);

}  // namespace ptick
