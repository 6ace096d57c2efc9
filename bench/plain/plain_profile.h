#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <istream>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ptick::bench {

/// What the plain program keeps of a trace line.
struct PlainEntry {
  std::uint32_t program;
  std::uint32_t line;
  std::uint32_t ticks;
};

/// The trace lines and the total of a profile, read the plain way: a block at a time, split with
/// memchr, names numbered by a std::unordered_map. Knows ordinary numbers only.
class PlainProfile {
 public:
  explicit PlainProfile(std::istream& file);

  /// By falling ticks, equal ticks in reverse order of arrival; with `per_program` by program name
  /// first.
  void Order(bool per_program);

  const std::vector<PlainEntry>& Entries() const { return entries_; }
  const std::string& Name(std::uint32_t program) const { return names_[program]; }
  std::uint64_t Total() const { return total_; }

 private:
  /// Lets a std::string_view be looked up without making a std::string of it.
  struct TextHash {
    using is_transparent = void;  // NOLINT(readability-identifier-naming): the library's name
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };

  void TakeLine(std::string_view line);
  std::uint32_t NumberOf(std::string_view name);
  std::vector<std::uint32_t> NameRanks() const;

  std::vector<PlainEntry> entries_;
  std::vector<std::string> names_;
  std::unordered_map<std::string, std::uint32_t, TextHash, std::equal_to<>> numbers_;
  std::uint64_t total_ = 0;
};

}  // namespace ptick::bench
