#pragma once

#include <string>

#include "model/model_tables.h"
#include "profile/tables/profile_tables.h"

namespace ptick::model {

/// Everything that the reports can see of the tables, as text with one line per value; equal texts
/// mean equal tables. `per_program` tells how the tick entries are grouped.
std::string Describe(const ModelTables& tables, bool per_program);
std::string Describe(const ProfileTables& tables, bool per_program);

}  // namespace ptick::model
