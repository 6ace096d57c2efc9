// Prints the ticks of each program in a profile.

#include <cstdint>
#include <iostream>
#include <map>
#include <string>

#include "platform/linux/record_files.h"
#include "profile/profile_loader.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cerr << "usage: ticks_by_program PROFILE\n";
    return 2;
  }
  ptick::LinuxRecordFiles files;
  ptick::ProfileTables tables;
  if (const auto problem = ptick::LoadProfile(argv[1], files, {}, tables)) {
    std::cerr << problem->name << ": cannot be read, or not at line " << problem->line << "\n";
    return 2;
  }
  std::map<std::string, std::uint64_t> ticks;
  tables.Details.ForEach([&](const ptick::TickEntry& entry) {
    ticks[std::string(tables.Details.Programs()[entry.program])] += entry.ticks;
  });
  for (const auto& [program, sum] : ticks) {
    std::cout << program << " " << sum << "\n";
  }
  return 0;
}
