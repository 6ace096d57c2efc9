#pragma once

namespace ptick {

/// The trace entries of a profile.
class TickTable {};

}  // namespace ptick
