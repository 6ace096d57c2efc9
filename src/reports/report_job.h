#pragma once

#include "output/output.h"
#include "parallel/thread_plan.h"
#include "platform/platform.h"
#include "profile/tables/profile_tables.h"
#include "reports/report_options.h"

namespace ptick {

/// What a report works on. A report may take out of the tables what it shows.
struct ReportJob {
  ProfileTables& tables;
  const ReportOptions& options;
  Platform& platform;
  Output& output;
  ThreadPlan threads = {};  ///< what is printed does not depend on it
};

}  // namespace ptick
