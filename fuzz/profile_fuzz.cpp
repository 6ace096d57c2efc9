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
  platform.arguments = {"ptick", std::string(options), "profile"};
  platform.files["."]["profile"] = {profile};
  platform.files["src"]["A"] = {profile};
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
  torn.block_size = std::size_t{1} + input.TakeByte();
  torn.output_is_terminal = whole.output_is_terminal = (choice & 16U) != 0;
  const std::string profile = input.TakeRest();

  const int status = Report(options, profile, torn);
  Require(status >= 0 && status <= 2, "a report ends with 0, 1 or 2");
  Require(status == Report(options, profile, whole), "block sizes do not change the status");
  RequireEqual(whole.printed, torn.printed, "block sizes do not change the report");
  RequireEqual(whole.on_terminal, torn.on_terminal, "block sizes do not change the diagnostics");
  Require(whole.shell_runs == torn.shell_runs, "block sizes do not change the script");
  Require(!whole.output_is_terminal || IsPrintable(whole.printed),
          "a terminal gets no control bytes");
  return 0;
}
