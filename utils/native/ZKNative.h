// ZKNative.h (internal): the operating-system services the library needs,
// behind one small interface. Exactly one backend folder is compiled:
// native/linux here, native/mac on macOS. No other file of the library tests
// the platform.
#pragma once

namespace ZKNative {

// Seconds on the platform's monotonic clock (Linux: CLOCK_MONOTONIC). The
// origin is arbitrary; only differences mean something.
double monotonicSeconds();

} // namespace ZKNative
