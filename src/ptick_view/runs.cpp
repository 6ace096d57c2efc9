#include "ptick_view/runs.h"

#include "profile/parse/read_options.h"
#include "ptick_export/formats/format_table.h"

namespace ptick::view {

void ComparedKinds::AddRun(const ProfileTables& tables, bool is_new) {
  for (ComparedKind& kind : kinds_) {
    (is_new ? kind.new_side : kind.old_side).AddRun(tables);
  }
}

void ReadRuns(const std::vector<std::string>& profiles, const companion::ProfileInputs& inputs,
              bool is_new, ComparedKinds* kinds, ProfileTables& tables) {
  const ReadOptions options = exports::OptionsFor(exports::kAllParts);
  if (kinds == nullptr) {
    inputs.Read(profiles, options, tables);
    return;
  }
  inputs.ReadEach(profiles, options, tables,
                  [&](const ProfileTables& run) { kinds->AddRun(run, is_new); });
}

}  // namespace ptick::view
