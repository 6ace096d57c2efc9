// Several profiles of any bytes, divided by zero bytes, merged.

#include "fuzz/fuzz_run.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ptick::FuzzInput input(data, size);
  ptick::MemoryPlatform platform;
  platform.Arguments = {"ptick", std::string(ptick::kFuzzOptions.at(input.TakeByte() % 16))};
  for (int i = 0; i < 8 && (i < 2 || !input.Empty()); ++i) {
    const std::string name = "run" + std::to_string(i);
    platform.Arguments.push_back(name);
    platform.Files["."][name] = {input.TakeUpTo('\0')};
  }
  ptick::RunPtick(platform);
  return 0;
}
