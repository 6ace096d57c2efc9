#include "generator/text_file.h"

#include <ios>
#include <stdexcept>

namespace ptick::bench {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 20U;

}  // namespace

TextFile::TextFile(const std::filesystem::path& path)
    : path_(path), file_(path, std::ios::binary), buffer_(kBufferSize, '\0') {
  if (!file_) {
    throw std::runtime_error("cannot open " + path.string());
  }
}

void TextFile::Flush() {
  file_.write(buffer_.data(), static_cast<std::streamsize>(used_));
  used_ = 0;
}

void TextFile::Close() {
  Flush();
  file_.close();
  if (!file_) {
    throw std::runtime_error("cannot write " + path_.string());
  }
}

}  // namespace ptick::bench
