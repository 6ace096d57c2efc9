// The ticks of a profile by line and by program, most first.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/key_names.h"
#include "compare/side.h"
#include "profile/tables/profile_tables.h"
#include "value/value.h"

namespace ptick::view {

/// Entries of one program and line added up. Rows of equal ticks come by program, byte by byte,
/// then by line.
class LineTable {
 public:
  struct Line {
    compare::Key key;  ///< program and line among Names()
    Number ticks;
  };
  struct Program {
    std::uint32_t name = 0;  ///< among Names()
    Number ticks;
    std::uint64_t lines = 0;
  };

  explicit LineTable(const ProfileTables& tables);

  const compare::KeyNames& Names() const { return names_; }
  const std::vector<Line>& Lines() const { return lines_; }
  const std::vector<Program>& Programs() const { return programs_; }

 private:
  void AddUpPrograms();

  compare::KeyNames names_;
  std::vector<Line> lines_;
  std::vector<Program> programs_;
};

}  // namespace ptick::view
