#pragma once

#include <string>
#include <string_view>

namespace ptick {

/// The `Performs` entry of a "perform" record (record type first): its values joined by value
/// marks. Empty when the record has no usable command.
std::string PerformEntry(std::string_view profile_line);

}  // namespace ptick
