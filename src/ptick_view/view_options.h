// The command line of ptick-view.
#pragma once

#include <string>
#include <vector>

#include "companion/command_line.h"

namespace ptick::view {

struct ViewOptions {
  std::vector<std::string> profiles;
  std::vector<std::string> baseline;
  std::vector<std::string> source_folders;
  bool opens_page = false;
  std::string page;  ///< the file to open
};

void DescribeView(companion::CommandLine& line, ViewOptions& options);

}  // namespace ptick::view
