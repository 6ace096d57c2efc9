#include "companion/linux/inputs.h"

#include <unistd.h>

#include "companion/problem.h"

namespace ptick::companion {

std::unique_ptr<RecordReader> OpenInput(const std::string& name) {
  int error = 0;
  std::unique_ptr<RecordReader> reader =
      name == "-" ? ReadOpenFile(STDIN_FILENO, &error) : OpenPath(name, &error);
  if (!reader) {
    throw Trouble(InputName(name), error);
  }
  return reader;
}

}  // namespace ptick::companion
