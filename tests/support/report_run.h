#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"
#include "profile/tables/profile_tables.h"
#include "ptick/run_options.h"
#include "reports/report_job.h"
#include "support/memory_platform.h"

namespace ptick {

/// What a report printed, and how it ended.
struct Printed {
  std::string lines;     ///< on standard output
  std::string terminal;  ///< diagnostics
  std::optional<int> stopped;
};

/// Base of the report tests: tables and options filled by hand, a platform in memory.
class ReportTest : public ::testing::Test {
 protected:
  ReportTest();

  /// Runs a report to its end, early or not.
  Printed Run(const std::function<void(const ReportJob&)>& report);

  MemoryPlatform platform_;
  ProfileTables tables_;
  RunOptions options_;
};

NameList Names(std::initializer_list<std::string_view> texts);

/// A PERFORM in texts.
struct PerformSample {
  std::string start_clock;
  std::string end_clock;
  std::string ticks;
  std::string usr_cpu;
  std::string sys_cpu;
  std::string type;
  std::string command;
};

/// One with nothing but a command.
PerformSample MakePerform(std::string_view command);

PerformTable Performs(const std::vector<PerformSample>& samples);

/// Calls of subroutines, in order of arrival.
struct CallSample {
  std::string_view times;
  std::string_view called;
};
SubroutineTable Subroutines(std::initializer_list<CallSample> samples);

}  // namespace ptick
