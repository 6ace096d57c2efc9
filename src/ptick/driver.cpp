#include "ptick/driver.h"

#include <algorithm>
#include <new>
#include <string>
#include <string_view>
#include <vector>

#include "output/output.h"
#include "output/stop.h"
#include "parallel/thread_plan.h"
#include "portctl/control_message.h"
#include "portctl/monitor_switch.h"
#include "ptick/command_line.h"
#include "ptick/profile_list.h"
#include "ptick/report_table.h"

namespace ptick {

namespace {

constexpr std::string_view kProgramName = "ptick";

int RunSteps(Platform& platform, const ThreadPlan& threads, Output& output) {
  const std::vector<std::string> arguments = CommandArguments(platform.CommandLine());
  const ControlCall call = SplitControlCall(arguments);
  if (SendControlMessages(call, platform, output)) {
    return 0;
  }
  const RunOptions options = ParseCommandLine(arguments, platform, output);
  if (options.MonitorOption) {
    return SwitchMonitor(call, platform.OwnPort(), platform, output);
  }
  ProfileTables tables;
  LoadProfileList(options, threads, platform, output, tables);
  PrintChosenReport(options, {tables, options, platform, output, threads});
  return 0;
}

// A run that goes on after a failure keeps it in mind.
int EndStatus(int status, const Output& output) {
  return status != kSuccess ? status : output.EndStatus();
}

// What was printed before a stop still goes out; that may fail, and then its status counts.
int CloseAfter(const Stop& stop, Output& output) {
  try {
    output.Close();
    return EndStatus(stop.status, output);
  } catch (const Stop& failed_close) {
    return failed_close.status;
  }
}

int RunToAnEnd(Platform& platform, const ThreadPlan& threads, Output& output) {
  try {
    const int status = RunSteps(platform, threads, output);
    output.Finish();
    return EndStatus(status, output);
  } catch (const Stop& stop) {
    return CloseAfter(stop, output);
  }
}

// Needs no memory itself. What was printed before goes out if it can; the status tells of a failure
// already.
int StopOutOfMemory(Platform& platform, Output& output) {
  try {
    output.Close();
  } catch (const Stop&) {            // NOLINT(bugprone-empty-catch)
  } catch (const std::bad_alloc&) {  // NOLINT(bugprone-empty-catch)
  }
  platform.Write(Stream::kDiagnostics, "ptick: out of memory\n");
  return 1;
}

}  // namespace

int RunPtick(Platform& platform) {
  return RunPtick(platform, {.threads = std::min(platform.Processors(), kMaxThreads)});
}

int RunPtick(Platform& platform, const ThreadPlan& threads) {
  Output output(platform, kProgramName);
  try {
    return RunToAnEnd(platform, threads, output);
  } catch (const std::bad_alloc&) {
    return StopOutOfMemory(platform, output);
  }
}

}  // namespace ptick
