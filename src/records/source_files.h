#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "platform/record_file.h"
#include "records/line_finder.h"

namespace ptick {

/// A platform file that holds sources: each record is the source of the program of its name. A copy
/// is the same open file.
struct SourceFile {
  std::string name;  ///< as the user gave it
  std::shared_ptr<RecordFile> file;
};

/// Finds source lines in several files: each line in the first file that has it. A source is a
/// regular file or there is none; it is read at most once, front to back, and only where a line is
/// asked for that no file before had.
class SourceFinder {
 public:
  /// The files must outlive this.
  explicit SourceFinder(std::span<const SourceFile> files) : files_(files) {}

  /// Hands the lines of these numbers, ascending from 1, of the source of `program` to `sink`.
  /// Returns how many were found: the others are past the end of the source in every file.
  std::size_t Find(std::string_view program, std::span<const std::uint32_t> lines, LineSink& sink);

 private:
  std::span<const SourceFile> files_;
  LineFinder finder_;
};

}  // namespace ptick
