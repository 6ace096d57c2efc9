#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "profile/scan/call_line.h"
#include "profile/ticks/name_table.h"
#include "profile/ticks/number_texts.h"
#include "value/chunk_list.h"

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

  /// The same for a line in the usual form.
  void Add(const CallLine& line, bool keep_caller);

  std::size_t Count() const { return calls_.size(); }

  /// What record n says, counted from 0. Caller is empty where callers were not kept.
  std::string_view Called(std::size_t n) const { return names_[calls_[n].called]; }
  std::string_view Caller(std::size_t n) const {
    return callers_.size() == 0 ? std::string_view() : names_[callers_[n]];
  }
  void AppendTimes(std::size_t n, std::string& out) const {
    numbers_.AppendText(calls_[n].times, out);
  }
  Number Times(std::size_t n) const { return numbers_.AsNumber(calls_[n].times); }
  /// The times where they are written the ordinary way, 0 where there are none.
  std::optional<std::uint32_t> WholeTimes(std::size_t n) const {
    return NumberTexts::Whole(calls_[n].times);
  }
  bool HasTimes(std::size_t n) const { return calls_[n].times != NumberTexts::kEmpty; }

  /// A hint that record n will be looked at soon.
  void Prefetch(std::size_t n) const { __builtin_prefetch(&calls_[n]); }

 private:
  struct Call {
    NameTable::Id called;
    NumberTexts::Id times;
  };

  NameTable names_;
  NumberTexts numbers_;
  ChunkList<Call> calls_;
  ChunkList<NameTable::Id> callers_;  ///< parallel to calls_, or empty
};

}  // namespace ptick
