#pragma once

#include <string>

#include "model/random_source.h"

namespace ptick::model {

/// One line of a profile, without its end: a record of any type, or foreign text.
std::string RandomProfileLine(RandomSource& random);

/// A line whose record type is none.
std::string RandomInvalidLine(RandomSource& random);

/// The text of a profile of up to some hundred lines, short ones most often; rarely with invalid
/// lines in it. The last line may lack its end.
std::string RandomProfile(RandomSource& random);

}  // namespace ptick::model
