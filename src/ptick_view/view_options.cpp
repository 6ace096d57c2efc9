#include "ptick_view/view_options.h"

#include <algorithm>

#include "companion/inputs/source_folders.h"
#include "companion/usage_error.h"

namespace ptick::view {

namespace {

void CheckView(ViewOptions& options, const companion::CommandLine& line) {
  const auto inputs =
      std::ranges::count(options.profiles, "-") + std::ranges::count(options.baseline, "-");
  if (inputs > 1) {
    throw companion::UsageError("standard input, '-', can be read only once");
  }
  options.page = line.Common().output.value_or("-");
  if (options.opens_page && options.page == "-") {
    throw companion::UsageError("'--open' needs '-o', a file that the browser can open");
  }
}

}  // namespace

void DescribeView(companion::CommandLine& line, ViewOptions& options) {
  line.Usage("[OPTION]... -o PAGE.html PROFILE...")
      .Summary(
          "Writes a page that shows a profile, or several merged into one, in any browser: one "
          "file that works without network. PROFILE is a file or a pipe; - is standard input.")
      .Texts("--baseline", "PROFILE",
             "show the change from PROFILE in every view; several are runs of the same program",
             options.baseline)
      .Flag("--open", "open the page in a browser when it is written", options.opens_page);
  companion::AddSourceOption(line, options.source_folders);
  line.Operands(options.profiles, 1).Check([&options, &line] { CheckView(options, line); });
}

}  // namespace ptick::view
