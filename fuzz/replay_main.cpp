// Replays a folder of inputs through a fuzz target; fails when there are none. The name printed
// last is that of the input that failed.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int argc, char** argv) {
  std::size_t replayed = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::cout << entry.path().filename().string() << std::endl;
      std::ifstream file(entry.path(), std::ios::binary);
      std::string input(entry.file_size(), '\0');
      file.read(input.data(), static_cast<std::streamsize>(input.size()));
      // NOLINTNEXTLINE(*-reinterpret-cast)
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
      ++replayed;
    }
  }
  return replayed == 0 ? 1 : 0;
}
