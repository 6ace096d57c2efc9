#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "profile/parse/read_options.h"
#include "profile/scan/perform_line.h"
#include "profile/tables/profile_tables.h"
#include "profile/ticks/name_batch.h"

namespace ptick {

/// Takes lines that are written the way profiled processes write them straight into the tables.
/// What it does not take is left to those who know all rules; they would fill the tables with the
/// same, so this is speed and nothing else.
///
/// Lines of some types wait until there are enough of them to be looked up together: AddWaiting
/// comes before any other line of a waiting type is added, and before the block is let go.
class UsualLines {
 public:
  UsualLines(const ReadOptions& options, ProfileTables& tables)
      : options_(options), tables_(tables) {}

  /// Takes the line that starts at `line`, in a block as LineBlocks hands them out, and returns the
  /// start of the next one; null for a line in another form.
  const char* Take(const char* line);

  void AddWaiting();

 private:
  const char* TakeCall(const char* line);
  const char* TakeObject(const char* line);
  const char* TakeInput(const char* line);
  const char* CountInput(const char* line);
  const char* TakePerform(const char* line);
  const char* TakePerformCommand(const char* line);

  const ReadOptions& options_;
  ProfileTables& tables_;
  std::size_t waiting_ = 0;
  std::array<PerformLine, kNameBatch> performs_;       ///< those that wait to be kept
  std::array<std::string_view, kNameBatch> commands_;  ///< those that wait to be counted
};

}  // namespace ptick
