// Names for formats that know a name by its text only: two different names never become one text.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace ptick::companion {

/// The text of each name: the name as UTF-8, except where a name met before has that text already.
/// One of the two is Latin-1 then, and the one met second has " (Latin-1)" after it, more than once
/// where that is taken, too. Keeps the names that are not plain ASCII.
class DistinctTexts {
 public:
  /// The text of a name, the same whenever it is asked for. Valid as long as both this object and
  /// `name` live.
  std::string_view Of(std::string_view name);

 private:
  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };

  std::unordered_map<std::string, std::string, Hash, std::equal_to<>> texts_;
  std::unordered_set<std::string> taken_;
};

}  // namespace ptick::companion
