// Screenshot comparison for tests: a rendered surface against a reference PNG.
//
// Pixels are compared as premultiplied ARGB channels; a pixel differs when any
// channel is off by more than `tolerance`. The images match when the sizes are
// equal and at most `max_fraction` of the pixels differ. On a mismatch the
// actual image is written as "<reference stem>.actual.png" into the output
// directory (output_dir if given, else $QV_TEST_OUTPUT_DIR, else the working
// directory, which under ctest is the build tree) and the message says where. With
// QV_UPDATE_REFERENCES=1 a missing or differing reference is (re)written.
#pragma once

#include <cairo.h>
#include <gtest/gtest.h>

#include <string>

namespace SOUI {

class CairoRenderTarget;

struct PngCompareResult {
  bool match = false;
  int differing = 0;    // pixels beyond tolerance
  int max_delta = 0;    // largest channel difference seen
  std::string message;  // empty on a match
};

PngCompareResult ComparePng(cairo_surface_t* actual, const std::string& reference_png,
                            int tolerance, double max_fraction, const std::string& output_dir = "");

// For EXPECT_TRUE: the message names the counts and the written actual image.
::testing::AssertionResult MatchesReferencePng(const CairoRenderTarget& rt,
                                               const std::string& reference_png,
                                               int tolerance = 8, double max_fraction = 0.002);

}  // namespace SOUI
