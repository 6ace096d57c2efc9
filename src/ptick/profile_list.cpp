#include "ptick/profile_list.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "output/stop.h"
#include "profile/profile_loader.h"
#include "ptick/read_messages.h"

namespace ptick {

namespace {

// What no report of the run shows is not kept.
ReadOptions ReadOptionsFor(const RunOptions& options, const ThreadPlan& threads,
                           Platform& platform) {
  const bool shows_performs = options.AllReports || options.PerformsOption;
  return {.keep_performs = shows_performs && options.Verbose,
          .keep_callers = false,
          .keep_inputs = !options.KeyScriptFile.empty(),
          .table_memory = platform.TableMemory(),
          .threads = threads};
}

std::optional<ReadProblem> LoadMerged(const RunOptions& options, const ReadOptions& read_options,
                                      Platform& platform, Output& output, ProfileTables& tables) {
  MergedProfile merged = MergeProfileFiles(
      options.ProfileList, platform, read_options.table_memory,
      [&output](const ReadProblem& problem) { PrintProblem(problem, output); },
      read_options.threads);
  if (merged.is_broken) {
    throw Stop{1};
  }
  if (merged.merge.Empty()) {
    output.PrintTerminal("No input files...");
    throw Stop{2};
  }
  return ReadMergedProfile(std::move(merged), read_options, tables);
}

}  // namespace

void LoadProfileList(const RunOptions& options, const ThreadPlan& threads, Platform& platform,
                     Output& output, ProfileTables& tables) {
  const std::vector<std::string>& names = options.ProfileList;
  const ReadOptions read_options = ReadOptionsFor(options, threads, platform);
  std::optional<ReadProblem> problem;
  if (names.size() > 1) {
    problem = LoadMerged(options, read_options, platform, output, tables);
  } else {
    const std::string name = names.empty() ? "ptick_" + platform.OwnPort() : names.front();
    problem = LoadProfile(name, platform, read_options, tables);
  }
  if (problem) {
    PrintProblem(*problem, output);
    throw Stop{problem->kind == ReadProblem::Kind::kInvalidLine ? 2 : 1};
  }
}

}  // namespace ptick
