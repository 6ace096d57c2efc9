// The inputs that a list names.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "companion/inputs/profile_inputs.h"

namespace ptick::companion {

/// How the names of a list end: with a line end, or with a zero byte. The last one may lack it.
enum class NameEnd : char { kLineEnd = '\n', kZero = '\0' };

/// Names in a text, kept as that text: a hundred thousand take no more memory than their bytes.
class NameList {
 public:
  NameList() = default;

  /// Reads the list of that name. Empty lines are passed over. Throws Trouble where it cannot be
  /// read, names nothing, has an empty name that ends with a zero byte, or comes from standard
  /// input and has that among its names.
  NameList(const std::string& list, NameEnd end, const InputOpener& open);

  /// Adds a name that a user typed.
  void Add(std::string_view name);

  std::size_t size() const { return size_; }

  /// Walks over the names in their order.
  class Walk {
   public:
    explicit Walk(const NameList& names) : rest_(names.text_), end_(names.end_) {}
    /// Nothing at the end.
    std::optional<std::string> Next();

   private:
    std::string_view rest_;
    char end_;
  };

 private:
  void DropEmptyLines();
  void CheckNames(const std::string& list);

  /// Each name with its end.
  std::string text_;
  char end_ = '\0';
  std::size_t size_ = 0;
};

}  // namespace ptick::companion
