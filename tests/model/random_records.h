#pragma once

#include <string>
#include <vector>

#include "model/random_source.h"

namespace ptick::model {

/// The fields of a record, its type first: of any type, trace records most often.
std::vector<std::string> RandomRecord(RandomSource& random);

}  // namespace ptick::model
