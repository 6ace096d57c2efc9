// Where a result goes, byte after byte.
#pragma once

#include <string>
#include <string_view>

namespace ptick::companion {

class ByteSink {
 public:
  ByteSink() = default;
  ByteSink(const ByteSink&) = delete;
  ByteSink& operator=(const ByteSink&) = delete;
  virtual ~ByteSink() = default;

  /// Takes the next bytes of the result. On a terminal those that would drive it are replaced; for
  /// this a call holds whole characters.
  virtual void Write(std::string_view bytes) = 0;

  /// Takes bytes of the program's own that a terminal is to obey, such as colours.
  virtual void WriteControl(std::string_view bytes) { Write(bytes); }
};

/// A result in memory.
class StringSink final : public ByteSink {
 public:
  void Write(std::string_view bytes) override { text_ += bytes; }

  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace ptick::companion
