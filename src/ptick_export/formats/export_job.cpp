#include "ptick_export/formats/export_job.h"

#include <utility>

#include "companion/number_text.h"

namespace ptick::exports {

void Tell(const ExportJob& job, std::string reason) {
  job.messages.Tell(
      {.file = job.tables.ProfileName, .line = std::nullopt, .reason = std::move(reason)});
}

std::string CountOf(std::uint64_t count, std::string_view name) {
  std::string text = companion::GroupedCount(count) + ' ';
  text += name;
  if (count != 1) {
    text += 's';
  }
  return text;
}

}  // namespace ptick::exports
