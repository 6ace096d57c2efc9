// The names of a profile as texts.
#pragma once

#include <string_view>

#include "companion/distinct_texts.h"
#include "profile/tables/profile_tables.h"

namespace ptick::exports {

/// The texts of names, no two alike. Of two names with one text that which the profile has first
/// keeps it, so that a name has the same text in every format and table.
class ProfileNames {
 public:
  explicit ProfileNames(const ProfileTables& tables);

  /// Programs and subroutines, which are programs, too. The text is valid as long as both this
  /// object and `name` live; so are those below.
  std::string_view Program(std::string_view name) { return programs_.Of(name); }
  std::string_view Command(std::string_view name) { return commands_.Of(name); }
  std::string_view Object(std::string_view name) { return objects_.Of(name); }
  /// Lines that are no numbers.
  std::string_view Line(std::string_view text) { return lines_.Of(text); }
  std::string_view SourcePath(std::string_view path) { return paths_.Of(path); }

 private:
  companion::DistinctTexts programs_;
  companion::DistinctTexts commands_;
  companion::DistinctTexts objects_;
  companion::DistinctTexts lines_;
  companion::DistinctTexts paths_;
};

}  // namespace ptick::exports
