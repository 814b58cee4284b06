// Exact decimal text for price edits: a value is an integer count of units
// of 10^-places, so "0.1" + "0.2" is "0.3" and no binary floating point is
// ever involved.
#pragma once

#include <cstdint>

#include "framework/ctrl_attr_base.h"
#include "soui/sstring.h"

namespace QVStandardCtrls {

// At most this many decimal places, and 18 significant digits in all.
constexpr int kQVMaxDecimalPlaces = 9;

// Parses "[+-]digits[.digits]" (".5" and "5." included) at `places`
// decimal places into *units. False, with *units untouched, for anything
// else: empty text, a lone sign or point, more decimal places than
// `places`, or more than 18 digits.
QVSTDCTRLS_API bool ParseQVDecimal(const SOUI::SStringW& text, int places, int64_t* units);
// Decimal places a well-formed decimal text carries ("0.005" -> 3); -1
// for text ParseQVDecimal would not take.
QVSTDCTRLS_API int QVDecimalPlaces(const SOUI::SStringW& text);
// units at `places` decimal places, always with exactly that many ("-0.50").
QVSTDCTRLS_API SOUI::SStringW FormatQVDecimal(int64_t units, int places);
// One tick from value in direction dir (+1/-1); a value off the tick grid
// moves to the nearest grid point in that direction first.
QVSTDCTRLS_API int64_t StepQVDecimal(int64_t value, int64_t tick, int dir);

}  // namespace QVStandardCtrls
