// A command line of any arguments, divided by zero bytes, among a few files and ports.

#include "fuzz/fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::FuzzInput input(data, size);
  ptick::MemoryPlatform platform;
  while (!input.Empty()) {
    platform.Arguments.push_back(input.TakeUpTo('\0'));
  }
  const std::string profile = "PROFILE:ticks\t3\nPROFILE:trace\tA\t1\t1\n";
  platform.Files["."] = {{"p", {profile}}, {"ptick_0", {profile}}, {"list", {"src\n.\nnone\n"}}};
  platform.Files["src"] = {{"A", {"LINE ONE\n"}}};
  platform.Listening = {5, 7};
  platform.PortErrors = {{5, 0}, {7, 11}};
  ptick::RunPtick(platform);
  return 0;
}
