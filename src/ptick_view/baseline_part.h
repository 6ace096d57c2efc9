// What changed since the baseline, by the facts of ptick-diff.
#pragma once

#include "ptick_view/document.h"
#include "ptick_view/document_writer.h"

namespace ptick::view {

/// Writes an object that holds the baseline and all changes.
void WriteBaseline(const BaselineSide& baseline, DocumentWriter& writer);

}  // namespace ptick::view
