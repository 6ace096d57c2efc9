// What a writer is given.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "companion/byte_sink.h"
#include "companion/messages.h"
#include "profile/tables/profile_tables.h"

namespace ptick::exports {

/// The path of the source of a program, nothing where there is none.
using SourcePathOf = std::function<std::optional<std::string>(std::string_view program)>;

struct ExportJob {
  /// Read by the writer, which may take the trace entries out of them.
  ProfileTables& tables;
  SourcePathOf source_path;
  companion::ByteSink& sink;
  /// Where it is told what the format does not hold as it is.
  companion::Messages& messages;
};

/// Writes the whole profile, or a table of it, in one format.
using Writer = void (*)(const ExportJob& job);

/// Tells something about the profile as a whole.
void Tell(const ExportJob& job, std::string reason);

/// A count of things: "1 command", "2,000 commands". The name is in the singular.
std::string CountOf(std::uint64_t count, std::string_view name);

}  // namespace ptick::exports
