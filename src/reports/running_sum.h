#pragma once

#include <cstdint>

#include "value/value.h"

namespace ptick {

/// A sum of many numbers, as the value layer adds them, quick while they are whole.
class RunningSum {
 public:
  void Add(std::int64_t number) {
    if (__builtin_add_overflow(whole_, number, &whole_)) {
      rest_ = ptick::Add(ptick::Add(rest_, before_overflow_), number);
      whole_ = 0;
    }
    before_overflow_ = whole_;
  }
  void Add(const Value& number) { rest_ = ptick::Add(rest_, number); }

  Value Total() const { return ptick::Add(rest_, whole_); }

 private:
  std::int64_t whole_ = 0;
  std::int64_t before_overflow_ = 0;
  Value rest_ = 0;
};

}  // namespace ptick
