#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "profile/ticks/name_table.h"
#include "profile/ticks/number_texts.h"

namespace ptick {

/// The recorded subroutine calls in order of arrival, one a record: `SubroutineTimes` and
/// `SubroutinesCalled`. Who called is kept only where it is wanted.
class SubroutineTable {
 public:
  struct CallTexts {
    std::string_view caller;
    std::string_view called;
    std::string_view times;
  };

  /// Adds a record, with its caller when `keep_caller` is set: always or never.
  void Add(const CallTexts& texts, bool keep_caller);

  std::size_t Count() const { return calls_.size(); }

  /// What record n says, counted from 0. Caller is empty where callers were not kept.
  std::string_view Called(std::size_t n) const { return names_[calls_[n].called]; }
  std::string_view Caller(std::size_t n) const {
    return callers_.empty() ? std::string_view() : names_[callers_[n]];
  }
  void AppendTimes(std::size_t n, std::string& out) const {
    numbers_.AppendText(calls_[n].times, out);
  }
  Number Times(std::size_t n) const { return numbers_.AsNumber(calls_[n].times); }

 private:
  struct Call {
    NameTable::Id called;
    NumberTexts::Id times;
  };

  NameTable names_;
  NumberTexts numbers_;
  std::vector<Call> calls_;
  std::vector<NameTable::Id> callers_;  ///< parallel to calls_, or empty
};

}  // namespace ptick
