#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform.h"

namespace ptick::testing {

/// A platform that has ports and nothing else. What is asked of it stands in Calls, in order:
/// "list FIRST LAST", "send PORT TEXT", "on PORT [FILE] [OPTIONS]", "off PORT".
class PortPlatform : public Platform {
 public:
  std::map<std::int64_t, int> results;  ///< what an operation on a port returns; without: 2
  std::string own = "0";                ///< the own port
  std::vector<std::string> calls;
  std::string printed;          ///< on standard output
  std::string on_the_terminal;  ///< printed there

  std::string OwnPort() override { return own; }
  int Write(Stream stream, std::string_view bytes) override {
    (stream == Stream::kOutput ? printed : on_the_terminal) += bytes;
    return 0;
  }
  int SendPortMessage(std::int64_t port, std::string_view text) override {
    return Note("send " + std::to_string(port) + " " + std::string(text), port);
  }
  int MonitorOn(std::int64_t port, std::string_view file, std::string_view options) override {
    return Note("on " + std::to_string(port) + " [" + std::string(file) + "] [" +
                    std::string(options) + "]",
                port);
  }
  int MonitorOff(std::int64_t port) override { return Note("off " + std::to_string(port), port); }
  std::vector<std::int64_t> ListeningPorts(std::int64_t first, std::int64_t last) override {
    calls.push_back("list " + std::to_string(first) + " " + std::to_string(last));
    std::vector<std::int64_t> ports;
    for (const auto& [port, result] : results) {
      if (port >= first && port <= last) {
        ports.push_back(port);
      }
    }
    return ports;
  }

  std::unique_ptr<RecordFile> OpenFile(std::string_view /*name*/, int* /*error*/) override {
    return nullptr;
  }
  std::int64_t PageWidth() override { return 80; }
  std::string AccountName() override { return ""; }
  std::vector<std::string> CommandLine() override { return {}; }
  std::int64_t Now() override { return 0; }
  std::optional<std::int64_t> ZoneOffset(std::int64_t /*time*/) override { return 0; }
  bool IsTerminal(Stream /*stream*/) override { return false; }
  bool HasKeyboard() override { return false; }
  std::int64_t PageLength() override { return 24; }
  std::optional<char> ReadKey() override { return std::nullopt; }
  FirstLines CaptureFirstLines(const std::vector<std::vector<std::string>>& /*commands*/) override {
    return {};
  }
  int RunShell(const std::string& /*command_line*/, std::string_view /*input*/) override {
    return 127;
  }

 private:
  int Note(std::string call, std::int64_t port) {
    calls.push_back(std::move(call));
    const auto found = results.find(port);
    return found == results.end() ? 2 : found->second;
  }
};

}  // namespace ptick::testing
