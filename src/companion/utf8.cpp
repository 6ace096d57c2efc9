#include "companion/utf8.h"

#include <cstdint>
#include <cstring>

#include "output/utf8.h"

namespace ptick::companion {

std::size_t AsciiPrefix(std::string_view text) {
  constexpr std::uint64_t kHighBits = 0x8080808080808080U;
  std::size_t at = 0;
  for (std::uint64_t word = 0; at + sizeof word <= text.size(); at += sizeof word) {
    std::memcpy(&word, text.data() + at, sizeof word);
    if ((word & kHighBits) != 0) {
      break;
    }
  }
  while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) {
    ++at;
  }
  return at;
}

bool IsUtf8(std::string_view text) {
  while (true) {
    text.remove_prefix(AsciiPrefix(text));
    if (text.empty()) {
      return true;
    }
    const DecodedCharacter character = DecodeCharacter(text);
    if (!character.code) {
      return false;
    }
    text.remove_prefix(character.size);
  }
}

void AppendCharacter(std::string& utf8, char32_t code) {
  const auto append = [&utf8](char32_t byte) { utf8 += static_cast<char>(byte); };
  const auto append_rest = [&append, code](unsigned shift) {
    append(0x80U | (code >> shift & 0x3FU));
  };
  if (code < 0x80) {
    append(code);
  } else if (code < 0x800) {
    append(0xC0U | code >> 6U);
    append_rest(0);
  } else if (code < 0x10000) {
    append(0xE0U | code >> 12U);
    append_rest(6);
    append_rest(0);
  } else {
    append(0xF0U | code >> 18U);
    append_rest(12);
    append_rest(6);
    append_rest(0);
  }
}

void AppendUtf8(std::string& utf8, std::string_view text) {
  if (IsUtf8(text)) {
    utf8 += text;
    return;
  }
  for (const char byte : text) {
    AppendCharacter(utf8, static_cast<unsigned char>(byte));
  }
}

std::string ToUtf8(std::string_view text) {
  std::string utf8;
  AppendUtf8(utf8, text);
  return utf8;
}

}  // namespace ptick::companion
