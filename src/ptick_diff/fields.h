// The fields of a row for programs, the same in JSON and CSV.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "compare/comparison.h"
#include "ptick_diff/diff.h"
#include "value/value.h"

namespace ptick::compare {

/// Nothing where there is none.
using FieldValue = std::variant<std::monostate, Number, std::string, bool>;

struct Field {
  std::string_view name;
  std::function<FieldValue(const Comparison& comparison, const Row& row)> value;
};

/// The fields of this kind of rows, in their order.
std::vector<Field> FieldsOf(const Diff& diff);

/// How a kind is called: "line".
std::string_view KindName(Kind kind);

}  // namespace ptick::compare
