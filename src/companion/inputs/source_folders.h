// Finds the sources of programs in folders, as `ptick -f` does.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "companion/command_line.h"
#include "platform/record_file.h"
#include "records/record_text.h"
#include "records/source_files.h"

namespace ptick::companion {

/// The source of a program.
struct SourceText {
  /// Where it was found: "DIR/PROGRAM".
  std::string path;
  /// Its lines are the fields.
  RecordText text;
};

/// Folders of sources, asked in their order. A source is a regular file with the name of the
/// program, links followed; a name with '/' in it finds none.
class SourceFolders {
 public:
  /// Throws a UsageError where a folder cannot be opened.
  SourceFolders(std::span<const std::string> names, RecordFiles& files);

  /// The text of the first source that can be read to its end, read at once; nothing when there is
  /// none.
  std::optional<SourceText> Read(std::string_view program) const;

  /// Where the first source is that can be opened.
  std::optional<std::string> PathOf(std::string_view program) const;

  /// The folders for those who look for lines, such as SourceFinder.
  std::span<const SourceFile> Files() const { return folders_; }

 private:
  std::vector<SourceFile> folders_;
};

/// Where the source of a program is in a folder: "DIR/PROGRAM".
std::string SourcePath(const SourceFile& folder, std::string_view program);

/// The option that names the folders: -f DIR, --source=DIR, repeated for several.
void AddSourceOption(CommandLine& line, std::vector<std::string>& folders);

}  // namespace ptick::companion
