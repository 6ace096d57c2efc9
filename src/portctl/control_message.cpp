#include "portctl/control_message.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "portctl/port_number.h"
#include "value/arithmetic.h"
#include "value/dynamic_array.h"
#include "value/list_operations.h"
#include "value/pattern.h"
#include "value/text.h"
#include "value/value.h"

namespace ptick {

namespace {

constexpr std::string_view kPort = "1N0N";
constexpr std::string_view kPortRange = "1N0N'-'1N0N";

void SendToPort(const std::string& target, const std::string& message, Ports& ports,
                Output& output) {
  const int result_code = ports.SendPortMessage(PortNumber(target), message);
  if (result_code != 0) {
    output.PrintLine("Error number " + std::to_string(result_code) + " sending message to port " +
                     target);
  } else {
    output.PrintLine("Message sent successfully to port " + target);
  }
}

std::string_view WithoutLeadingZeros(std::string_view digits) {
  return digits.substr(std::min(digits.find_first_not_of('0'), digits.size()));
}

/// Whether one number is greater than another, for digits of any length.
bool IsGreater(std::string_view digits, std::string_view other) {
  digits = WithoutLeadingZeros(digits);
  other = WithoutLeadingZeros(other);
  return digits.size() != other.size() ? digits.size() > other.size() : digits > other;
}

Value CountPorts(const std::string& first, const std::string& last) {
  return IsGreater(first, last) ? 0 : Increment(Subtract(last, first));
}

void SendToRange(const std::string& target, const std::string& message, Ports& ports,
                 Output& output) {
  const std::string first_port = Field(target, '-', 1).text;
  const std::string last_port = Field(target, '-', 2).text;
  std::int64_t sent_count = 0;
  for (const std::int64_t port :
       ports.ListeningPorts(PortNumber(first_port), PortNumber(last_port))) {
    if (ports.SendPortMessage(port, message) == 0) {
      ++sent_count;
    }
  }
  // Whatever was not sent has failed, most of it without a try: nobody listens there.
  const Value fail_count = Subtract(CountPorts(first_port, last_port), sent_count);
  output.PrintLine("Message sent successfully to " + std::to_string(sent_count) +
                   " ports and failed to " + fail_count.Text() + " ports");
}

}  // namespace

ControlCall SplitControlCall(const std::vector<std::string>& arguments) {
  std::string list;
  for (const std::string& argument : arguments) {
    if (&argument != &arguments.front()) {
      list += kFieldMark;
    }
    list += argument;
  }
  ControlCall call;
  const std::size_t mark = list.find(kFieldMark);
  call.target_port = list.substr(0, mark);
  if (mark != std::string::npos) {
    call.control_text = list.substr(mark + 1);
    std::ranges::replace(call.control_text, kFieldMark, ' ');
  }
  return call;
}

bool SendControlMessages(const ControlCall& call, Ports& ports, Output& output) {
  const std::string message = "TICKCTL:" + call.control_text;
  if (Matches(call.target_port, kPort) && !call.control_text.empty()) {
    SendToPort(call.target_port, message, ports, output);
    return true;
  }
  if (Matches(call.target_port, kPortRange)) {
    SendToRange(call.target_port, message, ports, output);
    return true;
  }
  return false;
}

}  // namespace ptick
