// The data of a page: one JSON document, described in web/src/data.ts.
#pragma once

#include <cstddef>
#include <string_view>

#include "companion/byte_sink.h"
#include "companion/inputs/source_folders.h"
#include "profile/tables/profile_tables.h"
#include "ptick_view/limits.h"
#include "ptick_view/runs.h"

namespace ptick::view {

/// Several profiles merged into one.
struct ProfileSide {
  const ProfileTables& tables;
  std::size_t runs;
};

/// What is compared with.
struct BaselineSide {
  ProfileSide profile;
  const ComparedKinds& kinds;
};

struct DocumentFacts {
  /// Program and version.
  std::string_view producer;
  ProfileSide profile;
  const BaselineSide* baseline;  ///< null where there is none
  const companion::SourceFolders& sources;
  Limits limits;
};

/// Writes the document with nothing in it that could end the element that holds it.
void WriteDocument(const DocumentFacts& facts, companion::ByteSink& sink);

}  // namespace ptick::view
