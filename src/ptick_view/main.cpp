// ptick-view: a page to look at.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "companion/inputs/profile_inputs.h"
#include "companion/inputs/source_folders.h"
#include "companion/linux/inputs.h"
#include "companion/linux/opener.h"
#include "companion/linux/program.h"
#include "companion/progress.h"
#include "platform/linux/record_files.h"
#include "ptick_view/document.h"
#include "ptick_view/page.h"
#include "ptick_view/runs.h"
#include "ptick_view/view_options.h"

namespace ptick::view {

namespace {

using companion::ExitStatus;
using companion::Session;

struct Runs {
  ProfileTables profile;
  ProfileTables baseline;
  /// Where there is a baseline.
  std::optional<ComparedKinds> kinds;
};

void ReadAll(const ViewOptions& options, Session& session, Runs& runs) {
  std::vector<std::string> all = options.baseline;
  all.insert(all.end(), options.profiles.begin(), options.profiles.end());
  companion::Progress progress(session.GetStatusLine(),
                               [&all] { return companion::BytesOfAll(all); });
  const companion::ProfileInputs inputs(companion::OpenInput, progress);
  if (!options.baseline.empty()) {
    runs.kinds.emplace();
    ReadRuns(options.baseline, inputs, false, &*runs.kinds, runs.baseline);
  }
  ReadRuns(options.profiles, inputs, true, runs.kinds ? &*runs.kinds : nullptr, runs.profile);
}

void WritePage(const ViewOptions& options, const Runs& runs,
               const companion::SourceFolders& sources, companion::ByteSink& result) {
  std::optional<BaselineSide> baseline;
  if (runs.kinds) {
    baseline.emplace(
        BaselineSide{.profile = {runs.baseline, options.baseline.size()}, .kinds = *runs.kinds});
  }
  const Page page = EmbeddedPage();
  result.Write(page.before);
  WriteDocument({.producer = "ptick-view " PTICK_VERSION,
                 .profile = {runs.profile, options.profiles.size()},
                 .baseline = baseline ? &*baseline : nullptr,
                 .sources = sources,
                 .limits = {}},
                result);
  result.Write(page.after);
}

ExitStatus View(const ViewOptions& options, Session& session) {
  LinuxRecordFiles files;
  const companion::SourceFolders sources(options.source_folders, files);
  companion::ResultFile& result = session.OpenResult(companion::ResultKind::kBytes);
  Runs runs;
  ReadAll(options, session, runs);
  WritePage(options, runs, sources, result);
  if (options.opens_page) {
    session.FinishResult();
    return companion::OpenForUser(options.page, session.GetMessages()) ? ExitStatus::kDone
                                                                       : ExitStatus::kTold;
  }
  return ExitStatus::kDone;
}

}  // namespace

}  // namespace ptick::view

int main(int argc, char** argv) {
  ptick::view::ViewOptions options;
  return ptick::companion::RunProgram(
      {.name = "ptick-view",
       .describe = [&options](ptick::companion::CommandLine& line) { DescribeView(line, options); },
       .run =
           [&options](ptick::companion::Session& session) {
             return ptick::view::View(options, session);
           }},
      argc, argv);
}
