#pragma once

#include <string>

#include "model/random_source.h"

namespace ptick::model {

/// Texts as they may come in the fields of profile records: mostly ordinary, often equal to others
/// of their kind, now and then as odd as text can be.

/// Tick counts, call counts and other figures.
std::string RandomTicks(RandomSource& random);
std::string RandomLineNumber(RandomSource& random);
/// Names of programs, subroutines and objects.
std::string RandomName(RandomSource& random);
/// Clock readings.
std::string RandomClock(RandomSource& random);
/// Codes of terminating characters.
std::string RandomCode(RandomSource& random);
/// Any text: bytes of all kinds but line ends; TABs and marks among them.
std::string RandomText(RandomSource& random);

}  // namespace ptick::model
