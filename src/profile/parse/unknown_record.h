#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace ptick {

/// A line that is a record of no known type.
struct UnknownRecord {
  std::string_view line;  ///< without its end
  std::string_view type;  ///< what is where a type should be; a part of `line`
};

/// The type that a line names when it is a record of no known type, as ParseProfileLines sees it;
/// nothing for every other line. The line comes without its end.
std::optional<std::string_view> UnknownTypeOf(std::string_view line);

/// The first record of no known type among the lines of a block as LineBlocks hands them out.
/// `lines` grows by the number of lines before it, by all of them when there is none.
std::optional<UnknownRecord> FindUnknownRecord(std::string_view block, std::uint64_t& lines);

}  // namespace ptick
