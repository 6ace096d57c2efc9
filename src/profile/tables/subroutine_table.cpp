#include "profile/tables/subroutine_table.h"

namespace ptick {

void SubroutineTable::Add(const CallTexts& texts, bool keep_caller) {
  calls_.push_back({names_.Intern(texts.called), numbers_.Add(texts.times)});
  if (keep_caller) {
    callers_.push_back(names_.Intern(texts.caller));
  }
}

}  // namespace ptick
