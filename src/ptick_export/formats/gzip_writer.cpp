#include "ptick_export/formats/gzip_writer.h"

#include <zlib.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <stdexcept>

namespace ptick::exports {

namespace {

constexpr std::size_t kRoom = std::size_t{1} << 16U;
// Fast: the bytes of a profile are so alike that they become few all the same.
constexpr int kLevel = 1;
// Windows of 2^15 bytes, and 16 for a gzip head.
constexpr int kWindowBits = 15 + 16;
constexpr int kMemoryLevel = 8;

}  // namespace

GzipWriter::GzipWriter(companion::ByteSink& sink)
    : sink_(sink), stream_(std::make_unique<z_stream_s>()), room_(kRoom, '\0') {
  if (::deflateInit2(stream_.get(), kLevel, Z_DEFLATED, kWindowBits, kMemoryLevel,
                     Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::bad_alloc();
  }
}

GzipWriter::~GzipWriter() { ::deflateEnd(stream_.get()); }

void GzipWriter::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t size = std::min<std::size_t>(bytes.size(), std::numeric_limits<uInt>::max());
    Deflate(bytes.substr(0, size), Z_NO_FLUSH);
    bytes.remove_prefix(size);
  }
}

void GzipWriter::Finish() { Deflate({}, Z_FINISH); }

void GzipWriter::Deflate(std::string_view bytes, int flush) {
  // zlib reads them only.
  stream_->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));  // NOLINT(*-cast)
  stream_->avail_in = static_cast<uInt>(bytes.size());
  do {
    stream_->next_out = reinterpret_cast<Bytef*>(room_.data());  // NOLINT(*-reinterpret-cast)
    stream_->avail_out = static_cast<uInt>(room_.size());
    if (::deflate(stream_.get(), flush) == Z_STREAM_ERROR) {
      throw std::logic_error("zlib: a stream in disorder");
    }
    sink_.Write({room_.data(), room_.size() - stream_->avail_out});
  } while (stream_->avail_out == 0);
}

}  // namespace ptick::exports
