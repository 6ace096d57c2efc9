#include "model/comparison.h"

#include "model/line_difference.h"
#include "model/model_merge.h"
#include "model/table_description.h"

namespace ptick::model {

namespace {

// What the program says on the terminal, and its status.
std::string Ending(const std::string& terminal, std::optional<int> stopped) {
  return terminal + "status: " + (stopped ? std::to_string(*stopped) : "none") + "\n";
}

std::string InvalidLineMessage(const InvalidLine& invalid) {
  return "Invalid format in profile file at line " + std::to_string(invalid.line_no) + "\n\t" +
         invalid.profile_line + "\n";
}

std::vector<std::string> MergedModelLines(const std::vector<std::string>& texts) {
  std::vector<std::vector<std::string>> profiles;
  profiles.reserve(texts.size());
  for (const std::string& text : texts) {
    profiles.push_back(LinesOf(text));
  }
  return MergeModelLines(profiles);
}

}  // namespace

std::string TablesDifference(const std::vector<std::string>& profile_lines,
                             const RunOptions& options, const Ran& ran, ProfileTables& tables) {
  ModelTables model;
  const auto invalid = ParseModelLines(profile_lines, options, model);
  if (invalid) {
    return FirstDifference(Ending(InvalidLineMessage(*invalid), 2),
                           Ending(ran.terminal, ran.stopped));
  }
  return FirstDifference(Describe(model, options) + Ending("", std::nullopt),
                         Describe(tables, options) + Ending(ran.terminal, ran.stopped));
}

std::string ParseDifference(const std::string& text, const RunOptions& options,
                            const Delivery& delivery) {
  ProfileTables tables;
  const Ran ran = ParseTyped(text, delivery, options, tables);
  return TablesDifference(LinesOf(text), options, ran, tables);
}

std::string MergeDifference(const std::vector<std::string>& texts) {
  const std::vector<std::string> lines = MergedModelLines(texts);
  MergedProfile merged = MergeTyped(texts);
  MergedLines merged_lines = merged.merge.TakeLines();
  return FirstDifference("run1\n" + JoinLines(lines),
                         merged.first_name + "\n" + JoinLines(ReadLines(merged_lines)));
}

std::string MergedParseDifference(const std::vector<std::string>& texts,
                                  const RunOptions& options) {
  const std::vector<std::string> lines = MergedModelLines(texts);
  if (lines.empty()) {
    return "";
  }
  MergedLines merged_lines = MergeTyped(texts).merge.TakeLines();
  ProfileTables tables_of_lines;
  const Ran ran_of_lines = ParseTyped(merged_lines, options, tables_of_lines);
  ProfileTables tables;
  const Ran ran = ParseTyped(MergeTyped(texts).merge.TakeKeys(), options, tables);
  return TablesDifference(lines, options, ran_of_lines, tables_of_lines) +
         TablesDifference(lines, options, ran, tables);
}

}  // namespace ptick::model
