#pragma once

#include <cstdlib>
#include <iostream>
#include <string>
#include <string_view>

namespace ptick::fuzz {

/// Ends the program, which is how a fuzz target tells a finding, unless `holds`; says first what
/// does not hold.
inline void Require(bool holds, std::string_view what) {
  if (!holds) {
    std::cerr << "does not hold: " << what << std::endl;
    std::abort();
  }
}

/// The same for two texts that must be equal; both are shown.
inline void RequireEqual(const std::string& want, const std::string& got, std::string_view what) {
  if (want != got) {
    std::cerr << "want: " << want << "\ngot:  " << got << "\n";
    Require(false, what);
  }
}

}  // namespace ptick::fuzz
