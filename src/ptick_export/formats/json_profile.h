// The whole profile as JSON; docs/ptick-profile.schema.json describes it.
#pragma once

#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

void WriteJsonProfile(const ExportJob& job);

}  // namespace ptick::exports
