// The mark to beat: the per-line report, with -n per program, written by hand in plain C++ for this
// one case. Prints the rows without the heading.

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <ios>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

#include "plain/plain_profile.h"

namespace {

using ptick::bench::PlainEntry;
using ptick::bench::PlainProfile;

// The columns: where each starts, and the width of a row.
constexpr std::size_t kLineColumn = 21;
constexpr std::size_t kTicksColumn = 28;
constexpr std::size_t kPercentColumn = 37;
constexpr std::size_t kRowWidth = 43;

constexpr std::size_t kBufferSize = std::size_t{1} << 20U;

char* PutNumber(std::uint64_t number, char* at) {
  constexpr std::size_t kMaxDigits = 20;
  return std::to_chars(at, at + kMaxDigits, number).ptr;
}

// Hundredths as a plain number: 12.5 for 1250.
void PutPercent(std::uint64_t hundredths, char* at) {
  at = PutNumber(hundredths / 100, at);
  if (const std::uint64_t rest = hundredths % 100; rest != 0) {
    *at++ = '.';
    *at++ = static_cast<char>('0' + rest / 10);
    if (rest % 10 != 0) {
      *at = static_cast<char>('0' + rest % 10);
    }
  }
}

class PlainReport {
 public:
  explicit PlainReport(const PlainProfile& profile) : profile_(profile), buffer_(kBufferSize) {}

  void Print(bool per_program);

 private:
  char* NewRow();
  void PutRow(const PlainEntry& entry, bool shows_name);
  void PutSubtotal();
  void Flush();

  const PlainProfile& profile_;
  std::vector<char> buffer_;
  std::size_t used_ = 0;
  std::uint64_t ticks_ = 0;
  std::uint64_t hundredths_ = 0;
};

void PlainReport::Print(bool per_program) {
  const PlainEntry* previous = nullptr;
  for (const PlainEntry& entry : profile_.Entries()) {
    const bool shows_name = previous == nullptr || previous->program != entry.program;
    if (per_program && previous != nullptr && shows_name) {
      PutSubtotal();
    }
    PutRow(entry, shows_name);
    previous = &entry;
  }
  if (per_program && previous != nullptr) {
    PutSubtotal();
  }
  Flush();
}

// A row of blanks with its line end.
char* PlainReport::NewRow() {
  if (buffer_.size() - used_ <= kRowWidth) {
    Flush();
  }
  char* const row = buffer_.data() + used_;
  std::memset(row, ' ', kRowWidth);
  row[kRowWidth] = '\n';
  used_ += kRowWidth + 1;
  return row;
}

// Names and numbers of the profiles to measure with fit their columns.
void PlainReport::PutRow(const PlainEntry& entry, bool shows_name) {
  const std::uint64_t share =
      profile_.Total() == 0 ? 0 : std::uint64_t{entry.ticks} * 10000 / profile_.Total();
  ticks_ += entry.ticks;
  hundredths_ += share;
  char* const row = NewRow();
  if (shows_name) {
    profile_.Name(entry.program).copy(row, kLineColumn - 1);
  }
  PutNumber(entry.line, row + kLineColumn);
  PutNumber(entry.ticks, row + kTicksColumn);
  PutPercent(share, row + kPercentColumn);
}

void PlainReport::PutSubtotal() {
  char* row = NewRow();
  std::memset(row + kTicksColumn, '-', kPercentColumn - 1 - kTicksColumn);
  std::memset(row + kPercentColumn, '-', kRowWidth - kPercentColumn);
  row = NewRow();
  PutNumber(ticks_, row + kTicksColumn);
  PutPercent(hundredths_, row + kPercentColumn);
  if (used_ == buffer_.size()) {
    Flush();
  }
  buffer_[used_++] = '\n';
  ticks_ = 0;
  hundredths_ = 0;
}

void PlainReport::Flush() {
  std::fwrite(buffer_.data(), 1, used_, stdout);
  used_ = 0;
}

}  // namespace

int main(int argc, char** argv) {
  const bool per_program = argc == 3 && std::string_view(argv[1]) == "-n";
  std::ifstream file(argv[argc - 1], std::ios::binary);
  if (argc < 2 || !file) {
    std::cerr << "usage: plain_report [-n] PROFILE\n";
    return 1;
  }
  PlainProfile profile(file);
  profile.Order(per_program);
  PlainReport(profile).Print(per_program);
  return 0;
}
