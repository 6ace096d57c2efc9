// Signals that end the process leave nothing half done.
#pragma once

#include <csignal>
#include <string_view>

namespace ptick::companion {

/// A file that is to go when a signal ends the process. Kept by its owner; doomed, and spared
/// again, under a CleanupLock.
struct DoomedFile {
  /// The directory's descriptor and the name in it, or null for none.
  int directory = -1;
  const char* name = nullptr;
  DoomedFile* next = nullptr;
};

/// From now on the signals that end a process (SIGINT, SIGTERM, SIGHUP and the like), those that
/// are not ignored, first unlink all doomed files and erase the status line, then take their usual
/// effect. To be called once, before threads are started.
void InstallSignalCleanup();

/// While one of these lives, no signal takes effect: what is done meanwhile to files and to the
/// list of doomed ones is one step to it. Not to be held for long, nor twice by one thread.
class CleanupLock {
 public:
  CleanupLock();
  CleanupLock(const CleanupLock&) = delete;
  CleanupLock& operator=(const CleanupLock&) = delete;
  ~CleanupLock();

 private:
  sigset_t mask_before_ = {};
};

/// Both under the lock that is given.
void Doom(DoomedFile& file, const CleanupLock& lock);
void Spare(const DoomedFile& file, const CleanupLock& lock);

/// Tells whether there is a status line on standard error for a signal to erase.
void SetStatusLineShown(bool is_shown);

/// The sequence that erases it.
constexpr std::string_view kEraseLine = "\r\x1b[K";

}  // namespace ptick::companion
