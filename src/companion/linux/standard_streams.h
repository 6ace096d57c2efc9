// The standard streams of a companion.
#pragma once

namespace ptick::companion {

/// Makes the standard streams safe to work with, once, before anything is opened:
///
/// - One that is closed becomes a descriptor that can neither be read nor written, so that no file
///   takes its number and is written by mistake.
/// - A closed pipe, and a file beyond the limit of file sizes, are errors of the write, no signals.
void PrepareStandardStreams();

}  // namespace ptick::companion
