// The names of a profile as texts, each kind for itself.
#pragma once

#include "companion/distinct_texts.h"
#include "profile/tables/profile_tables.h"

namespace ptick::exports {

struct ProfileNames {
  companion::DistinctTexts programs;  ///< and subroutines, which are programs, too
  companion::DistinctTexts commands;
  companion::DistinctTexts objects;
};

}  // namespace ptick::exports
