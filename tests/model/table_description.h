#pragma once

#include <string>

#include "model/model_tables.h"
#include "profile/tables/profile_tables.h"

namespace ptick::model {

/// Everything that the reports can see of the tables, as text with one line per value; equal texts
/// mean equal tables. The options tell how the tick entries are grouped and what the keyboard
/// script is to hold. Those of the program lose their tick entries.
std::string Describe(const ModelTables& tables, const RunOptions& options);
std::string Describe(ProfileTables& tables, const RunOptions& options);

}  // namespace ptick::model
