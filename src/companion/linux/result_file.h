// The result of a companion: written to standard output, or to a file that is whole or as it was.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "companion/byte_sink.h"
#include "companion/linux/result_place.h"
#include "companion/linux/temporary_file.h"
#include "companion/progress.h"

namespace ptick::companion {

/// Text may go to a terminal, where what would drive it is replaced; bytes may not.
enum class ResultKind { kText, kBytes };

/// A regular file is written under a temporary name beside it and renamed when all is there; the
/// old one's mode is kept, a link to it stays. A file that this process may not write is not
/// replaced. What is no regular file is opened and written.
///
/// A reader that has closed its pipe has all it wants: nothing is written any more, nothing said.
/// All else that fails is Trouble.
class ResultFile final : public ByteSink {
 public:
  /// Standard output without a file, or with "-". `program` is part of the temporary name; what
  /// `status_line` shows is erased before anything goes to a terminal.
  ResultFile(const std::optional<std::string>& file, ResultKind kind, std::string_view program,
             StatusLine& status_line);
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;
  /// Leaves a file as it was, unless it was finished.
  ~ResultFile() override = default;

  void Write(std::string_view bytes) override;
  void WriteControl(std::string_view bytes) override;

  /// Writes what is still to be written and puts the file in its place.
  void Finish();

  /// Whether its reader wants no more, so that the rest need not be made.
  bool IsClosed() const { return is_closed_; }
  /// Where its bytes go.
  int Descriptor() const;

 private:
  void Open(const std::string& file, std::string_view program);
  void Flush();
  void FlushWhenFull();
  void WriteOut(std::string_view bytes);
  void Check(int error) const;

  std::string name_;
  StatusLine& status_line_;
  ResultPlace place_;
  std::unique_ptr<TemporaryFile> temporary_;
  bool is_on_terminal_ = false;
  bool is_closed_ = false;
  std::string buffer_;
};

}  // namespace ptick::companion
