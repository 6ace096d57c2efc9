// A command line of any arguments, divided by zero bytes, among a few files and ports.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "output/stop.h"
#include "ptick/command_line.h"
#include "ptick/driver.h"
#include "ptick/usage.h"
#include "support/memory_platform.h"

namespace {

using ptick::MemoryPlatform;
using ptick::fuzz::Require;

constexpr std::string_view kProfile = "PROFILE:ticks\t3\nPROFILE:trace\tA\t1\t1\n";

// Directory names as a list of source files holds them.
std::string SourceNames(int count) {
  std::string names;
  for (int i = 0; i < count; ++i) {
    names += "src\n";
  }
  return names;
}

void Furnish(const std::vector<std::string>& arguments, MemoryPlatform& platform) {
  platform.arguments = arguments;
  platform.files["."] = {{"p", {std::string(kProfile)}},       {"bad", {"PROFILE:bogus\t1\n"}},
                         {"ptick_0", {std::string(kProfile)}}, {"list", {"src\n.\nnone\n"}},
                         {"many", {SourceNames(499)}},         {"all", {SourceNames(500)}},
                         {"more", {SourceNames(501)}}};
  platform.files["src"] = {{"A", {"LINE ONE\n"}}};
  platform.port_results = {{5, 0}, {7, 11}, {8, 300}};
}

std::string UsageText() {
  MemoryPlatform platform;
  ptick::Output output(platform, "ptick");
  ptick::PrintUsage(output);
  return platform.on_terminal;
}

bool SwitchedMonitor(const MemoryPlatform& platform) {
  return std::ranges::any_of(platform.port_calls,
                             [](const std::string& call) { return call.starts_with('o'); });
}

void CheckEnd(int status, const MemoryPlatform& platform) {
  static const std::string usage = UsageText();
  static const std::string invalid = "Invalid argument\n" + usage;
  const bool switched = SwitchedMonitor(platform);
  Require(status >= 0 && status <= (switched ? 255 : 2), "the status is one of those that are");
  if (platform.on_terminal.ends_with(invalid)) {
    Require(status == 1, "an invalid argument ends with 1");
  } else if (platform.on_terminal.ends_with(usage)) {
    Require(status == 0, "the usage text that was asked for ends with 0");
  } else {
    Require(platform.on_terminal.find(usage) == std::string::npos, "the usage text comes last");
    return;
  }
  Require(platform.printed.empty(), "the usage text is all there is");
}

void CheckSideEffects(int status, const MemoryPlatform& platform) {
  const bool switched = SwitchedMonitor(platform);
  if (!platform.port_calls.empty() && !switched) {
    Require(status == 0 && platform.on_terminal.empty() && platform.opened_files.empty(),
            "messages are sent and nothing else is done");
  }
  Require(!switched || platform.port_calls.size() == 1, "the monitor is switched once");
  Require(platform.shell_runs.size() <= 1, "one script is written");
  if (switched) {
    Require(platform.shell_runs.empty() && platform.commands_run.empty(),
            "switching the monitor is all there is");
  }
}

// The options of the same command line, when it is not one of the control forms.
void CheckOptions(const std::vector<std::string>& command_line) {
  MemoryPlatform platform;
  Furnish(command_line, platform);
  ptick::Output output(platform, "ptick");
  const std::vector<std::string> arguments = ptick::CommandArguments(command_line);
  try {
    const ptick::RunOptions options = ptick::ParseCommandLine(arguments, platform, output);
    Require(options.SourceFiles.size() <= 500, "at most 500 source files are open");
    Require(options.ProfileList.size() <= arguments.size(), "a name is an argument");
    for (const ptick::SourceFile& source : options.SourceFiles) {
      Require(source.file != nullptr && platform.files.contains(source.name),
              "source files are those there are");
    }
    for (const std::string& name : options.ProfileList) {
      Require(!name.starts_with('-') && std::ranges::find(arguments, name) != arguments.end(),
              "profiles are arguments as they were given");
    }
    Require(!platform.on_terminal.ends_with(UsageText()), "the usage text ends the run");
  } catch (const ptick::Stop& stop) {
    Require(stop.status == 0 || stop.status == 1, "a command line is refused with 0 or 1");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  std::vector<std::string> command_line = {"ptick"};
  while (!input.Empty()) {
    command_line.push_back(input.TakeUpTo('\0'));
  }
  MemoryPlatform platform;
  Furnish(command_line, platform);
  const int status = ptick::RunPtick(platform);
  CheckEnd(status, platform);
  CheckSideEffects(status, platform);
  CheckOptions(command_line);
  return 0;
}
