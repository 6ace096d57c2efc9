// A single profile of any bytes, under every report. What is printed does not depend on the sizes
// of the blocks that the profile is read in.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "fuzz/require.h"
#include "ptick/driver.h"
#include "support/memory_platform.h"

namespace {

using ptick::MemoryPlatform;
using ptick::fuzz::Require;
using ptick::fuzz::RequireEqual;

// Options that each choose another way through the program.
constexpr std::array<std::string_view, 16> kOptions = {
    "-",  "-n",  "-nu", "-nui", "-i",  "-a",     "-p",      "-pv",
    "-o", "-ov", "-s",  "-A",   "-Av", "-kkeys", "-tkkeys", "-fsrc"};

int Report(std::string_view options, const std::string& profile, MemoryPlatform& platform) {
  platform.Arguments = {"ptick", std::string(options), "profile"};
  platform.Files["."]["profile"] = {profile};
  platform.Files["src"]["A"] = {profile};
  return ptick::RunPtick(platform);
}

bool IsPrintable(std::string_view text) {
  return std::ranges::all_of(text, [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte >= 32 || c == '\n') && byte != 127;
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::fuzz::FuzzInput input(data, size);
  const std::uint8_t choice = input.TakeByte();
  const std::string_view options = kOptions.at(choice % kOptions.size());
  MemoryPlatform torn;
  MemoryPlatform whole;
  torn.BlockSize = std::size_t{1} + input.TakeByte();
  torn.OutputIsTerminal = whole.OutputIsTerminal = (choice & 16U) != 0;
  const std::string profile = input.TakeRest();

  const int status = Report(options, profile, torn);
  Require(status >= 0 && status <= 2, "a report ends with 0, 1 or 2");
  Require(status == Report(options, profile, whole), "block sizes do not change the status");
  RequireEqual(whole.Output, torn.Output, "block sizes do not change the report");
  RequireEqual(whole.Terminal, torn.Terminal, "block sizes do not change the diagnostics");
  Require(whole.ShellRuns == torn.ShellRuns, "block sizes do not change the script");
  Require(!whole.OutputIsTerminal || IsPrintable(whole.Output), "a terminal gets no control bytes");
  return 0;
}
