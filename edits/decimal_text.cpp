#include "edits/decimal_text.h"

#include <algorithm>

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

constexpr int kMaxDigits = 18;  // 10^18 fits in int64_t with room for a tick

// Floor division for a positive divisor.
int64_t FloorDiv(int64_t a, int64_t b) { return a / b - ((a % b != 0) && (a < 0)); }

}  // namespace

int QVDecimalPlaces(const SStringW& text) {
  int i = 0, digits = 0, places = -1;
  if (text.GetLength() > 0 && (text[0] == L'-' || text[0] == L'+')) i = 1;
  for (; i < text.GetLength(); ++i) {
    const wchar_t c = text[i];
    if (c >= L'0' && c <= L'9') {
      ++digits;
      if (places >= 0) ++places;
    } else if (c == L'.' && places < 0) {
      places = 0;
    } else {
      return -1;
    }
  }
  if (digits == 0 || digits > kMaxDigits) return -1;
  return std::max(places, 0);
}

bool ParseQVDecimal(const SStringW& text, int places, int64_t* units) {
  if (places < 0 || places > kQVMaxDecimalPlaces) return false;
  const int have = QVDecimalPlaces(text);
  if (have < 0 || have > places) return false;
  // At most 18 digits overall, scaling included, so that neither the
  // parse nor a later step can overflow; longer text is not a value.
  constexpr int64_t kMaxUnits = 999999999999999999LL;
  int64_t v = 0;
  bool negative = false;
  for (int i = 0; i < text.GetLength(); ++i) {
    const wchar_t c = text[i];
    if (c == L'-') negative = true;
    if (c < L'0' || c > L'9') continue;
    if (v > (kMaxUnits - (c - L'0')) / 10) return false;
    v = v * 10 + (c - L'0');
  }
  for (int i = have; i < places; ++i) {
    if (v > kMaxUnits / 10) return false;
    v *= 10;
  }
  if (units) *units = negative ? -v : v;
  return true;
}

SStringW FormatQVDecimal(int64_t units, int places) {
  places = std::max(0, std::min(places, kQVMaxDecimalPlaces));
  const bool negative = units < 0;
  // Magnitudes stay below 10^18 (ParseQVDecimal), so negation is safe.
  uint64_t mag = negative ? static_cast<uint64_t>(-(units + 1)) + 1 : static_cast<uint64_t>(units);
  std::wstring digits;
  do {
    digits.insert(digits.begin(), static_cast<wchar_t>(L'0' + mag % 10));
    mag /= 10;
  } while (mag != 0);
  if (static_cast<int>(digits.size()) <= places) digits.insert(0, places + 1 - digits.size(), L'0');
  if (places > 0) digits.insert(digits.size() - places, 1, L'.');
  if (negative) digits.insert(0, 1, L'-');
  return SStringW(digits.c_str());
}

int64_t StepQVDecimal(int64_t value, int64_t tick, int dir) {
  if (tick <= 0 || dir == 0) return value;
  const int64_t below = FloorDiv(value, tick) * tick;
  if (below != value) return dir > 0 ? below + tick : below;
  return dir > 0 ? value + tick : value - tick;
}

}  // namespace QVStandardCtrls
