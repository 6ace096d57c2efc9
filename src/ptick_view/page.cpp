#include "ptick_view/page.h"

#include <cstddef>
#include <stdexcept>

// The bytes of the page, as they are. The assembler takes the file in: that is quick whatever its
// size, and there is nothing to generate.
asm(".pushsection .rodata\n"
    ".globl ptick_view_page\n"
    ".globl ptick_view_page_end\n"
    "ptick_view_page:\n"
    ".incbin \"" PTICK_VIEW_PAGE
    "\"\n"
    "ptick_view_page_end:\n"
    ".popsection\n");

extern "C" {
extern const char ptick_view_page;      // NOLINT(readability-identifier-naming)
extern const char ptick_view_page_end;  // NOLINT(readability-identifier-naming)
}

namespace ptick::view {

Page EmbeddedPage() {
  return DividePage(
      {&ptick_view_page, static_cast<std::size_t>(&ptick_view_page_end - &ptick_view_page)});
}

Page DividePage(std::string_view page) {
  constexpr std::string_view kMarker = "@PTICK_VIEW_DATA@";
  const std::size_t at = page.find(kMarker);
  if (at == std::string_view::npos || page.find(kMarker, at + 1) != std::string_view::npos) {
    throw std::logic_error("the page must mark the place of its data once");
  }
  return {.before = page.substr(0, at), .after = page.substr(at + kMarker.size())};
}

}  // namespace ptick::view
