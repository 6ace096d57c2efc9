// Compresses bytes as they come, as gzip does.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "companion/byte_sink.h"

struct z_stream_s;

namespace ptick::exports {

/// The same bytes give the same result: there is no time and no name in it.
class GzipWriter {
 public:
  /// Throws std::bad_alloc.
  explicit GzipWriter(companion::ByteSink& sink);
  GzipWriter(const GzipWriter&) = delete;
  GzipWriter& operator=(const GzipWriter&) = delete;
  ~GzipWriter();

  void Write(std::string_view bytes);
  /// Writes what is still to be written. To be called once, at the end.
  void Finish();

 private:
  void Deflate(std::string_view bytes, int flush);

  companion::ByteSink& sink_;
  std::unique_ptr<z_stream_s> stream_;
  std::string room_;
};

}  // namespace ptick::exports
