// Writes big profiles to measure with: --help says what can be asked for.

#include <cstddef>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "generator/options.h"
#include "generator/profile_writer.h"

namespace {

void Generate(const ptick::bench::GenerateOptions& options) {
  for (std::uint32_t file = 0; file < options.files; ++file) {
    std::filesystem::path path = options.file;
    if (options.files > 1) {
      path += '.';
      path += std::to_string(file + 1);
    }
    ptick::bench::WriteProfile(options, file, path);
  }
  if (options.sources) {
    ptick::bench::WriteSources(options, *options.sources);
  }
}

}  // namespace

int main(int argc, char** argv) {
  const std::span<const char* const> arguments(argv + 1, static_cast<std::size_t>(argc - 1));
  if (!arguments.empty() && std::string_view(arguments.front()) == "--help") {
    std::cout << ptick::bench::kGenerateUsage;
    return 0;
  }
  try {
    Generate(ptick::bench::ParseGenerateOptions(arguments));
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "generate_profile: " << failure.what() << "\n";
    return 1;
  }
}
