// Reads the formats of ptick-export that add up, for the fuzz target: each by the rules of its
// format.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace ptick::fuzz {

/// Ticks by program and line, both as texts; what is no such file ends the program.
using ReadSums = std::map<std::pair<std::string, std::string>, double>;

ReadSums ReadFolded(std::string_view text);
ReadSums ReadCallgrind(std::string_view text);
ReadSums ReadPprof(const std::string& zipped);
ReadSums ReadSpeedscope(std::string_view text);

/// Looks at JSON of any kind: it is UTF-8 and JSON.
void ReadJson(std::string_view text);

/// Looks at CSV: rows of as many fields as the first.
void ReadCsv(std::string_view text);

}  // namespace ptick::fuzz
