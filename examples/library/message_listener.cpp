// Listens on a port and prints the control messages it is sent, until one says "quit".

#include <charconv>
#include <cstdint>
#include <cstring>
#include <exception>
#include <iostream>
#include <optional>

#include "platform/linux/ports/port_endpoint.h"

int main(int argc, char** argv) {
  using ptick::ports::PortEndpoint;
  using ptick::ports::PortRequest;
  std::int64_t port = -1;
  if (argc != 2 ||
      std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), port).ec != std::errc()) {
    std::cerr << "usage: message_listener PORT\n";
    return 2;
  }
  try {
    PortEndpoint endpoint(port);
    std::cout << "listening" << std::endl;
    while (auto received = endpoint.Receive(std::nullopt)) {
      if (received->request.what != PortRequest::Kind::kControl) {
        received->Reply(0);
        continue;
      }
      std::cout << received->request.text << std::endl;
      if (received->request.text == "TICKCTL:quit") {
        return 0;
      }
    }
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << "\n";
  }
  return 2;
}
