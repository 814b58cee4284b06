#include "testing/png_compare.h"

#include <cstdlib>
#include <cstring>

#include "backends/cairo_render.h"

namespace SOUI {
namespace {

std::string OutputPathFor(const std::string& reference, const std::string& output_dir) {
  std::string stem = reference.substr(reference.find_last_of('/') + 1);
  if (stem.size() > 4 && stem.compare(stem.size() - 4, 4, ".png") == 0) stem.resize(stem.size() - 4);
  const char* dir = std::getenv("QV_TEST_OUTPUT_DIR");
  const std::string base = !output_dir.empty() ? output_dir : (dir && *dir) ? dir : ".";
  return base + "/" + stem + ".actual.png";
}

bool UpdateRequested() {
  const char* v = std::getenv("QV_UPDATE_REFERENCES");
  return v && std::strcmp(v, "1") == 0;
}

uint32_t PixelAt(cairo_surface_t* s, int x, int y) {
  uint32_t px;
  std::memcpy(&px, cairo_image_surface_get_data(s) + y * cairo_image_surface_get_stride(s) + x * 4, 4);
  return px;
}

}  // namespace

PngCompareResult ComparePng(cairo_surface_t* actual, const std::string& reference_png,
                            int tolerance, double max_fraction, const std::string& output_dir) {
  PngCompareResult r;
  cairo_surface_flush(actual);
  cairo_surface_t* ref = cairo_image_surface_create_from_png(reference_png.c_str());
  const bool loaded = cairo_surface_status(ref) == CAIRO_STATUS_SUCCESS;
  const int w = cairo_image_surface_get_width(actual), h = cairo_image_surface_get_height(actual);

  if (!loaded) {
    r.message = "reference " + reference_png + " cannot be read";
  } else if (cairo_image_surface_get_width(ref) != w || cairo_image_surface_get_height(ref) != h) {
    r.message = "size " + std::to_string(w) + "x" + std::to_string(h) + " differs from the reference's " +
                std::to_string(cairo_image_surface_get_width(ref)) + "x" +
                std::to_string(cairo_image_surface_get_height(ref));
  } else {
    // An opaque PNG decodes as RGB24, whose top byte is undefined: read it as opaque.
    const bool ref_opaque = cairo_image_surface_get_format(ref) == CAIRO_FORMAT_RGB24;
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        uint32_t a = PixelAt(actual, x, y), b = PixelAt(ref, x, y);
        if (ref_opaque) b |= 0xFF000000u;
        int worst = 0;
        for (int shift = 0; shift < 32; shift += 8) {
          const int d = std::abs(static_cast<int>((a >> shift) & 0xFF) - static_cast<int>((b >> shift) & 0xFF));
          worst = std::max(worst, d);
        }
        r.max_delta = std::max(r.max_delta, worst);
        r.differing += worst > tolerance;
      }
    }
    const double allowed = max_fraction * w * h;
    r.match = r.differing <= allowed;
    if (!r.match)
      r.message = std::to_string(r.differing) + " of " + std::to_string(w * h) +
                  " pixels differ by more than " + std::to_string(tolerance) + " (largest " +
                  std::to_string(r.max_delta) + ", allowed " + std::to_string(static_cast<int>(allowed)) + ")";
  }
  cairo_surface_destroy(ref);
  if (r.match) return r;

  if (UpdateRequested() && cairo_surface_write_to_png(actual, reference_png.c_str()) == CAIRO_STATUS_SUCCESS) {
    r.match = true;
    r.message.clear();
    return r;
  }
  const std::string out = OutputPathFor(reference_png, output_dir);
  if (cairo_surface_write_to_png(actual, out.c_str()) == CAIRO_STATUS_SUCCESS)
    r.message += "; actual image written to " + out;
  else
    r.message += "; could not write the actual image to " + out;
  return r;
}

::testing::AssertionResult MatchesReferencePng(const CairoRenderTarget& rt, const std::string& reference_png,
                                               int tolerance, double max_fraction) {
  const PngCompareResult r = ComparePng(rt.Surface(), reference_png, tolerance, max_fraction);
  if (r.match) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << reference_png << ": " << r.message;
}

}  // namespace SOUI
