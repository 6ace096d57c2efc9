#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "value/value.h"

namespace ptick {

/// Operations on plain text. All are total: positions and counts out of range give empty results.
/// Bytes are bytes: NUL and those above 127 are like any other. Returned views point into x.

/// The length in bytes.
std::int64_t Len(std::string_view x);

/// `length` bytes of x from the 1-based position `start`; a start below 1 counts as 1.
std::string_view Substring(std::string_view x, std::int64_t start, std::int64_t length);

/// Every occurrence of `from` replaced by `to`, from the start, non-overlapping; an empty `from`
/// changes nothing.
std::string Change(std::string_view x, std::string_view from, std::string_view to);

/// Leading and trailing runs of c removed, inner runs cut to one.
std::string Trim(std::string_view x, char c = ' ');

/// x without its trailing run of c (trim of type "T").
std::string_view TrimTrailing(std::string_view x, char c = ' ');

/// n blanks; none when n is zero or less.
std::string Space(std::int64_t n);

/// The one-byte string of a code; codes are cut to whole numbers and taken modulo 256 (-1 is 255),
/// what is not numeric counts as 0.
std::string Char(const Value& code);

/// The code of the first byte; 0 for the empty text.
std::int64_t Seq(std::string_view x);

/// x enclosed in the quote character.
std::string Quote(std::string_view x, char quote);

/// ASCII letters in the other case; all other bytes stay.
std::string UpperCase(std::string_view x);
std::string LowerCase(std::string_view x);

}  // namespace ptick
