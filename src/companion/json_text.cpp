#include "companion/json_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "companion/terminal_text.h"
#include "companion/utf8.h"
#include "output/utf8.h"

namespace ptick::companion {

namespace {

// What follows the backslash in the short escape of an ASCII character, 0 where it has none.
char ShortEscape(char32_t code) {
  switch (code) {
    case '"':
      return '"';
    case '\\':
      return '\\';
    case '\b':
      return 'b';
    case '\f':
      return 'f';
    case '\n':
      return 'n';
    case '\r':
      return 'r';
    case '\t':
      return 't';
    default:
      return 0;
  }
}

void AppendUnit(std::string& json, char32_t unit) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  json += "\\u";
  for (const unsigned shift : {12U, 8U, 4U, 0U}) {
    json += kDigits[(unit >> shift) & 0xFU];
  }
}

void AppendEscaped(std::string& json, char32_t code) {
  if (const char escape = ShortEscape(code)) {
    json += '\\';
    json += escape;
  } else if (code < 0x10000) {
    AppendUnit(json, code);
  } else {
    const char32_t beyond = code - 0x10000;
    AppendUnit(json, 0xD800 + (beyond >> 10U));
    AppendUnit(json, 0xDC00 + (beyond & 0x3FFU));
  }
}

constexpr bool IsPlain(char byte) {
  return byte >= 0x20 && byte < 0x7F && byte != '"' && byte != '\\';
}

constexpr std::array<bool, 256> kPlain = [] {
  std::array<bool, 256> plain = {};
  for (std::size_t byte = 0; byte < 0x80; ++byte) {
    plain.at(byte) = IsPlain(static_cast<char>(byte));
  }
  return plain;
}();

std::size_t PlainPrefix(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && kPlain[static_cast<unsigned char>(text[at])]) {
    ++at;
  }
  return at;
}

bool IsDigit(char byte) { return byte >= '0' && byte <= '9'; }

// Takes the digits off the front; false when there are none.
bool TakeDigits(std::string_view& text) {
  const auto end = std::find_if_not(text.begin(), text.end(), IsDigit);
  const auto count = static_cast<std::size_t>(end - text.begin());
  text.remove_prefix(count);
  return count > 0;
}

}  // namespace

void AppendJsonText(std::string& json, std::string_view text) {
  json += '"';
  std::size_t plain = PlainPrefix(text);
  json += text.substr(0, plain);
  text.remove_prefix(plain);
  const bool is_utf8 = text.empty() || IsUtf8(text);
  while (!text.empty()) {
    DecodedCharacter character = {.code = static_cast<unsigned char>(text.front()), .size = 1};
    if (is_utf8) {
      character = DecodeCharacter(text);
    }
    const char32_t code = character.code.value_or(0);
    if (ShortEscape(code) != 0 || DrivesTerminal(code)) {
      AppendEscaped(json, code);
    } else {
      AppendCharacter(json, code);
    }
    text.remove_prefix(character.size);
    plain = PlainPrefix(text);
    json += text.substr(0, plain);
    text.remove_prefix(plain);
  }
  json += '"';
}

bool IsJsonNumber(std::string_view text) {
  if (text.starts_with('-')) {
    text.remove_prefix(1);
  }
  if (text.starts_with('0')) {
    text.remove_prefix(1);
  } else if (!TakeDigits(text)) {
    return false;
  }
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    if (!TakeDigits(text)) {
      return false;
    }
  }
  if (text.starts_with('e') || text.starts_with('E')) {
    text.remove_prefix(1);
    if (text.starts_with('+') || text.starts_with('-')) {
      text.remove_prefix(1);
    }
    if (!TakeDigits(text)) {
      return false;
    }
  }
  return text.empty();
}

}  // namespace ptick::companion
