#include "output/output_buffer.h"

#include <algorithm>
#include <system_error>

#include "output/stop.h"

namespace ptick {

namespace {

constexpr std::size_t kUsualSize = std::size_t{256} * 1024;

}  // namespace

void OutputBuffer::Reserve(std::size_t size) {
  if (Room() >= size) {
    return;
  }
  if (!WriteOut()) {
    throw Stop{kSuccess};
  }
  if (bytes_.size() < size) {
    bytes_.Grow(std::max(size, kUsualSize), 0);
  }
}

void OutputBuffer::Append(std::string_view text) {
  Reserve(text.size());
  SetEnd(std::ranges::copy(text, End()).out);
}

void OutputBuffer::AppendMuch(std::string_view text) {
  if (Room() >= text.size()) {
    Append(text);
  } else if (!WriteOut() || !Write(text)) {
    throw Stop{kSuccess};
  }
}

void OutputBuffer::Flush() { WriteOut(); }

bool OutputBuffer::WriteOut() {
  if (used_ == 0) {
    return true;
  }
  const std::string_view bytes(bytes_.data(), used_);
  used_ = 0;
  return Write(bytes);
}

bool OutputBuffer::Write(std::string_view bytes) {
  const int error = console_.Write(Stream::kOutput, bytes);
  if (error == 0) {
    return true;
  }
  if (error == static_cast<int>(std::errc::broken_pipe)) {
    return false;
  }
  diagnostics_.PrintMessage("cannot write: " + std::generic_category().message(error));
  throw Stop{kFailure};
}

}  // namespace ptick
