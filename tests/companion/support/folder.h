#pragma once

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace ptick::companion::testing {

/// The names in a folder, sorted.
inline std::vector<std::string> NamesIn(const std::filesystem::path& folder) {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    names.push_back(entry.path().filename());
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace ptick::companion::testing
