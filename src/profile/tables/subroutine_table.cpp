#include "profile/tables/subroutine_table.h"

namespace ptick {

void SubroutineTable::Add(const CallTexts& texts, bool keep_caller) {
  calls_.Append({names_.Intern(texts.called), numbers_.Add(texts.times)});
  if (keep_caller) {
    callers_.Append(names_.Intern(texts.caller));
  }
}

void SubroutineTable::Add(const CallLine& line, bool keep_caller) {
  calls_.Append({names_.Intern(line.called), line.times});
  if (keep_caller) {
    callers_.Append(names_.Intern(line.caller));
  }
}

}  // namespace ptick
