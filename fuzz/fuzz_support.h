// What the fuzz targets share: an application set up as the library's tests
// set it up (default theme, the library's classes), a reader that turns the
// fuzzer's bytes into choices, and a check that aborts with a sentence.
//
// Every input gets a fresh application, so nothing one input does (zoom,
// settings, resources, timers) leaks into the next and any finding
// reproduces from its own file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>

#include "framework/control_classes.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace qvfuzz {

// An invariant the fuzzer found broken: say which and stop, so that both
// libFuzzer and the deterministic driver report a crash with this input.
#define QV_FUZZ_CHECK(cond, ...)                                  \
  do {                                                            \
    if (!(cond)) {                                                \
      std::fprintf(stderr, "fuzz invariant broken: %s: ", #cond); \
      std::fprintf(stderr, __VA_ARGS__);                          \
      std::fprintf(stderr, "\n");                                 \
      std::abort();                                               \
    }                                                             \
  } while (0)

// The application of one input: manual clock, default theme, the library's
// classes registered. The log stays in memory (nothing is echoed), so a
// layout that warns on every element costs no terminal output.
//
// Decoding the theme's pictures is most of the cost of an application, so
// they are decoded once per process: bitmaps are never changed after
// loading, so sharing them cannot carry anything from one input to the next.
class FuzzApp {
 public:
  FuzzApp() {
    SOUI::IRenderFactory* rf = app_.GetRenderFactory();
    app_.GetResProvider().SetImageLoader([rf](const SOUI::SStringW& path) {
      static std::map<SOUI::SStringW, SOUI::IBitmapPtr> decoded;
      auto it = decoded.find(path);
      if (it == decoded.end()) it = decoded.emplace(path, rf->LoadBitmapFromFile(path)).first;
      return it->second;
    });
    app_.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
    QVStandardCtrls::RegisterQVStandardCtrls(app_.GetFactory());
  }
  SOUI::SApplication& app() { return app_; }
  void Advance(uint32_t ms) { app_.GetClock().Advance(ms); }

 private:
  SOUI::SApplication app_;
};

// Reads choices from the front of the input; once it is used up every read
// answers zero or empty, so any input is a complete, valid program.
class ByteReader {
 public:
  ByteReader(const uint8_t* data, size_t size) : data_(data), size_(size) {}

  bool Empty() const { return pos_ >= size_; }
  size_t Remaining() const { return size_ - pos_; }

  uint8_t Byte() { return Empty() ? 0 : data_[pos_++]; }
  bool Bool() { return (Byte() & 1) != 0; }
  uint16_t U16() {
    const uint16_t lo = Byte();
    return static_cast<uint16_t>(lo | (Byte() << 8));
  }
  // A value in [lo, hi]; hi < lo answers lo.
  int Range(int lo, int hi) {
    if (hi <= lo) return lo;
    const uint32_t span = static_cast<uint32_t>(hi - lo) + 1;
    const uint32_t raw = span > 256 ? U16() : Byte();
    return lo + static_cast<int>(raw % span);
  }
  // One of n choices (n > 0).
  size_t Pick(size_t n) { return n == 0 ? 0 : static_cast<size_t>(Range(0, static_cast<int>(n) - 1)); }
  // A length-prefixed run of raw bytes, at most max_len long.
  std::string Bytes(size_t max_len) {
    size_t len = Byte();
    if (len > max_len) len = max_len;
    if (len > Remaining()) len = Remaining();
    std::string out(reinterpret_cast<const char*>(data_ + pos_), len);
    pos_ += len;
    return out;
  }
  // Everything left.
  std::string Rest() {
    std::string out(reinterpret_cast<const char*>(data_ + pos_), Remaining());
    pos_ = size_;
    return out;
  }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t pos_ = 0;
};

inline SOUI::SStringW Wide(const std::string& utf8) { return SOUI::SStringW::FromUtf8(utf8); }

}  // namespace qvfuzz
