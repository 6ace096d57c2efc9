#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "value/value.h"

namespace ptick {

/// Dynamic arrays: lists held as text whose elements are separated by mark bytes. Fields hold
/// values, values hold sub-values. Positions count from 1; position 0 for a value or sub-value
/// means the whole of what holds it. No operation fails or changes its arguments.
inline constexpr char kFieldMark = static_cast<char>(254);
inline constexpr char kValueMark = static_cast<char>(253);
inline constexpr char kSubValueMark = static_cast<char>(252);

/// The place of an element. Value 0 is the whole field, whatever the SubValue; SubValue 0 is the
/// whole value. -1 appends (Assign and Insert) and names no element elsewhere. A place with a
/// position below -1, or 0 for the field, never names an element: reading it gives the empty text,
/// changing it changes nothing.
struct Place {
  std::int64_t Field = 0;
  std::int64_t Value = 0;
  std::int64_t SubValue = 0;
};

/// The element at `place`; empty when there is none.
std::string Extract(std::string_view array, Place place);

/// The array with the element at `place` replaced by x, empty elements added where it is shorter.
/// Appending to an empty list gives just x, as an empty list counts as one empty element. Marks in
/// x are marks of the result.
std::string Assign(std::string_view array, Place place, const Value& x);

/// The array with x inserted before the element at `place`; behind the end, as Assign. Inserting
/// into an empty list, at its first place or by -1, gives just x.
std::string Insert(std::string_view array, Place place, const Value& x);

/// The array without the element at `place` and one mark beside it: the mark behind it, or the one
/// before it where it is the last. Unchanged when there is no such element.
std::string DeleteAt(std::string_view array, Place place);

/// How a list that is searched is kept.
enum class LocateOrder {
  kNone,        ///< any order; texts are compared byte by byte
  kAscending,   ///< "AR": ascending, compared as numbers
  kDescending,  ///< "DR": descending, compared as numbers
};

/// "AR" and "DR" as orders; anything else is no order.
LocateOrder ParseLocateOrder(std::string_view code);

struct Located {
  bool Found = false;
  std::int64_t Position = 1;  ///< of the match, or where x must be inserted
};

/// Searches a list for x: the fields of `array` (level.Field 0), the values of a field (level.Value
/// 0) or the sub-values of a value. In an order the search stops at the first element that x equals
/// or should precede; elements that are not numeric, and such an x, count as 0. Without one, what
/// is not found belongs behind the last element. An empty list has no elements: position 1.
Located Locate(const Value& x, std::string_view array, Place level, LocateOrder order);

/// The number of elements between delimiters: 0 for the empty text. `delimiter` is a single byte.
std::int64_t DCount(std::string_view x, char delimiter);

/// A run of delimited elements, and where it stood.
struct FieldResult {
  std::string Text;
  std::size_t Col1 = 0;  ///< 1-based position of the byte just before Text in x; 0 at the front
  std::size_t Col2 =
      0;  ///< just after Text; LEN(x) + 1 where Text ends with x or lies past its end
};

/// `count` elements from element n on, joined by the delimiter, or as many as there are. Past the
/// end the text is empty and both columns are LEN(x) + 1, so that nothing is left behind it. n and
/// count below 1 count as 1.
FieldResult Field(std::string_view x, char delimiter, std::int64_t n, std::int64_t count = 1);

/// The fields sorted ascending as unsigned bytes.
std::string Sort(std::string_view array);

/// The numeric sum of all elements, whatever mark separates them: each added in turn as Add does; 0
/// for the empty text.
Value Sum(std::string_view array);

}  // namespace ptick
