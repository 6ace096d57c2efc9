#include "output/page_heading.h"

namespace ptick {

std::string HeadingText(const PageHeading& heading, std::int64_t page) {
  return heading.title + " Page " + std::to_string(page) + "\n" + heading.columns;
}

}  // namespace ptick
