#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "value/dynamic_array.h"

namespace ptick::fuzz {

/// Dynamic arrays the way they are defined: split into their elements, changed, joined again. An
/// empty list has one empty element.
std::vector<std::string> SplitAt(std::string_view list, char mark);
std::string JoinWith(const std::vector<std::string>& elements, char mark);

/// The operations of value/dynamic_array.h, with their rules for odd places.
std::string LiteralExtract(const std::string& array, Place place);
std::string LiteralAssign(const std::string& array, Place place, const std::string& x);
std::string LiteralInsert(const std::string& array, Place place, const std::string& x);
std::string LiteralDelete(const std::string& array, Place place);

}  // namespace ptick::fuzz
