#pragma once

#include <string>
#include <vector>

#include "output/output.h"
#include "platform/ports.h"

namespace ptick {

/// The command line as the control forms read it.
struct ControlCall {
  std::string target_port;   ///< the first argument, as it was typed; empty when there is none
  std::string control_text;  ///< all arguments after it, joined by single spaces
};

/// Splits a command line without the command's own name. An argument that holds a field mark counts
/// as several, for the command line is a list of fields.
ControlCall SplitControlCall(const std::vector<std::string>& arguments);

/// The control form: a port number followed by commands, or a range of ports with or without them.
/// Sends "TICKCTL:" and the commands to the process on each port and prints one line with the
/// result; a message that cannot be sent is no failure of the run. Returns false, with nothing
/// printed or changed, when the call is none of these.
///
/// A range costs one look at the listening ports and one send for each; ports that nobody listens
/// on are counted as failed without being tried. Counts are exact up to 9223372036854775807; a
/// greater one is that of a floating number, 15 digits of it exact.
bool SendControlMessages(const ControlCall& call, Ports& ports, Output& output);

}  // namespace ptick
