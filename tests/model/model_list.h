#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "profile/ticks/sort_order.h"
#include "value/dynamic_array.h"
#include "value/list_operations.h"
#include "value/value.h"

namespace ptick::model {

/// A list of the model: searched from the front and grown element by element, the slow way that
/// defines what the quick tables must show. Unlike mark-delimited text it tells a list of one empty
/// element from an empty list.
using ValueList = std::deque<Value>;

/// Searches for x from the front. Without an order for an element of the same text; in an order the
/// search stops at the first element that x equals or should precede, compared as numbers. What is
/// not found belongs at the position returned, after the last element if need be.
Located LocateIn(const Value& x, const ValueList& list, LocateOrder order);

/// Inserts x before the element at `position`, counted from 1, or after the last one.
void InsertAt(ValueList& list, std::int64_t position, const Value& x);

/// The lines of a record: each ends at a line end or a field mark, the last may lack its end.
std::vector<std::string> LinesOf(std::string_view text);

/// Text for failure messages: bytes other than printable ASCII as \xHH.
std::string Shown(std::string_view text);

/// The order in which sorted inserts keep a list.
inline LocateOrder LocateOrderOf(SortOrder order) {
  return order == SortOrder::kAscending ? LocateOrder::kAscending : LocateOrder::kDescending;
}

}  // namespace ptick::model
