// The page that data is put into, as web/ builds it.
#pragma once

#include <string_view>

namespace ptick::view {

/// The page around its data: what comes before it and what comes after it. A page with data is the
/// first, the data, the second. See web/README.md for what the data may hold.
struct Page {
  std::string_view before;
  std::string_view after;
};

/// The page that is part of the program.
Page EmbeddedPage();

/// Divides a page where its data belongs, which is marked once. Throws std::logic_error when it is
/// not.
Page DividePage(std::string_view page);

}  // namespace ptick::view
