#include "support/temp_directory.h"

#include <sys/stat.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace ptick::testing {

namespace fs = std::filesystem;

TempDirectory::TempDirectory() {
  std::string pattern = fs::temp_directory_path() / "ptick_test_XXXXXX";
  if (::mkdtemp(pattern.data()) == nullptr) {
    throw std::runtime_error("mkdtemp");
  }
  path_ = pattern;
}

TempDirectory::~TempDirectory() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

fs::path TempDirectory::Write(std::string_view name, std::string_view text) const {
  std::ofstream(path_ / name, std::ios::binary) << text;
  return path_ / name;
}

fs::path TempDirectory::WriteScript(std::string_view name, std::string_view body) const {
  fs::path script = Write(name, "#!/bin/sh\n" + std::string(body) + "\n");
  fs::permissions(script, fs::perms::owner_all);
  return script;
}

fs::path TempDirectory::MakeFifo(std::string_view name) const {
  fs::path fifo = path_ / name;
  if (::mkfifo(fifo.c_str(), S_IRUSR | S_IWUSR) != 0) {
    throw std::runtime_error("mkfifo");
  }
  return fifo;
}

std::string TempDirectory::Read(std::string_view name) const {
  std::ostringstream text;
  text << std::ifstream(path_ / name, std::ios::binary).rdbuf();
  return std::move(text).str();
}

}  // namespace ptick::testing
