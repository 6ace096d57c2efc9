// Trace events, for Perfetto and chrome://tracing: JSON.
#pragma once

#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

void WriteTraceEvents(const ExportJob& job);

}  // namespace ptick::exports
