#include "ptick_diff/diff_program.h"

#include <fmt/format.h>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "companion/inputs/profile_inputs.h"
#include "companion/inputs/source_folders.h"
#include "companion/linux/inputs.h"
#include "companion/number_text.h"
#include "companion/problem.h"
#include "compare/comparison.h"
#include "compare/key_names.h"
#include "compare/line_moves.h"
#include "compare/row_order.h"
#include "compare/side.h"
#include "platform/linux/record_files.h"
#include "ptick_diff/diff.h"
#include "ptick_diff/diff_writers.h"
#include "ptick_diff/gate_messages.h"
#include "ptick_diff/read_sides.h"

namespace ptick::compare {

namespace {

using companion::ExitStatus;
using companion::ResultFile;
using companion::Session;
using companion::SourceFolders;

constexpr std::uint64_t kTopOnTerminal = 30;

/// The folders of both sides, where sources were asked for.
struct Sources {
  SourceFolders old_folders;
  SourceFolders new_folders;
};

std::optional<Sources> OpenSources(const DiffOptions& options) {
  if (options.old_sources.empty()) {
    return std::nullopt;
  }
  LinuxRecordFiles files;
  return Sources{.old_folders = SourceFolders(options.old_sources, files),
                 .new_folders = SourceFolders(options.new_sources, files)};
}

void ReadSides(const DiffOptions& options, Session& session, Side& old_side, Side& new_side) {
  companion::Progress progress(session.GetStatusLine(),
                               [&options] { return companion::BytesOfAll(options.profiles); });
  const companion::ProfileInputs inputs(companion::OpenInput, progress);
  ReadRuns(options.OldProfiles(), inputs, old_side);
  ReadRuns(options.NewProfiles(), inputs, new_side);
}

void Tell(const std::string& reason, Session& session) {
  session.GetMessages().Tell({.file = std::nullopt, .line = std::nullopt, .reason = reason});
}

void Write(const Diff& diff, const DiffOptions& options, ResultFile& result, Session& session) {
  const std::uint64_t top = options.top.value_or(kAllRows);
  switch (options.GetForm()) {
    case Form::kJson:
      WriteDiffJson(diff, top, result);
      break;
    case Form::kCsv:
      WriteDiffCsv(diff, top, result);
      if (top < diff.order.size()) {
        Tell(fmt::format("{} of {} rows left out", companion::GroupedCount(diff.order.size() - top),
                         companion::GroupedCount(diff.order.size())),
             session);
      }
      break;
    case Form::kText: {
      const companion::TextForm form = session.Form();
      WriteDiffTable(diff,
                     {.top = options.top.value_or(form.to_terminal ? kTopOnTerminal : kAllRows),
                      .shows_noise = options.shows_noise},
                     result, form);
      break;
    }
  }
}

ExitStatus TellGates(const Diff& diff, const DiffOptions& options, Session& session) {
  const std::vector<std::string> messages = GateMessages(diff, options);
  for (const std::string& message : messages) {
    Tell(message, session);
  }
  return messages.empty() ? ExitStatus::kDone : ExitStatus::kTold;
}

ExitStatus CompareProfiles(const DiffOptions& options, Session& session) {
  ResultFile& result = session.OpenResult(companion::ResultKind::kText);
  const std::optional<Sources> sources = OpenSources(options);
  KeyNames names;
  Side old_side(options.by, names);
  Side new_side(options.by, names);
  ReadSides(options, session, old_side, new_side);
  if (options.normalize && !CanNormalize(old_side, new_side)) {
    throw companion::Trouble("totals cannot be made equal: one of them is not above 0");
  }
  std::vector<std::string> without_source;
  LineMoves moves;
  if (sources) {
    moves = AlignSources(names, sources->old_folders, sources->new_folders, without_source);
  }
  const Comparison comparison(old_side, new_side,
                              {.normalize = options.normalize, .moves = &moves});
  const Diff diff = {.comparison = comparison,
                     .old_profiles = options.OldProfiles(),
                     .new_profiles = options.NewProfiles(),
                     .is_normalized = options.normalize,
                     .has_sources = sources.has_value(),
                     .programs_without_source = without_source,
                     .order = OrderRows(comparison, options.sort)};
  Write(diff, options, result, session);
  return TellGates(diff, options, session);
}

}  // namespace

companion::Program DiffProgram(DiffOptions& options) {
  return {.name = "ptick-diff",
          .describe = [&options](companion::CommandLine& line) { DescribeDiff(line, options); },
          .run = [&options](Session& session) { return CompareProfiles(options, session); }};
}

}  // namespace ptick::compare
