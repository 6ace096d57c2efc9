#include "companion/json_writer.h"

#include <cstddef>
#include <stdexcept>

#include "companion/json_text.h"

namespace ptick::companion {

namespace {

constexpr std::size_t kBufferSize = std::size_t{1} << 16;

}  // namespace

void JsonWriter::BeginValue() {
  if (is_whole_) {
    throw std::logic_error("JSON: a value after the end");
  }
  if (is_after_key_) {
    is_after_key_ = false;
    return;
  }
  if (levels_.empty()) {
    return;
  }
  Level& level = levels_.back();
  if (level.is_object) {
    throw std::logic_error("JSON: a value without a key");
  }
  if (!level.is_empty) {
    buffer_ += ',';
  }
  if (level.elements == Elements::kOnLinesOfTheirOwn) {
    buffer_ += '\n';
  }
  level.is_empty = false;
}

void JsonWriter::EndValue() {
  is_whole_ = levels_.empty();
  if (buffer_.size() >= kBufferSize) {
    sink_.Write(buffer_);
    buffer_.clear();
  }
}

void JsonWriter::Begin(char bracket, Level level) {
  BeginValue();
  buffer_ += bracket;
  levels_.push_back(level);
}

void JsonWriter::End(char bracket, bool is_object) {
  if (levels_.empty() || levels_.back().is_object != is_object || is_after_key_) {
    throw std::logic_error("JSON: an end without its beginning or value");
  }
  const Level level = levels_.back();
  levels_.pop_back();
  if (level.elements == Elements::kOnLinesOfTheirOwn && !level.is_empty) {
    buffer_ += '\n';
  }
  buffer_ += bracket;
  EndValue();
}

JsonWriter& JsonWriter::BeginObject() {
  Begin('{', {.is_object = true, .elements = Elements::kInLine, .is_empty = true});
  return *this;
}

JsonWriter& JsonWriter::EndObject() {
  End('}', true);
  return *this;
}

JsonWriter& JsonWriter::BeginArray(Elements elements) {
  Begin('[', {.is_object = false, .elements = elements, .is_empty = true});
  return *this;
}

JsonWriter& JsonWriter::EndArray() {
  End(']', false);
  return *this;
}

JsonWriter& JsonWriter::Key(std::string_view key) {
  if (levels_.empty() || !levels_.back().is_object || is_after_key_) {
    throw std::logic_error("JSON: a key outside an object");
  }
  if (!levels_.back().is_empty) {
    buffer_ += ',';
  }
  levels_.back().is_empty = false;
  AppendJsonText(buffer_, key);
  buffer_ += ':';
  is_after_key_ = true;
  return *this;
}

JsonWriter& JsonWriter::Text(std::string_view text) {
  BeginValue();
  AppendJsonText(buffer_, text);
  EndValue();
  return *this;
}

JsonWriter& JsonWriter::NumberText(std::string_view digits) {
  if (!IsJsonNumber(digits)) {
    throw std::logic_error("JSON: no number: " + std::string(digits));
  }
  BeginValue();
  buffer_ += digits;
  EndValue();
  return *this;
}

JsonWriter& JsonWriter::Bool(bool value) {
  BeginValue();
  buffer_ += value ? "true" : "false";
  EndValue();
  return *this;
}

JsonWriter& JsonWriter::Null() {
  BeginValue();
  buffer_ += "null";
  EndValue();
  return *this;
}

void JsonWriter::Finish() {
  if (!is_whole_) {
    throw std::logic_error("JSON: the end is missing");
  }
  buffer_ += '\n';
  sink_.Write(buffer_);
  buffer_.clear();
}

}  // namespace ptick::companion
