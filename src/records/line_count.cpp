#include "records/line_count.h"

#include <cstddef>
#include <limits>

#include "records/line_ends.h"
#include "value/byte_buffer.h"

namespace ptick {

std::optional<std::uint64_t> CountLines(RecordReader& record) {
  constexpr std::size_t kBlock = std::size_t{64} * 1024;
  constexpr std::uint64_t kMax = std::numeric_limits<std::uint64_t>::max();
  ByteBuffer buffer(kBlock + kLineEndsPadding);
  std::uint64_t left = kMax;
  char last_byte = '\n';
  for (;;) {
    const std::optional<std::size_t> size = record.Read({buffer.data(), kBlock});
    if (!size) {
      return std::nullopt;
    }
    if (*size == 0) {
      return kMax - left + (last_byte != '\n' ? 1 : 0);
    }
    SkipLines(buffer.data(), buffer.data() + *size, left);
    last_byte = buffer.data()[*size - 1];
  }
}

}  // namespace ptick
