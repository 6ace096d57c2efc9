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
  std::int64_t field = 0;
  std::int64_t value = 0;
  std::int64_t sub_value = 0;
};

/// The element at `place`; empty when there is none.
std::string Extract(std::string_view array, Place place);

/// The array with the element at `place` replaced by x, empty elements added where it is shorter.
/// Appending to an empty list gives just x, as an empty list counts as one empty element. Marks in
/// x are marks of the result.
std::string Assign(std::string_view array, Place place, const Value& x);

/// The array with x inserted before the element at `place`; after the end, as Assign. Inserting
/// into an empty list, at its first place or by -1, gives just x.
std::string Insert(std::string_view array, Place place, const Value& x);

/// The array without the element at `place` and one mark beside it: the mark after it, or the one
/// before it where it is the last. Unchanged when there is no such element.
std::string DeleteAt(std::string_view array, Place place);

}  // namespace ptick
