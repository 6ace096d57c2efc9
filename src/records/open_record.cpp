#include "records/open_record.h"

#include "output/stop.h"
#include "records/record_place.h"

namespace ptick {

std::unique_ptr<RecordReader> OpenNamedRecord(std::string_view name, Platform& platform,
                                              Output& output) {
  const RecordPlace place = SplitProfileName(name);
  const std::unique_ptr<RecordFile> file = platform.OpenFile(place.directory);
  if (!file) {
    output.PrintMessage(201, place.directory);
    return nullptr;
  }
  std::unique_ptr<RecordReader> record = file->OpenRecord(place.record);
  if (!record) {
    output.PrintMessage(202, place.record);
  }
  return record;
}

void ReportUnreadable(std::string_view name, Output& output) {
  output.PrintMessage(202, SplitProfileName(name).record);
}

void StopUnreadable(std::string_view name, Output& output) {
  ReportUnreadable(name, output);
  throw Stop{1};
}

}  // namespace ptick
