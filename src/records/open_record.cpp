#include "records/open_record.h"

#include <string>

#include "records/record_place.h"

namespace ptick {

std::unique_ptr<RecordReader> OpenNamedRecord(std::string_view name, RecordFiles& files,
                                              ReadProblem& problem) {
  problem = UnreadableRecord(name, 0);
  const std::unique_ptr<RecordFile> file = files.OpenFile(problem.place.directory, &problem.error);
  if (!file) {
    problem.kind = ReadProblem::Kind::kCannotOpenFile;
    return nullptr;
  }
  return file->OpenRecord(problem.place.record, &problem.error);
}

ReadProblem UnreadableRecord(std::string_view name, int error) {
  ReadProblem problem;
  problem.kind = ReadProblem::Kind::kCannotReadRecord;
  problem.name = name;
  problem.place = SplitProfileName(name);
  problem.error = error;
  return problem;
}

}  // namespace ptick
