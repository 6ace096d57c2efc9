// Folded stacks: "program;line ticks", for flame graphs and grep.
#pragma once

#include "ptick_export/formats/export_job.h"

namespace ptick::exports {

void WriteFolded(const ExportJob& job);

}  // namespace ptick::exports
