#include "bench_texts.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <span>

#include "generator/profile_writer.h"
#include "records/line_blocks.h"

namespace ptick::bench {

namespace {

class TextReader final : public RecordReader {
 public:
  explicit TextReader(std::string_view text) : rest_(text) {}

  std::optional<std::size_t> Read(std::span<char> block) override {
    const std::size_t size = rest_.copy(block.data(), block.size());
    rest_.remove_prefix(size);
    return size;
  }

 private:
  std::string_view rest_;
};

std::string GeneratedProfile(const GenerateOptions& options, std::uint32_t file) {
  const std::filesystem::path path =
      std::filesystem::temp_directory_path() / ("ptick_bench_text." + std::to_string(getpid()));
  WriteProfile(options, file, path);
  std::string text(std::filesystem::file_size(path), '\0');
  std::ifstream(path, std::ios::binary).read(text.data(), std::ssize(text));
  std::filesystem::remove(path);
  return text;
}

}  // namespace

BenchText::BenchText(Records kind, TraceKeys keys, std::uint32_t file) {
  GenerateOptions options;
  options.kind = kind;
  options.keys = keys;
  options.lines = kBenchLines;
  padded_ = GeneratedProfile(options, file);
  size_ = padded_.size();
  padded_.append(kBlockPadding, '\0');
}

std::unique_ptr<RecordReader> RecordOfText(std::string_view text) {
  return std::make_unique<TextReader>(text);
}

}  // namespace ptick::bench
