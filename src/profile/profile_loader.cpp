#include "profile/profile_loader.h"

#include <memory>
#include <string>
#include <vector>

#include "output/stop.h"
#include "profile/merge/profile_merge.h"
#include "profile/parse/record_parser.h"
#include "records/line_blocks.h"
#include "records/open_record.h"

namespace ptick {

namespace {

void LoadSingleProfile(const std::string& name, const RunOptions& options, Platform& platform,
                       Output& output, ProfileTables& tables) {
  std::unique_ptr<RecordReader> record = OpenNamedRecord(name, platform, output);
  if (!record) {
    throw Stop{1};
  }
  RecordBlocks lines(std::move(record));
  ParseProfileLines(lines, options, output, tables);
  if (lines.Failed()) {
    StopUnreadable(name, output);
  }
  tables.ProfileName = name;
}

}  // namespace

void LoadProfileList(const RunOptions& options, Platform& platform, Output& output,
                     ProfileTables& tables) {
  const std::vector<std::string>& names = options.ProfileList;
  if (names.empty()) {
    LoadSingleProfile("ptick_" + platform.OwnPort(), options, platform, output, tables);
  } else if (names.size() == 1) {
    LoadSingleProfile(names.front(), options, platform, output, tables);
  } else {
    ProfileMerge merge;
    MergeProfileFiles(names, platform, output, merge);
    tables.ProfileName = merge.FirstName() + " ...";
    ParseProfileLines(merge, options, output, tables);
  }
}

}  // namespace ptick
