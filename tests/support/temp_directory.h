#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace ptick::testing {

/// A fresh directory that goes, with all that is in it, when the test ends.
class TempDirectory {
 public:
  TempDirectory();
  TempDirectory(const TempDirectory&) = delete;
  TempDirectory& operator=(const TempDirectory&) = delete;
  ~TempDirectory();

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

  /// Writes a file and returns where it is.
  std::filesystem::path Write(std::string_view name, std::string_view text) const;
  /// Writes a shell script that can be run.
  std::filesystem::path WriteScript(std::string_view name, std::string_view body) const;
  /// Makes a named pipe, which scripts and tests wait on for each other.
  std::filesystem::path MakeFifo(std::string_view name) const;
  /// The text of a file, empty when there is none.
  std::string Read(std::string_view name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace ptick::testing
