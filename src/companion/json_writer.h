// Writes JSON as it comes, with memory for its nesting only.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "companion/byte_sink.h"
#include "companion/number_text.h"

namespace ptick::companion {

/// One JSON text, on one line but for the elements of arrays that have a line each.
///
/// Texts are bytes of any kind and become UTF-8; what would drive a terminal is escaped, so the
/// result is safe wherever it is shown. Values and keys are to come in an order that makes JSON:
/// a std::logic_error says where they do not.
class JsonWriter {
 public:
  enum class Elements { kInLine, kOnLinesOfTheirOwn };

  explicit JsonWriter(ByteSink& sink) : sink_(sink) {}
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;
  ~JsonWriter() = default;

  JsonWriter& BeginObject();
  JsonWriter& EndObject();
  JsonWriter& BeginArray(Elements elements = Elements::kInLine);
  JsonWriter& EndArray();
  /// The key of the value that follows.
  JsonWriter& Key(std::string_view key);

  JsonWriter& Text(std::string_view text);
  /// A floating number that is not finite is null.
  template <PlainNumber T>
  JsonWriter& Number(T number) {
    BeginValue();
    if (!AppendNumber(buffer_, number)) {
      buffer_ += "null";
    }
    EndValue();
    return *this;
  }
  /// A number by its digits, which JSON must know as a number: "12", "-0.5", "1e20".
  JsonWriter& NumberText(std::string_view digits);
  JsonWriter& Bool(bool value);
  JsonWriter& Null();

  /// Ends the text with a line end and hands all of it on.
  void Finish();

 private:
  /// An object or array that is not ended.
  struct Level {
    bool is_object;
    Elements elements;
    bool is_empty;
  };

  void BeginValue();
  void Begin(char bracket, Level level);
  void End(char bracket, bool is_object);
  void EndValue();

  ByteSink& sink_;
  std::string buffer_;
  std::vector<Level> levels_;
  bool is_after_key_ = false;
  bool is_whole_ = false;
};

}  // namespace ptick::companion
