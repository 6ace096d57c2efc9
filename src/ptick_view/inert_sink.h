// JSON that does no harm inside a page.
#pragma once

#include <cstddef>
#include <string_view>

#include "companion/byte_sink.h"

namespace ptick::view {

/// Hands JSON on with every "<", which is only in its texts, written as "\u003c": nothing in it can
/// end the element that it is in, or begin a comment. JsonWriter escapes the rest that a page is
/// told to escape.
class InertSink final : public companion::ByteSink {
 public:
  explicit InertSink(companion::ByteSink& sink) : sink_(sink) {}

  void Write(std::string_view bytes) override {
    for (std::size_t at = bytes.find('<'); at != std::string_view::npos; at = bytes.find('<')) {
      sink_.Write(bytes.substr(0, at));
      sink_.Write("\\u003c");
      bytes.remove_prefix(at + 1);
    }
    sink_.Write(bytes);
  }

 private:
  companion::ByteSink& sink_;
};

}  // namespace ptick::view
