#include "ptick/source_options.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "output/stop.h"
#include "records/record_place.h"
#include "records/record_text.h"

namespace ptick {

void OpenSourceFile(std::string_view name, Platform& platform, Output& output,
                    RunOptions& options) {
  std::unique_ptr<RecordFile> file = platform.OpenFile(name);
  if (!file) {
    output.PrintMessage(201, name);
    return;
  }
  options.SourceFiles.push_back({std::string(name), std::move(file)});
}

void OpenSourceFileList(std::string_view path, Platform& platform, Output& output,
                        RunOptions& options) {
  const RecordPlace place = SplitProfileName(path);
  const std::unique_ptr<RecordFile> file = platform.OpenFile(place.directory);
  if (!file) {
    output.PrintMessage(201, place.directory);
    throw Stop{1};
  }
  const std::optional<RecordText> list = ReadRecordText(*file, place.record);
  if (!list) {
    output.PrintMessage(202, place.record);
    throw Stop{1};
  }
  if (list->FieldCount() + options.SourceFiles.size() > kSourceFileLimit) {
    output.PrintTerminal("Too many files specified in file " + std::string(path));
    throw Stop{1};
  }
  for (std::size_t n = 1; n <= list->FieldCount(); ++n) {
    OpenSourceFile(*list->ReadField(n), platform, output, options);
  }
}

}  // namespace ptick
