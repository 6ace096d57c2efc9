#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace ptick {

/// A record opened for reading, front to back, once; a regular file also at any place.
class RecordReader {
 public:
  RecordReader() = default;
  RecordReader(const RecordReader&) = delete;
  RecordReader& operator=(const RecordReader&) = delete;
  virtual ~RecordReader() = default;

  /// Fills `block` from the front and returns the number of bytes, at least 1 before the end and 0
  /// at the end. std::nullopt when reading fails; Error says why.
  virtual std::optional<std::size_t> Read(std::span<char> block) = 0;

  /// The system's error number for a Read that failed.
  virtual int Error() const { return EIO; }

  /// The number of bytes, where ReadAt can be called: in a regular file.
  virtual std::optional<std::uint64_t> Size() const { return std::nullopt; }

  /// Reads at a place as Read does, wherever Read has come to. When that fails, `error` gets the
  /// system's error number. Several threads may call it at once.
  virtual std::optional<std::size_t> ReadAt(std::uint64_t /*place*/, std::span<char> /*block*/,
                                            int& error) const {
    error = ESPIPE;
    return std::nullopt;
  }

  /// Whether opening the record again gives the same bytes from the front: not so for a pipe.
  virtual bool CanBeReadAgain() const { return true; }
};

/// An open platform file: a directory of records.
class RecordFile {
 public:
  RecordFile() = default;
  RecordFile(const RecordFile&) = delete;
  RecordFile& operator=(const RecordFile&) = delete;
  virtual ~RecordFile() = default;

  /// Opens a record. Null when there is none of that name, with the system's error number in
  /// `error` where that is asked for: the names "", "." and "..", and names that hold '/' or a zero
  /// byte, name no record.
  virtual std::unique_ptr<RecordReader> OpenRecord(std::string_view name, int* error = nullptr) = 0;

  /// The same for a name that the user did not give, but a profile: only a regular file is a record
  /// here, links followed. Nothing else is opened, so no name makes the program wait for a pipe,
  /// disturb one, or read a device that never ends.
  virtual std::unique_ptr<RecordReader> OpenRegularRecord(std::string_view name,
                                                          int* error = nullptr) = 0;
};

/// Where platform files are found.
class RecordFiles {
 public:
  RecordFiles() = default;
  RecordFiles(const RecordFiles&) = delete;
  RecordFiles& operator=(const RecordFiles&) = delete;
  virtual ~RecordFiles() = default;

  /// Opens the platform file (directory) `name`; null when that fails, with the system's error
  /// number in `error` where that is asked for.
  virtual std::unique_ptr<RecordFile> OpenFile(std::string_view name, int* error = nullptr) = 0;
};

}  // namespace ptick
