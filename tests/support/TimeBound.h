#pragma once

#include <QtGlobal>

namespace tessaro::test {

/// A bound in milliseconds that holds for the optimised program; a build with sanitizers is given five times as long.
constexpr qint64 TimeBound(qint64 milliseconds) {
#ifdef __SANITIZE_ADDRESS__
    return milliseconds * 5;
#else
    return milliseconds;
#endif
}

} // namespace tessaro::test
