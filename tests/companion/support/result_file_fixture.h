#pragma once

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <string_view>

#include "companion/linux/result_file.h"
#include "companion/linux/standard_error.h"
#include "companion/problem.h"
#include "support/temp_directory.h"

namespace ptick::companion::testing {

/// Results in a folder of their own.
class ResultFileFixture : public ::testing::Test {
 protected:
  ResultFile Open(const std::filesystem::path& file, ResultKind kind = ResultKind::kText) {
    return {file.native(), kind, "ptick-sample", standard_error_};
  }
  /// Writes a result and returns what is wrong with it.
  std::string Write(const std::filesystem::path& file, std::string_view text) {
    try {
      ResultFile result = Open(file);
      result.Write(text);
      result.Finish();
    } catch (const Trouble& trouble) {
      return MessageLine("p", trouble.What());
    }
    return "";
  }

  const ptick::testing::TempDirectory& Folder() const { return folder_; }

 private:
  ptick::testing::TempDirectory folder_;
  StandardError standard_error_{"ptick-sample"};
};

inline mode_t ModeOf(const std::filesystem::path& file) {
  struct stat status = {};
  EXPECT_EQ(::stat(file.c_str(), &status), 0);
  return status.st_mode & 07777U;
}

}  // namespace ptick::companion::testing
