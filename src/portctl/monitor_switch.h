#pragma once

#include <string>

#include "output/output.h"
#include "platform/ports.h"
#include "portctl/control_message.h"

namespace ptick {

/// The -j form: switches the monitor of the process on a port on or off. The words are those of
/// `call.control_text` between single blanks: ON or OFF in any case, the port or "%" for
/// `own_port`, and for ON a file name and options; what follows is ignored. A port may be any
/// numeric text and counts with its integer part.
///
/// Returns the exit status of the run: 0; 2 for a bad port or type, said on the terminal; else the
/// error number of the switch, said on standard output, or 255 where no exit status has it.
int SwitchMonitor(const ControlCall& call, const std::string& own_port, Ports& ports,
                  Output& output);

}  // namespace ptick
