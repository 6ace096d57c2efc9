#include "ptick_export/formats/plain_names.h"

#include <cstddef>

#include "companion/utf8.h"
#include "output/utf8.h"

namespace ptick::exports {

namespace {

constexpr std::string_view kEmptyName = "(empty)";

bool EndsLine(char32_t code) { return code == 0x2028 || code == 0x2029; }

bool IsControl(char32_t code) { return code < 0x20 || (code >= 0x7F && code < 0xA0); }

bool IsEscaped(char32_t code, const PlainNameRules& rules) {
  return code == '\\' || IsControl(code) || EndsLine(code) || (code == ';' && rules.semicolons) ||
         (code == '#' && rules.hash_signs);
}

void AppendEscaped(std::string& line, char32_t code) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  if (code == '\\') {
    line += "\\\\";
    return;
  }
  const bool is_short = code < 0x100;
  line += is_short ? "\\x" : "\\u";
  for (unsigned shift = is_short ? 8 : 16; shift > 0;) {
    shift -= 4;
    line += kDigits[(code >> shift) & 0xFU];
  }
}

bool IsPlain(char byte) {
  return byte >= 0x20 && byte < 0x7F && byte != '\\' && byte != ';' && byte != '#';
}

}  // namespace

void AppendPlainName(std::string& line, std::string_view name, const PlainNameRules& rules) {
  if (name.empty()) {
    line += kEmptyName;
    return;
  }
  if (name == kEmptyName || (rules.outer_blanks && name.front() == ' ')) {
    AppendEscaped(line, static_cast<unsigned char>(name.front()));
    name.remove_prefix(1);
  }
  const bool has_end_blank = rules.outer_blanks && !name.empty() && name.back() == ' ';
  if (has_end_blank) {
    name.remove_suffix(1);
  }
  while (!name.empty()) {
    if (IsPlain(name.front())) {
      line += name.front();
      name.remove_prefix(1);
      continue;
    }
    const DecodedCharacter character = DecodeCharacter(name);
    const char32_t code = character.code.value_or(0xFFFD);
    if (IsEscaped(code, rules)) {
      AppendEscaped(line, code);
    } else {
      companion::AppendCharacter(line, code);
    }
    name.remove_prefix(character.size);
  }
  if (has_end_blank) {
    AppendEscaped(line, ' ');
  }
}

}  // namespace ptick::exports
