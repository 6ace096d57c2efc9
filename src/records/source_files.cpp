#include "records/source_files.h"

namespace ptick {

// What a record has of ascending lines are the first ones, so each file is asked for the rest.
std::size_t SourceFinder::Find(std::string_view program, std::span<const std::uint32_t> lines,
                               LineSink& sink) {
  std::size_t found = 0;
  for (const SourceFile& source : files_) {
    if (found == lines.size()) {
      break;
    }
    if (const std::unique_ptr<RecordReader> record = source.file->OpenRegularRecord(program)) {
      found += finder_.Find(*record, lines.subspan(found), found, sink);
    }
  }
  return found;
}

}  // namespace ptick
