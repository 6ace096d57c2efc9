// What messages say of records that nobody knows.
#pragma once

#include <string>

#include "profile/parse/unknown_record.h"

namespace ptick::companion {

/// "unknown record type: PROFILE:trcae ...", the dots for the fields after the type. A long type is
/// cut.
std::string UnknownRecordReason(const UnknownRecord& record);

}  // namespace ptick::companion
