#include "companion/inputs/record_message.h"

#include <cstddef>
#include <string_view>

#include "profile/tables/record_types.h"

namespace ptick::companion {

namespace {

constexpr std::size_t kMaxType = 60;

bool ContinuesCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

// Cut between characters, where the text is UTF-8.
std::string_view FirstPart(std::string_view type) {
  std::size_t size = kMaxType;
  while (size > kMaxType - 4 && ContinuesCharacter(type[size])) {
    --size;
  }
  return type.substr(0, ContinuesCharacter(type[size]) ? kMaxType : size);
}

}  // namespace

std::string UnknownRecordReason(const UnknownRecord& record) {
  const bool is_cut = record.type.size() > kMaxType;
  std::string reason = "unknown record type: ";
  reason += kProfilePrefix;
  reason += is_cut ? FirstPart(record.type) : record.type;
  const auto type_end =
      static_cast<std::size_t>(record.type.data() - record.line.data()) + record.type.size();
  const bool has_fields = record.line.find_first_not_of('\t', type_end) != std::string_view::npos;
  if (is_cut) {
    reason += "...";
  }
  if (has_fields) {
    reason += " ...";
  }
  return reason;
}

}  // namespace ptick::companion
