// SStringW: the toolkit's wide string, with the members the controls use.
// Backed by std::wstring; converts implicitly to const wchar_t* as the
// toolkit's string does, so it can be handed to C-style APIs.
#pragma once

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "soui/wtypes.h"

namespace SOUI {

class SStringW {
 public:
  SStringW() = default;
  SStringW(const wchar_t* s) : s_(s ? s : L"") {}
  SStringW(const wchar_t* s, int len) : s_(s ? std::wstring(s, static_cast<size_t>(std::max(len, 0))) : L"") {}
  SStringW(const std::wstring& s) : s_(s) {}
  SStringW(std::wstring&& s) : s_(std::move(s)) {}
  SStringW(wchar_t ch, int repeat = 1) : s_(static_cast<size_t>(std::max(repeat, 0)), ch) {}

  // printf-style formatting where %s and %c take wide arguments (as on Windows).
  static SStringW Format2(const wchar_t* fmt, ...);
  void Format(const wchar_t* fmt, ...);
  void AppendFormat(const wchar_t* fmt, ...);

  static SStringW FromUtf8(const std::string& utf8);
  static SStringW FromUtf8(const char* utf8);
  std::string ToUtf8() const;
  // Code points a string cannot hold (surrogates, beyond U+10FFFF) become U+FFFD.
  static std::string ToUtf8(std::wstring_view text);
  // Replaces the text with len bytes of UTF-8, keeping the buffer when it is
  // large enough (a reader reusing one string allocates once).
  SStringW& AssignUtf8(const char* utf8, size_t len);

  int GetLength() const { return static_cast<int>(s_.size()); }
  bool IsEmpty() const { return s_.empty(); }
  void Empty() { s_.clear(); }
  const wchar_t* c_str() const { return s_.c_str(); }
  operator const wchar_t*() const { return s_.c_str(); }
  const std::wstring& str() const { return s_; }
  wchar_t GetAt(int i) const { return (i >= 0 && i < GetLength()) ? s_[static_cast<size_t>(i)] : L'\0'; }
  void SetAt(int i, wchar_t c) { if (i >= 0 && i < GetLength()) s_[static_cast<size_t>(i)] = c; }
  wchar_t operator[](int i) const { return GetAt(i); }

  // Out-of-range counts clamp rather than fail, as the toolkit's string does.
  SStringW Left(int n) const;
  SStringW Right(int n) const;
  SStringW Mid(int first) const;
  SStringW Mid(int first, int count) const;

  int Find(wchar_t ch, int start = 0) const;
  int Find(const wchar_t* sub, int start = 0) const;
  int ReverseFind(wchar_t ch) const;
  int Replace(const wchar_t* from, const wchar_t* to);
  int Replace(wchar_t from, wchar_t to);
  int Remove(wchar_t ch);
  int Insert(int index, const wchar_t* text);
  int Delete(int index, int count = 1);

  int Compare(const wchar_t* other) const;
  int CompareNoCase(const wchar_t* other) const;
  SStringW& MakeLower();
  SStringW& MakeUpper();
  SStringW& Trim();
  SStringW& TrimLeft();
  SStringW& TrimRight();
  SStringW& Trim(wchar_t ch);

  SStringW& operator=(const wchar_t* s) { s_ = s ? s : L""; return *this; }
  SStringW& operator+=(const SStringW& o) { s_ += o.s_; return *this; }
  SStringW& operator+=(const wchar_t* o) { if (o) s_ += o; return *this; }
  SStringW& operator+=(wchar_t c) { s_ += c; return *this; }
  SStringW& Append(const wchar_t* o) { return *this += o; }

  friend SStringW operator+(const SStringW& a, const SStringW& b) { return SStringW(a.s_ + b.s_); }
  friend SStringW operator+(const SStringW& a, const wchar_t* b) { SStringW r(a); r += b; return r; }
  friend SStringW operator+(const wchar_t* a, const SStringW& b) { SStringW r(a); r += b; return r; }
  friend SStringW operator+(const SStringW& a, wchar_t c) { SStringW r(a); r += c; return r; }
  friend bool operator==(const SStringW& a, const SStringW& b) { return a.s_ == b.s_; }
  friend bool operator==(const SStringW& a, const wchar_t* b) { return a.s_ == (b ? b : L""); }
  friend bool operator==(const wchar_t* a, const SStringW& b) { return b == a; }
  friend bool operator!=(const SStringW& a, const SStringW& b) { return !(a == b); }
  friend bool operator!=(const SStringW& a, const wchar_t* b) { return !(a == b); }
  friend bool operator!=(const wchar_t* a, const SStringW& b) { return !(b == a); }
  friend bool operator<(const SStringW& a, const SStringW& b) { return a.s_ < b.s_; }

 private:
  std::wstring s_;
};

using SStringT = SStringW;

// Readable test failure messages (GoogleTest finds this through ADL).
inline void PrintTo(const SStringW& s, std::ostream* os) { *os << '"' << s.ToUtf8() << '"'; }

// Splits on a separator; empty pieces are kept ("a,,b" gives three parts).
std::vector<SStringW> SplitString(const SStringW& text, wchar_t sep);

// Case-insensitive comparison of attribute and element names.
bool EqualsNoCase(const wchar_t* a, const wchar_t* b);

// White space beyond ASCII, as iswspace says.
bool IsWideBlankChar(wchar_t c);
// White space as iswspace says, with ASCII decided without the locale:
// attribute values are parsed by the thousand.
inline bool IsBlankChar(wchar_t c) {
  if (c < 0x80) return c == L' ' || (c >= L'\t' && c <= L'\r');
  return IsWideBlankChar(c);
}
// Narrows [b, e) to leave out leading and trailing white space.
inline void TrimBlanks(const wchar_t*& b, const wchar_t*& e) {
  while (b < e && IsBlankChar(*b)) ++b;
  while (e > b && IsBlankChar(e[-1])) --e;
}

struct SStringNoCaseLess {
  bool operator()(const SStringW& a, const SStringW& b) const { return a.CompareNoCase(b) < 0; }
};

}  // namespace SOUI

// Win32 shlwapi conversions. [spaces][sign]digits, or with STIF_SUPPORT_HEX
// [spaces][sign]0x hexdigits. A valid prefix is converted and the rest ignored.
// On failure the output is set to 0 and FALSE returned. Values wrap to the
// target width, so "0xFFFFFFFF" reads as -1.
constexpr int STIF_DEFAULT = 0;
constexpr int STIF_SUPPORT_HEX = 1;
BOOL StrToIntExW(const wchar_t* text, int flags, int* out);
BOOL StrToInt64ExW(const wchar_t* text, int flags, int64_t* out);
