#pragma once

#include <cstddef>
#include <string_view>

#include "profile/ticks/name_table.h"
#include "value/chunk_list.h"

namespace ptick {

/// A list of names of which many are equal: each distinct text once, and four bytes an element.
class NameList {
 public:
  void Append(std::string_view name) { ids_.Append(names_.Intern(name)); }

  std::size_t size() const { return ids_.size(); }

  /// Element `index`, counted from 0; valid until the next Append.
  std::string_view operator[](std::size_t index) const { return names_[ids_[index]]; }

  /// The number of that element's name among the distinct ones.
  NameTable::Id IdOf(std::size_t index) const { return ids_[index]; }

  /// The distinct names, in order of first appearance.
  const NameTable& Names() const { return names_; }

 private:
  NameTable names_;
  ChunkList<NameTable::Id> ids_;
};

}  // namespace ptick
