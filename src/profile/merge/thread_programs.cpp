#include "profile/merge/thread_heads.h"

namespace ptick {

NameTable::Id ThreadHeads::Add(std::string_view head, std::uint32_t hash) {
  const std::scoped_lock lock(mutex_);
  return heads_.Intern(head, hash);
}

NameTable::Id ThreadHeads::InternIn(NameTable& heads, NameTable::Id number) const {
  const std::scoped_lock lock(mutex_);
  return heads.Intern(heads_[number]);
}

}  // namespace ptick
