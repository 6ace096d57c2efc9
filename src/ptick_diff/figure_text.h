// Numbers of a comparison as the table shows them: cut, never rounded.
#pragma once

#include <optional>
#include <string>

#include "value/value.h"

namespace ptick::compare {

/// A number with at most two decimals, all of them where two would show nothing of it; "-" where
/// there is none.
std::string FigureText(const std::optional<Number>& number);

/// A change with its sign.
std::string ChangeText(const Number& change);

/// A part of a whole in per cent, with one decimal: "57.9". "-" for a whole that is 0.
std::string PercentText(const Number& part, const Number& whole);

/// The same with a sign, for a change.
std::string SignedPercentText(const Number& change, const Number& whole);

}  // namespace ptick::compare
