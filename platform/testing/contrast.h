// Contrast between two colours as the WCAG defines it: 1 (the same
// luminance) to 21 (black on white). Readable text asks 4.5, large text and
// interface parts 3.
#pragma once

#include <algorithm>
#include <cmath>

#include "soui/wtypes.h"

namespace SOUI {
namespace test {

// Relative luminance of an sRGB colour; alpha is ignored.
inline double Luminance(COLORREF c) {
  const auto channel = [](int v) {
    const double s = v / 255.0;
    return s <= 0.04045 ? s / 12.92 : std::pow((s + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * channel(GetRValue(c)) + 0.7152 * channel(GetGValue(c)) + 0.0722 * channel(GetBValue(c));
}

inline double ContrastRatio(COLORREF a, COLORREF b) {
  const double la = Luminance(a), lb = Luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

}  // namespace test
}  // namespace SOUI
