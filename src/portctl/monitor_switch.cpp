#include "portctl/monitor_switch.h"

#include <cstdint>
#include <string>

#include "output/stop.h"
#include "portctl/port_number.h"
#include "value/dynamic_array.h"
#include "value/list_operations.h"
#include "value/text.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr int kMaxStatus = 255;

std::string Word(const ControlCall& call, std::int64_t n) {
  return Field(call.control_text, ' ', n).text;
}

int RefuseType(const std::string& monitor_type, Output& output) {
  output.PrintTerminal(monitor_type.empty() ? "The type should be ON or OFF"
                                            : "Invalid 'type' specified, should be ON or OFF");
  return kBadInput;
}

int ReportResult(int result_code, Output& output) {
  if (result_code == 0) {
    return kSuccess;
  }
  output.PrintLine("ptick: Error number " + std::to_string(result_code) + " executing command");
  return result_code > 0 && result_code < kMaxStatus ? result_code : kMaxStatus;
}

}  // namespace

int SwitchMonitor(const ControlCall& call, const std::string& own_port, Ports& ports,
                  Output& output) {
  const std::string monitor_type = UpperCase(Word(call, 1));
  std::string target_port = Word(call, 2);
  if (target_port == "%") {
    target_port = own_port;
  }
  if (target_port.empty() || !Num(target_port)) {
    output.PrintTerminal("portno not set to numeric port number");
    return kBadInput;
  }
  const std::int64_t port = PortNumber(target_port);
  if (monitor_type == "ON") {
    return ReportResult(ports.MonitorOn(port, Word(call, 3), Word(call, 4)), output);
  }
  if (monitor_type == "OFF") {
    return ReportResult(ports.MonitorOff(port), output);
  }
  return RefuseType(monitor_type, output);
}

}  // namespace ptick
