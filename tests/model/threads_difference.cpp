#include "model/threads_difference.h"

#include "model/line_difference.h"
#include "ptick/driver.h"

namespace ptick::model {

namespace {

// All that a run leaves.
std::string Outcome(const ThreadsRun& run, const ThreadPlan& plan) {
  MemoryPlatform platform;
  platform.block_size = plan.block_size;
  platform.arguments = {"ptick"};
  platform.arguments.insert(platform.arguments.end(), run.options.begin(), run.options.end());
  for (const MemoryPlatform::Record& profile : run.profiles) {
    const std::string name = "run" + std::to_string(platform.files["."].size() + 1);
    platform.files["."][name] = profile;
    platform.arguments.push_back(name);
  }
  platform.files["src"]["A"] = {"FIRST\nSECOND  LINE\n"};
  const int status = RunPtick(platform, plan);
  std::string outcome = platform.printed + "\nstatus: " + std::to_string(status) + "\n";
  outcome += platform.on_terminal;
  for (const MemoryPlatform::ShellRun& shell : platform.shell_runs) {
    outcome += "\n" + shell.command_line + "\n" + shell.input;
  }
  return outcome;
}

}  // namespace

std::string ThreadsDifference(const ThreadsRun& run, const ThreadPlan& plan) {
  const std::string difference = FirstDifference(Outcome(run, {}), Outcome(run, plan));
  return difference.empty() ? "" : PlanText(plan) + difference;
}

std::string PlanText(const ThreadPlan& plan) {
  return "threads " + std::to_string(plan.threads) + ", alone " + std::to_string(plan.bytes_alone) +
         ", blocks " + std::to_string(plan.block_size) + ", ranges " +
         std::to_string(plan.smallest_range) + " to " + std::to_string(plan.largest_range) +
         ", names " + std::to_string(plan.merge_names) + ", rows alone " +
         std::to_string(plan.rows_alone) + ", batches " + std::to_string(plan.batch_rows) + "\n";
}

}  // namespace ptick::model
