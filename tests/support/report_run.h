#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "output/output.h"
#include "profile/tables/profile_tables.h"
#include "reports/run_options.h"
#include "support/memory_platform.h"
#include "value/field_list.h"

namespace ptick {

/// What a report left behind.
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
  Printed Run(const std::function<void(Output&)>& report);

  MemoryPlatform platform_;
  ProfileTables tables_;
  RunOptions options_;
};

FieldList Fields(std::initializer_list<std::string_view> texts);

/// A `Performs` entry.
struct PerformSample {
  std::string StartClock;
  std::string EndClock;
  std::string ticks;
  std::string UsrCpu;
  std::string SysCpu;
  std::string type;
  std::string command;
};
std::string MakePerform(const PerformSample& sample);

/// An entry with nothing but a command.
std::string MakePerform(std::string_view command);

}  // namespace ptick
