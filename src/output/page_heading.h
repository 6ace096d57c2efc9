#pragma once

#include <cstdint>
#include <string>

namespace ptick {

/// What every page starts with: the title, " Page " and the page number, and below that the
/// columns. Both texts are plain; nothing inside them is interpreted. A line end in a name makes
/// the heading a line longer.
struct PageHeading {
  std::string title;  ///< padded already so that the page number ends where it should
  std::string columns;
};

/// The heading of a page, without its last line end.
std::string HeadingText(const PageHeading& heading, std::int64_t page);

}  // namespace ptick
