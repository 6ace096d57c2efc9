#pragma once

namespace ptick::companion::testing {

/// Lets the allocation with a number, counted from 1, and all after it fail in this process.
void FailAllocationsFrom(long number);

/// Lets them succeed again; returns whether one has failed.
bool StopFailingAllocations();

}  // namespace ptick::companion::testing
