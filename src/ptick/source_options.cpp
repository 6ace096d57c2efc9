#include "ptick/source_options.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "output/stop.h"
#include "ptick/read_messages.h"
#include "records/record_place.h"
#include "records/record_text.h"

namespace ptick {

void OpenSourceFile(std::string_view name, Platform& platform, Output& output,
                    RunOptions& options) {
  int error = 0;
  std::unique_ptr<RecordFile> file = platform.OpenFile(name, &error);
  if (!file) {
    PrintCannotOpen(name, error, output);
    return;
  }
  options.SourceFiles.push_back({std::string(name), std::move(file)});
}

void OpenSourceFileList(std::string_view path, Platform& platform, Output& output,
                        RunOptions& options) {
  const RecordPlace place = SplitProfileName(path);
  int error = 0;
  const std::unique_ptr<RecordFile> file = platform.OpenFile(place.directory, &error);
  if (!file) {
    PrintCannotOpen(place.directory, error, output);
    throw Stop{1};
  }
  const std::unique_ptr<RecordReader> record = file->OpenRecord(place.record, &error);
  const std::optional<RecordText> list = record ? ReadRecordText(*record) : std::nullopt;
  if (record && !list) {
    error = record->Error();
  }
  if (!list) {
    PrintCannotRead(place, error, output);
    throw Stop{1};
  }
  if (list->FieldCount() == 1 && list->ReadField(1)->empty()) {
    return;  // a line end and nothing else names no file
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
