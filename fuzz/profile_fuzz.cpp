// A single profile of any bytes, under every report, read in blocks of any size.

#include "fuzz/fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::FuzzInput input(data, size);
  ptick::MemoryPlatform platform;
  const std::uint8_t choice = input.TakeByte();
  platform.Arguments = {"ptick", std::string(ptick::kFuzzOptions.at(choice % 16)), "profile"};
  platform.OutputIsTerminal = (choice & 16U) != 0;
  platform.BlockSize = std::size_t{1} + input.TakeByte();
  const std::string profile = input.TakeRest();
  platform.Files["."]["profile"] = {profile};
  platform.Files["src"]["A"] = {profile};
  ptick::RunPtick(platform);
  return 0;
}
