#include "profile/merge/thread_programs.h"

#include <string>

#include "profile/merge/merge_line.h"

namespace ptick {

NameTable::Id ThreadPrograms::Add(std::string_view program, std::uint32_t hash) {
  const std::scoped_lock lock(mutex_);
  return programs_.Intern(program, hash);
}

NameTable::Id ThreadPrograms::InternHeadIn(NameTable& heads, NameTable::Id program) const {
  const std::scoped_lock lock(mutex_);
  std::string head(kTraceHead);
  head += programs_[program];
  return heads.Intern(head);
}

}  // namespace ptick
