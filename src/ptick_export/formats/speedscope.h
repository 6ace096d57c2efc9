// speedscope's own format: JSON.
#pragma once

#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

void WriteSpeedscope(const ExportJob& job);

}  // namespace ptick::exports
