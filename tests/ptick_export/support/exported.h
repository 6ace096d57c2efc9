#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companion/messages.h"
#include "profile/tables/profile_tables.h"
#include "ptick_export/formats/export_job.h"

namespace ptick::exports::testing {

/// What a writer wrote and told.
struct Exported {
  std::string text;
  std::vector<std::string> told;
};

/// Records with "|" for TAB, each without "PROFILE:", as a profile. For tables of tests, which
/// cannot hold initializer lists.
std::string RecordsOf(const std::vector<std::string_view>& records);

/// The profile "run1" of a text, written in a format. Sources are "src/NAME" for the names in
/// `sources`.
Exported Export(Writer write, std::string_view profile,
                const std::vector<std::string>& sources = {});

/// The same for records with "|" for TAB, each without "PROFILE:".
Exported Export(Writer write, std::initializer_list<std::string_view> records,
                const std::vector<std::string>& sources = {});

}  // namespace ptick::exports::testing
