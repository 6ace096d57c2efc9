// Callgrind's format, for KCachegrind and callgrind_annotate.
#pragma once

#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

void WriteCallgrind(const ExportJob& job);

}  // namespace ptick::exports
