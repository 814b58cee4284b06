// Ratios that cannot flatter: both sides run in this process, taking turns,
// on a heap that malloc does not hand back to the kernel between runs (so
// neither side pays page faults the other does not), and the medians are
// compared. Each side times itself, so set-up and tear-down stay outside.
#pragma once

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <vector>

namespace qvbench {

// Milliseconds the call takes.
template <class F>
double TimeMs(F&& f) {
  const auto start = std::chrono::steady_clock::now();
  f();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> v) {
  if (v.empty()) return 0;
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

// Freed memory stays in the process: a later run reuses it rather than
// faulting in fresh pages.
inline void KeepHeapSteady() {
  mallopt(M_TRIM_THRESHOLD, 512 * 1024 * 1024);
  mallopt(M_MMAP_THRESHOLD, 512 * 1024 * 1024);
}

struct Alternated {
  double base_ms = 0;   // median of the base side
  double other_ms = 0;  // median of the other side
  double ratio() const { return base_ms > 0 ? other_ms / base_ms : 0; }
};

// One warm-up of each side, then `rounds` turns of base then other. A side
// returns the milliseconds it measured itself.
inline Alternated Alternate(int rounds, const std::function<double()>& base, const std::function<double()>& other) {
  KeepHeapSteady();
  base();
  other();
  std::vector<double> b, o;
  for (int i = 0; i < rounds; ++i) {
    b.push_back(base());
    o.push_back(other());
  }
  return {Median(b), Median(o)};
}

// "what: 1k 0.512 ms, 10k 5.301 ms, ratio 10.35 (at most 11)"; short
// times in microseconds.
inline void Report(const char* what, const char* base_name, const char* other_name, const Alternated& a,
                   double limit) {
  const bool us = a.base_ms < 0.1;
  const double scale = us ? 1000 : 1;
  const char* unit = us ? "us" : "ms";
  std::printf("%s: %s %.3f %s, %s %.3f %s, ratio %.2f (at most %g)\n", what, base_name, a.base_ms * scale, unit,
              other_name, a.other_ms * scale, unit, a.ratio(), limit);
}

// Runs the benchmark's single iteration (register it with ->Iterations(1)):
// the rounds inside Alternate are the measurement.
template <class F>
void Once(benchmark::State& state, F&& f) {
  for (auto _ : state) f();
}

}  // namespace qvbench
