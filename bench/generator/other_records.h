#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "generator/random.h"
#include "generator/text_file.h"

namespace ptick::bench {

/// Writes the records of a profile other than its trace lines, each a line. The clock goes on from
/// record to record.
class OtherRecords {
 public:
  OtherRecords(const std::vector<std::string>& programs, Random& random, TextFile& file)
      : programs_(programs), random_(random), file_(file) {}

  void PutHead();
  void PutSubroutineCall();
  void PutSharedObject();
  void PutInput();
  void PutPerform();
  /// Any record that may come between trace lines, or a line that is no record.
  void PutAny();
  /// The header values that end a profile; `ticks` is the sum of its trace ticks.
  void PutTail(std::uint64_t ticks);

 private:
  const std::string& AnyProgram();
  void PutHeader(std::string_view type, std::uint64_t value);
  void PutTypedText();

  const std::vector<std::string>& programs_;
  Random& random_;
  TextFile& file_;
  std::uint64_t clock_ = 70'873'137;
  std::uint64_t inputs_ = 0;
};

}  // namespace ptick::bench
