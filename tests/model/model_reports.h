#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/model_tables.h"

namespace ptick::model {

/// The lines of the per-line report below its heading, without source texts.
std::vector<std::string> ModelLineReport(const ModelTables& tables, const RunOptions& options);

/// With -n: the rows of `Details`, counted from 1, in the order in which the programs are shown.
std::vector<std::int64_t> ModelProgramOrder(const ModelTables& tables, const RunOptions& options);

/// Performed commands and their counts, as the summary shows them.
using PerformCounts = std::vector<std::pair<std::string, std::string>>;
PerformCounts ModelPerformSummary(const ModelTables& tables);

/// The lines of the subroutines report and of the PERFORMed programs report, in its summary form
/// and in its verbose form on a page of `page_width`, below their headings.
std::vector<std::string> ModelSubroutines(const ModelTables& tables);
std::vector<std::string> ModelPerforms(const ModelTables& tables);
std::vector<std::string> ModelVerbosePerforms(const ModelTables& tables, std::int64_t page_width);

/// The lines of the keyboard script; `created` is the second line of its banner.
std::vector<std::string> ModelKeyScript(const ModelTables& tables, const RunOptions& options,
                                        const std::string& created);

}  // namespace ptick::model
