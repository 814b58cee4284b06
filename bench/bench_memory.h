// Memory readings shared by the soak benchmarks: the resident set from /proc
// and the heap in use from malloc's own counters.
#pragma once

#include <malloc.h>

#include <fstream>
#include <string>

inline long ResidentKb() {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind("VmRSS:", 0) == 0) return std::stol(line.substr(6));
  }
  return -1;
}

inline long HeapInUseKb() { return static_cast<long>(mallinfo2().uordblks / 1024); }
