// The clock and the best-of-runs figure the benchmarks share.
#pragma once
#include <chrono>

namespace bench {

inline double Seconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

// The shortest of the times kept: a busy machine only ever adds time.
struct Best {
    double seconds = 1e9;
    void Keep(double value) { seconds = value < seconds ? value : seconds; }
};

}  // namespace bench
