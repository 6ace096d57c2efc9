#pragma once

#include <cstdint>
#include <optional>
#include <variant>

#include "value/arithmetic.h"
#include "value/value.h"

namespace ptick {

/// A sum of many numbers, each added in turn as the value layer adds; quick while it is whole.
class RunningSum {
 public:
  void Add(std::int64_t number) {
    std::int64_t sum = 0;
    if (is_whole_ && !__builtin_add_overflow(whole_, number, &sum)) {
      whole_ = sum;
    } else {
      Add(Value(number));
    }
  }

  void Add(const Value& number) {
    total_ = ptick::Add(Total(), number);
    const Number sum = total_.AsNumber();
    const auto* whole = std::get_if<std::int64_t>(&sum);
    is_whole_ = whole != nullptr;
    if (is_whole_) {
      whole_ = *whole;
    }
  }

  /// The sum while it is whole in 64 bits.
  std::optional<std::int64_t> Whole() const {
    return is_whole_ ? std::optional(whole_) : std::nullopt;
  }

  Value Total() const { return is_whole_ ? Value(whole_) : total_; }

 private:
  bool is_whole_ = true;
  std::int64_t whole_ = 0;  ///< the sum while it is whole in 64 bits
  Value total_;             ///< the sum otherwise
};

}  // namespace ptick
