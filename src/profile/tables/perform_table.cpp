#include "profile/tables/perform_table.h"

#include <algorithm>

namespace ptick {

void PerformTable::Add(const PerformTexts& texts, bool keep) {
  const NameTable::Id command = commands_.Intern(texts.command);
  if (command == times_.size()) {
    times_.push_back(0);
  }
  ++times_[command];
  ++count_;
  if (!keep) {
    return;
  }
  Record::Entry& entry = entries_.emplace_back();
  entry.command = command;
  entry.type = types_.Intern(texts.type);
  std::transform(texts.numbers.begin(), texts.numbers.end(), entry.numbers.begin(),
                 [this](std::string_view text) { return numbers_.Add(text); });
}

}  // namespace ptick
