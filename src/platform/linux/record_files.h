#pragma once

#include <memory>
#include <string_view>

#include "platform/record_file.h"

namespace ptick {

/// Opens the directory `name` as a platform file, its entries being the records. Null when there is
/// no such directory, or the name is empty or holds a zero byte (ENOENT); `error`, where given,
/// gets the system's error number.
///
/// A record is any entry that can be read to its end: a regular file, a pipe, a device, or a link
/// to one of them; a directory or a socket is none. Opening a FIFO waits for its writer.
///
/// Threads: any; a reader belongs to one at a time.
std::unique_ptr<RecordFile> OpenRecordFile(std::string_view name, int* error = nullptr);

/// Opens a record by its path, wherever that leads. Null, and the error number, as above.
std::unique_ptr<RecordReader> OpenPath(std::string_view path, int* error = nullptr);

/// Reads on from a descriptor that is open, such as standard input, which stays open.
std::unique_ptr<RecordReader> ReadOpenFile(int fd, int* error = nullptr);

/// The platform files of the system, for a program that needs nothing else of it.
class LinuxRecordFiles final : public RecordFiles {
 public:
  std::unique_ptr<RecordFile> OpenFile(std::string_view name, int* error = nullptr) override {
    return OpenRecordFile(name, error);
  }
};

}  // namespace ptick
