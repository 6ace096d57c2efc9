// A gzipped protocol buffer, for pprof and all that reads its profiles.
#pragma once

#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

void WritePprof(const ExportJob& job);

}  // namespace ptick::exports
