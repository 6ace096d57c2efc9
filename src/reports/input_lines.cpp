#include "reports/input_lines.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "figures/clock_time.h"
#include "profile/scan/ordinary_number.h"
#include "value/arithmetic.h"
#include "value/text.h"

namespace ptick {

namespace {

constexpr std::string_view kPause = "SLEEP ";
constexpr std::string_view kDelay = "TYPEDELAY ";
constexpr std::string_view kInput = "INPUT \"";
constexpr std::string_view kNoReturn = " NOCR";

/// A byte may become a tilde and three digits.
constexpr std::size_t kMaxEscape = 4;

/// What the lines of an input take, but for the escaped text.
constexpr std::size_t kMaxAround = kPause.size() + SecondsText::kMaxSize + 1 + kDelay.size() +
                                   SecondsText::kMaxSize + 1 + kInput.size() + kMaxEscape + 1 +
                                   kNoReturn.size() + 1;

/// How an input ended: what the ending character adds to the text and to the replay line.
struct LineEnding {
  std::string typed;
  std::string_view suffix;
};

LineEnding EndingOf(const Value& code) {
  if (code == 0 || code.Empty()) {
    return {"", kNoReturn};
  }
  if (code == '\n' || code == '\r') {
    return {"", ""};
  }
  return {Char(code), kNoReturn};
}

char* PutText(std::string_view text, char* at) { return std::ranges::copy(text, at).out; }

char* PutEscaped(char c, char* at) {
  const auto code = static_cast<unsigned char>(c);
  if (c == '"' || c == '~') {
    *at++ = '~';
  } else if (code < 32 || code > 126) {
    *at++ = '~';
    *at++ = static_cast<char>('0' + code / 100);
    *at++ = static_cast<char>('0' + code / 10 % 10);
    *at++ = static_cast<char>('0' + code % 10);
    return at;
  }
  *at++ = c;
  return at;
}

char* PutEscaped(std::string_view text, char* at) {
  for (const char c : text) {
    at = PutEscaped(c, at);
  }
  return at;
}

void AppendInputLine(std::string_view text, const LineEnding& ending, std::string& lines) {
  std::string escaped(kMaxEscape * (text.size() + ending.typed.size()), '\0');
  const char* const end = PutEscaped(ending.typed, PutEscaped(text, escaped.data()));
  escaped.resize(static_cast<std::size_t>(end - escaped.data()));
  lines.append(kInput).append(escaped).append("\"").append(ending.suffix).append("\n");
}

// The same for a code that is an ordinary number.
char* PutInputLine(std::string_view text, std::uint32_t code, char* at) {
  at = PutEscaped(text, PutText(kInput, at));
  if (code == '\n' || code == '\r') {
    return PutText("\"\n", at);
  }
  if (code != 0) {
    at = PutEscaped(static_cast<char>(code % 256), at);
  }
  return PutText("\" NOCR\n", at);
}

}  // namespace

void InputLines::AppendAll(const KeyboardInputs& inputs, std::string& lines) {
  // As much as they can take: what is not used is never touched.
  lines.reserve(lines.size() + inputs.Count() * kMaxAround + inputs.TextSize() * kMaxEscape);
  auto setting = inputs.ClockSettings().begin();
  for (std::size_t n = 0; n < inputs.Count(); ++n) {
    for (; setting != inputs.ClockSettings().end() && setting->inputs_before == n; ++setting) {
      Set(*setting);
    }
    if (!AppendOrdinary(inputs, n, lines)) {
      Append(inputs[n], lines);
    }
  }
}

void InputLines::Set(const ClockSetting& setting) {
  if (setting.kind == ClockSetting::Kind::kStartClock) {
    SetLastClock(setting.value);
  } else if (setting.value.empty()) {
    hertz_.reset();
  } else {
    hertz_ = Value(setting.value).AsNumber();
    seconds_ = SecondsText(*hertz_);
  }
}

void InputLines::SetLastClock(std::string_view clock) {
  ordinary_last_clock_ = ParseOrdinary(clock);
  last_clock_ = clock;
}

// Nearly all inputs are ordinary; Append knows all rules.
bool InputLines::AppendOrdinary(const KeyboardInputs& inputs, std::size_t n, std::string& lines) {
  constexpr std::size_t kMaxText = 200;
  const std::optional<std::array<std::uint32_t, 4>> numbers = inputs.OrdinaryNumbers(n);
  const std::string_view text = inputs.Text(n);
  if (!numbers || text.size() > kMaxText || (hertz_ && !HasOrdinaryClock())) {
    return false;
  }
  std::array<char, kMaxAround + kMaxEscape * kMaxText> piece;  // NOLINT(*-member-init)
  char* at = piece.data();
  if (hertz_) {
    at = PutTimes(*numbers, at);
  }
  at = PutInputLine(text, numbers->front(), at);
  lines.append(piece.data(), static_cast<std::size_t>(at - piece.data()));
  return true;
}

char* InputLines::PutTimes(const std::array<std::uint32_t, 4>& numbers, char* at) {
  const auto [code, characters, start, end] = numbers;
  const std::uint32_t last = *ordinary_last_clock_;
  if (last != 0 && start > last) {
    at = seconds_.Put(std::int64_t{start} - last, PutText(kPause, at));
    *at++ = '\n';
  }
  ordinary_last_clock_ = end;
  const std::uint32_t keys = characters + (code != 0 ? 1 : 0);
  if (typing_rate_ && keys > 0) {
    at = seconds_.Put(std::int64_t{end} - start, keys, PutText(kDelay, at));
    *at++ = '\n';
  }
  return at;
}

void InputLines::Append(const KeyboardInput& input, std::string& lines) {
  const Value code = input.code;
  if (hertz_) {
    const Value last_clock =
        ordinary_last_clock_ ? Value(std::int64_t{*ordinary_last_clock_}) : last_clock_;
    const Value pause = ElapsedSeconds(last_clock, input.start_clock, *hertz_);
    if (last_clock != 0 && pause > 0) {
      lines.append(kPause).append(pause.Text()).append("\n");
    }
    SetLastClock(input.end_clock);
    const Value keys = code != 0 ? Increment(input.characters) : Value(input.characters);
    if (typing_rate_ && keys > 0) {
      const Value seconds = ElapsedSeconds(input.start_clock, input.end_clock, *hertz_);
      lines.append(kDelay).append(Divide(seconds, keys).Text()).append("\n");
    }
  }
  AppendInputLine(input.text, EndingOf(code), lines);
}

}  // namespace ptick
