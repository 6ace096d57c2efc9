#include "compare/key_table.h"

namespace ptick::compare {

KeyTable::Id KeyTable::Intern(Key key) {
  if (2 * (keys_.size() + 1) > slots_.size()) {
    Grow();
  }
  Id& slot = slots_[Locate(key)];
  if (slot == 0) {
    keys_.push_back(key);
    slot = static_cast<Id>(keys_.size());
  }
  return slot - 1;
}

std::optional<KeyTable::Id> KeyTable::Find(Key key) const {
  if (slots_.empty()) {
    return std::nullopt;
  }
  const Id slot = slots_[Locate(key)];
  return slot == 0 ? std::nullopt : std::optional(slot - 1);
}

// The slot that has the key, or the free one where it belongs.
std::size_t KeyTable::Locate(Key key) const {
  std::size_t slot = SlotOf(key);
  while (slots_[slot] != 0 && Word(keys_[slots_[slot] - 1]) != Word(key)) {
    slot = (slot + 1) & (slots_.size() - 1);
  }
  return slot;
}

void KeyTable::Grow() {
  constexpr std::size_t kFirstSlots = 1024;
  slots_.assign(slots_.empty() ? kFirstSlots : 2 * slots_.size(), 0);
  for (Id id = 0; id < keys_.size(); ++id) {
    slots_[Locate(keys_[id])] = id + 1;
  }
}

}  // namespace ptick::compare
