#pragma once

#include <string>
#include <vector>

#include "model/model_tables.h"
#include "model/typed_run.h"
#include "profile/tables/profile_tables.h"
#include "ptick/run_options.h"

namespace ptick::model {

/// How the tables that a parse filled, or the message that it stopped with, differ from what the
/// model makes of the same lines; empty when they do not.
std::string TablesDifference(const std::vector<std::string>& profile_lines,
                             const RunOptions& options, const Ran& ran, ProfileTables& tables);

/// The same for a text that the parser reads as it is delivered.
std::string ParseDifference(const std::string& text, const RunOptions& options,
                            const Delivery& delivery);

/// How the lines of a merge, or its message, differ from what the model makes of the same texts.
std::string MergeDifference(const std::vector<std::string>& texts);

/// How a parse of the merge of these texts differs from the model's. Texts whose merge is empty
/// never differ.
std::string MergedParseDifference(const std::vector<std::string>& texts, const RunOptions& options);

/// How the reports on a profile differ from the model's. Profiles with invalid lines never differ.
std::string LineReportDifference(const std::string& text, const RunOptions& options);
std::string ProgramOrderDifference(const std::string& text, const RunOptions& options);
std::string PerformSummaryDifference(const std::string& text);
std::string OtherReportsDifference(const std::string& text);
std::string KeyScriptDifference(const std::string& text, const RunOptions& options);

}  // namespace ptick::model
