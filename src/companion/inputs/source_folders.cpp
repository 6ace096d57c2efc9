#include "companion/inputs/source_folders.h"

#include <memory>
#include <system_error>
#include <utility>

#include "companion/usage_error.h"

namespace ptick::companion {
SourceFolders::SourceFolders(std::span<const std::string> names, RecordFiles& files) {
  for (const std::string& name : names) {
    int error = 0;
    std::shared_ptr<RecordFile> folder = files.OpenFile(name, &error);
    if (!folder) {
      throw UsageError("cannot open the source folder '" + name +
                       "': " + std::generic_category().message(error));
    }
    folders_.push_back({.name = name, .file = std::move(folder)});
  }
}

std::optional<SourceText> SourceFolders::Read(std::string_view program) const {
  for (const SourceFile& folder : folders_) {
    const std::unique_ptr<RecordReader> source = folder.file->OpenRegularRecord(program);
    if (!source) {
      continue;
    }
    if (std::optional<RecordText> text = ReadRecordText(*source)) {
      return SourceText{.path = SourcePath(folder, program), .text = *std::move(text)};
    }
  }
  return std::nullopt;
}

std::optional<std::string> SourceFolders::PathOf(std::string_view program) const {
  for (const SourceFile& folder : folders_) {
    if (folder.file->OpenRegularRecord(program)) {
      return SourcePath(folder, program);
    }
  }
  return std::nullopt;
}

std::string SourcePath(const SourceFile& folder, std::string_view program) {
  std::string path = folder.name;
  if (!path.ends_with('/')) {
    path += '/';
  }
  path += program;
  return path;
}

void AddSourceOption(CommandLine& line, std::vector<std::string>& folders) {
  line.Texts("-f,--source", "DIR",
             "look for the sources of programs in the folder DIR; may be repeated, the first "
             "source found is taken",
             folders);
}

}  // namespace ptick::companion
