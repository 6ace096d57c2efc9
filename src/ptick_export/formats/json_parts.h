// The parts of a profile as JSON, for every document that holds one.
#pragma once

#include <cstddef>
#include <string_view>

#include "companion/json_writer.h"
#include "profile/tables/profile_tables.h"
#include "ptick_export/formats/json_values.h"
#include "ptick_export/formats/profile_names.h"

namespace ptick::exports {

/// Writes into an object or array that its caller has begun.
class JsonParts {
 public:
  /// All of them outlive this.
  JsonParts(const ProfileTables& tables, companion::JsonWriter& json, ProfileNames& names,
            BigNumbers big_numbers)
      : tables_(tables), json_(json), names_(names), big_numbers_(big_numbers) {}

  /// "format" to "hertz".
  void WriteHead();
  /// "counters", "user_ticks", "resource" and "typerate".
  void WriteCounters();
  /// The command recorded as number n, counted from 0.
  void WriteCommand(std::size_t n);
  void WriteSubroutine(std::size_t n);
  void WriteObject(std::string_view name);
  void WriteInput(std::size_t n);

 private:
  void WriteResource();
  void WriteTypeRate();
  void Write(std::string_view key, const Value& value);

  const ProfileTables& tables_;
  companion::JsonWriter& json_;
  ProfileNames& names_;
  BigNumbers big_numbers_;
};

}  // namespace ptick::exports
