// The programs of a page, which its tables name by number.
#pragma once

#include <cstdint>
#include <string_view>

#include "companion/distinct_texts.h"
#include "companion/json_writer.h"
#include "profile/ticks/name_table.h"

namespace ptick::view {

/// Numbered in the order in which they are asked for.
class ProgramNames {
 public:
  std::uint32_t NumberOf(std::string_view program) { return names_.Intern(program); }
  const NameTable& All() const { return names_; }

 private:
  NameTable names_;
};

}  // namespace ptick::view
