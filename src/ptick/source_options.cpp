#include "ptick/source_options.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "output/stop.h"
#include "ptick/read_messages.h"
#include "records/open_record.h"
#include "records/record_text.h"

namespace ptick {

namespace {

// No path of the system is longer.
constexpr std::size_t kMaxName = 4096;

/// The fields of a list, or as many as show that it has more than `most`. A list of nothing but a
/// line end is as empty as one without it: a first field is never too many to read on.
RecordText ReadList(std::string_view path, std::size_t most, Platform& platform, Output& output) {
  ReadProblem problem;
  if (const std::unique_ptr<RecordReader> record = OpenNamedRecord(path, platform, problem)) {
    const TextLimits limits{.fields = std::max<std::size_t>(most, 1),
                            .bytes = kSourceFileLimit * kMaxName};
    if (std::optional<RecordText> list = ReadRecordText(*record, limits, &problem.error)) {
      const bool is_empty = list->FieldCount() == 1 && list->ReadField(1)->empty();
      return is_empty ? RecordText() : *std::move(list);
    }
  }
  PrintProblem(problem, output);
  throw Stop{1};
}

}  // namespace

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
  const std::size_t most = kSourceFileLimit - options.SourceFiles.size();
  const RecordText list = ReadList(path, most, platform, output);
  if (list.FieldCount() > most) {
    output.PrintTerminal("Too many files specified in file " + std::string(path));
    throw Stop{1};
  }
  for (std::size_t n = 1; n <= list.FieldCount(); ++n) {
    OpenSourceFile(*list.ReadField(n), platform, output, options);
  }
}

}  // namespace ptick
