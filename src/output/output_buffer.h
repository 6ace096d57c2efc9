#pragma once

#include <cstddef>
#include <string_view>

#include "output/diagnostics.h"
#include "platform/console.h"
#include "value/byte_buffer.h"

namespace ptick {

/// What was printed on standard output and is not yet written. It is written when there is no room
/// for more, and when Flush asks for it.
///
/// A failed write drops the bytes, so that nothing is tried or said twice, prints "cannot write:
/// REASON" and throws Stop with kFailure. Where a reader has closed the pipe, Flush drops the bytes
/// quietly, so that a run that fails keeps its message and its status; making room for more, which
/// nobody will read, throws Stop with kSuccess.
class OutputBuffer {
 public:
  OutputBuffer(Console& console, Diagnostics& diagnostics)
      : console_(console), diagnostics_(diagnostics) {}

  /// Where the next byte goes, and how many fit there.
  char* End() { return bytes_.data() + used_; }
  std::size_t Room() const { return bytes_.size() - used_; }
  /// Takes what was laid out from End() up to `end`.
  void SetEnd(const char* end) { used_ = static_cast<std::size_t>(end - bytes_.data()); }

  /// Makes room for `size` bytes.
  void Reserve(std::size_t size);
  void Append(std::string_view text);
  /// The same for a text so long that it is not copied, but written at once where there is little
  /// room.
  void AppendMuch(std::string_view text);
  void Flush();

 private:
  /// Whether there is still a reader.
  bool WriteOut();
  bool Write(std::string_view bytes);

  Console& console_;
  Diagnostics& diagnostics_;
  ByteBuffer bytes_;
  std::size_t used_ = 0;
};

}  // namespace ptick
