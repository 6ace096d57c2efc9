#include "output/utf8.h"

#include <algorithm>
#include <array>

namespace ptick {

namespace {

/// The well-formed sequences by their first byte, which holds all but `rest` * 6 bits of the code.
/// The second byte is the only one whose range is not always 80 to BF: overlong forms, surrogates
/// and codes beyond 10FFFF are thus left out.
struct Form {
  unsigned char first;
  unsigned char last;
  std::size_t rest;
  unsigned char second_first;
  unsigned char second_last;
};

constexpr std::array<Form, 9> kForms = {{{0x00, 0x7F, 0, 0x80, 0xBF},
                                         {0xC2, 0xDF, 1, 0x80, 0xBF},
                                         {0xE0, 0xE0, 2, 0xA0, 0xBF},
                                         {0xE1, 0xEC, 2, 0x80, 0xBF},
                                         {0xED, 0xED, 2, 0x80, 0x9F},
                                         {0xEE, 0xEF, 2, 0x80, 0xBF},
                                         {0xF0, 0xF0, 3, 0x90, 0xBF},
                                         {0xF1, 0xF3, 3, 0x80, 0xBF},
                                         {0xF4, 0xF4, 3, 0x80, 0x8F}}};

constexpr DecodedCharacter kIllFormed = {std::nullopt, 1};

unsigned char ByteOf(char c) { return static_cast<unsigned char>(c); }

// How many bits of the first byte belong to the code, as a mask.
char32_t FirstBits(std::size_t rest) { return rest == 0 ? 0x7F : 0x3FU >> rest; }

}  // namespace

DecodedCharacter DecodeCharacter(std::string_view text) {
  const unsigned char lead = ByteOf(text[0]);
  const auto* const form = std::ranges::find_if(
      kForms, [lead](const Form& each) { return lead >= each.first && lead <= each.last; });
  if (form == kForms.end() || text.size() <= form->rest) {
    return kIllFormed;
  }
  char32_t code = lead & FirstBits(form->rest);
  for (std::size_t i = 1; i <= form->rest; ++i) {
    const unsigned char byte = ByteOf(text[i]);
    const unsigned char least = i == 1 ? form->second_first : 0x80;
    const unsigned char most = i == 1 ? form->second_last : 0xBF;
    if (byte < least || byte > most) {
      return kIllFormed;
    }
    code = code << 6U | (byte & 0x3FU);
  }
  return {code, form->rest + 1};
}

}  // namespace ptick
