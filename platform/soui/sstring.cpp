#include "soui/sstring.h"

#include <cstdarg>
#include <cstdint>
#include <cstring>
#include <cwchar>
#include <cwctype>

namespace SOUI {
namespace {

// Windows wide printf reads %s and %c as wide; glibc reads them as narrow.
// Rewrite the conversions so that format strings written for the toolkit work.
std::wstring TranslateFormat(const wchar_t* fmt) {
  std::wstring out;
  for (const wchar_t* p = fmt; *p; ++p) {
    out += *p;
    if (*p != L'%') continue;
    ++p;
    if (*p == L'%') { out += *p; continue; }
    // Copy flags, width, precision; note an explicit length modifier.
    bool has_length = false;
    while (*p && std::wcschr(L"-+ #0123456789.*hlLqjzt", *p)) {
      if (std::wcschr(L"hlLqjzt", *p)) has_length = true;
      out += *p++;
    }
    if (!*p) break;
    if ((*p == L's' || *p == L'c') && !has_length) out += L'l';
    if (*p == L'S') { out += L's'; continue; }  // %S is the narrow form on Windows
    if (*p == L'C') { out += L'c'; continue; }
    out += *p;
  }
  return out;
}

std::wstring VFormat(const wchar_t* fmt, va_list args) {
  if (!fmt) return std::wstring();
  const std::wstring translated = TranslateFormat(fmt);
  std::vector<wchar_t> buf(256);
  for (;;) {
    va_list copy;
    va_copy(copy, args);
    const int n = std::vswprintf(buf.data(), buf.size(), translated.c_str(), copy);
    va_end(copy);
    if (n >= 0 && static_cast<size_t>(n) < buf.size()) return std::wstring(buf.data(), static_cast<size_t>(n));
    if (buf.size() > (1u << 24)) return std::wstring();  // malformed format; give up
    buf.resize(buf.size() * 4);
  }
}

int Clamp(int v, int lo, int hi) { return std::max(lo, std::min(v, hi)); }

}  // namespace

SStringW SStringW::Format2(const wchar_t* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  SStringW r(VFormat(fmt, args));
  va_end(args);
  return r;
}

void SStringW::Format(const wchar_t* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  s_ = VFormat(fmt, args);
  va_end(args);
}

void SStringW::AppendFormat(const wchar_t* fmt, ...) {
  va_list args;
  va_start(args, fmt);
  s_ += VFormat(fmt, args);
  va_end(args);
}

SStringW SStringW::FromUtf8(const char* utf8) {
  if (!utf8) return SStringW();
  // Attribute names and most values are plain ASCII: widen them directly,
  // without a narrow copy first.
  const char* p = utf8;
  while (*p && static_cast<unsigned char>(*p) < 0x80) ++p;
  if (!*p) return SStringW(std::wstring(utf8, p));
  return FromUtf8(std::string(utf8));
}

SStringW& SStringW::AssignUtf8(const char* utf8, size_t len) {
  if (!utf8) len = 0;
  // ASCII, checked eight bytes at a time, is widened in place by a loop the
  // compiler vectorises; anything else is decoded.
  uint64_t high = 0;
  size_t i = 0;
  for (; i + 8 <= len; i += 8) {
    uint64_t word;
    std::memcpy(&word, utf8 + i, 8);
    high |= word;
  }
  for (; i < len; ++i) high |= static_cast<unsigned char>(utf8[i]);
  if (high & 0x8080808080808080ull) {
    s_ = FromUtf8(std::string(utf8, len)).s_;
    return *this;
  }
  s_.resize(len);
  wchar_t* out = s_.data();
  for (i = 0; i < len; ++i) out[i] = static_cast<wchar_t>(static_cast<unsigned char>(utf8[i]));
  return *this;
}

SStringW SStringW::FromUtf8(const std::string& in) {
  std::wstring out;
  out.reserve(in.size());
  size_t i = 0;
  while (i < in.size()) {
    const unsigned char c = static_cast<unsigned char>(in[i]);
    uint32_t cp = 0;
    int extra = 0;
    if (c < 0x80) { cp = c; }
    else if ((c & 0xE0) == 0xC0) { cp = c & 0x1F; extra = 1; }
    else if ((c & 0xF0) == 0xE0) { cp = c & 0x0F; extra = 2; }
    else if ((c & 0xF8) == 0xF0) { cp = c & 0x07; extra = 3; }
    else { out += L'\xFFFD'; ++i; continue; }
    if (i + static_cast<size_t>(extra) >= in.size()) {
      // A sequence cut short by the end is one replacement character; a
      // byte in it that cannot continue it is decoded on its own.
      out += L'\xFFFD';
      ++i;
      while (i < in.size() && (static_cast<unsigned char>(in[i]) & 0xC0) == 0x80) ++i;
      continue;
    }
    bool ok = true;
    for (int k = 1; k <= extra; ++k) {
      const unsigned char cc = static_cast<unsigned char>(in[i + static_cast<size_t>(k)]);
      if ((cc & 0xC0) != 0x80) { ok = false; break; }
      cp = (cp << 6) | (cc & 0x3F);
    }
    if (!ok || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
      out += L'\xFFFD';
      ++i;
      continue;
    }
    out += static_cast<wchar_t>(cp);
    i += static_cast<size_t>(extra) + 1;
  }
  return SStringW(std::move(out));
}

std::string SStringW::ToUtf8() const { return ToUtf8(s_); }

std::string SStringW::ToUtf8(std::wstring_view text) {
  // Sized first, then written without a check per byte: whole layouts pass
  // here. Replaced code points take three bytes, like U+FFFD.
  size_t bytes = 0;
  for (wchar_t wc : text) {
    const uint32_t cp = static_cast<uint32_t>(wc);
    bytes += cp < 0x80 ? 1 : cp < 0x800 ? 2 : (cp < 0x10000 || cp > 0x10FFFF) ? 3 : 4;
  }
  std::string out(bytes, '\0');
  if (bytes == text.size()) {  // all ASCII
    for (size_t i = 0; i < bytes; ++i) out[i] = static_cast<char>(text[i]);
    return out;
  }
  auto code_point = [](wchar_t wc) {
    const uint32_t cp = static_cast<uint32_t>(wc);
    return cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF) ? 0xFFFDu : cp;
  };
  char* p = out.data();
  for (wchar_t wc : text) {
    const uint32_t cp = code_point(wc);
    if (cp < 0x80) {
      *p++ = static_cast<char>(cp);
    } else if (cp < 0x800) {
      *p++ = static_cast<char>(0xC0 | (cp >> 6));
      *p++ = static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
      *p++ = static_cast<char>(0xE0 | (cp >> 12));
      *p++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
      *p++ = static_cast<char>(0x80 | (cp & 0x3F));
    } else {
      *p++ = static_cast<char>(0xF0 | (cp >> 18));
      *p++ = static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
      *p++ = static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
      *p++ = static_cast<char>(0x80 | (cp & 0x3F));
    }
  }
  return out;
}

SStringW SStringW::Left(int n) const { return SStringW(s_.substr(0, static_cast<size_t>(Clamp(n, 0, GetLength())))); }

SStringW SStringW::Right(int n) const {
  const int count = Clamp(n, 0, GetLength());
  return SStringW(s_.substr(static_cast<size_t>(GetLength() - count)));
}

SStringW SStringW::Mid(int first) const { return Mid(first, GetLength()); }

SStringW SStringW::Mid(int first, int count) const {
  first = Clamp(first, 0, GetLength());
  count = Clamp(count, 0, GetLength() - first);
  return SStringW(s_.substr(static_cast<size_t>(first), static_cast<size_t>(count)));
}

int SStringW::Find(wchar_t ch, int start) const {
  if (start < 0 || start >= GetLength()) return -1;
  const size_t pos = s_.find(ch, static_cast<size_t>(start));
  return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int SStringW::Find(const wchar_t* sub, int start) const {
  if (!sub || start < 0 || start > GetLength()) return -1;
  const size_t pos = s_.find(sub, static_cast<size_t>(start));
  return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int SStringW::ReverseFind(wchar_t ch) const {
  const size_t pos = s_.rfind(ch);
  return pos == std::wstring::npos ? -1 : static_cast<int>(pos);
}

int SStringW::Replace(const wchar_t* from, const wchar_t* to) {
  if (!from || !*from) return 0;
  const std::wstring f(from), t(to ? to : L"");
  int count = 0;
  size_t pos = 0;
  while ((pos = s_.find(f, pos)) != std::wstring::npos) {
    s_.replace(pos, f.size(), t);
    pos += t.size();
    ++count;
  }
  return count;
}

int SStringW::Replace(wchar_t from, wchar_t to) {
  int count = 0;
  for (auto& c : s_) {
    if (c == from) { c = to; ++count; }
  }
  return count;
}

int SStringW::Remove(wchar_t ch) {
  const size_t before = s_.size();
  s_.erase(std::remove(s_.begin(), s_.end(), ch), s_.end());
  return static_cast<int>(before - s_.size());
}

int SStringW::Insert(int index, const wchar_t* text) {
  if (text) s_.insert(static_cast<size_t>(Clamp(index, 0, GetLength())), text);
  return GetLength();
}

int SStringW::Delete(int index, int count) {
  if (index >= 0 && index < GetLength() && count > 0) s_.erase(static_cast<size_t>(index), static_cast<size_t>(count));
  return GetLength();
}

int SStringW::Compare(const wchar_t* other) const { return s_.compare(other ? other : L""); }

int SStringW::CompareNoCase(const wchar_t* other) const {
  const wchar_t* a = s_.c_str();
  const wchar_t* b = other ? other : L"";
  // Names are nearly always ASCII: fold those inline, ask the locale otherwise.
  auto fold = [](wchar_t c) -> wint_t {
    if (c < 0x80) return (c >= L'A' && c <= L'Z') ? static_cast<wint_t>(c + 32) : static_cast<wint_t>(c);
    return std::towlower(static_cast<wint_t>(c));
  };
  for (;; ++a, ++b) {
    const wint_t ca = fold(*a);
    const wint_t cb = fold(*b);
    if (ca != cb) return ca < cb ? -1 : 1;
    if (!ca) return 0;
  }
}

SStringW& SStringW::MakeLower() {
  for (auto& c : s_) c = static_cast<wchar_t>(std::towlower(static_cast<wint_t>(c)));
  return *this;
}

SStringW& SStringW::MakeUpper() {
  for (auto& c : s_) c = static_cast<wchar_t>(std::towupper(static_cast<wint_t>(c)));
  return *this;
}

SStringW& SStringW::TrimLeft() {
  size_t i = 0;
  while (i < s_.size() && IsBlankChar(s_[i])) ++i;
  s_.erase(0, i);
  return *this;
}

SStringW& SStringW::TrimRight() {
  size_t n = s_.size();
  while (n > 0 && IsBlankChar(s_[n - 1])) --n;
  s_.resize(n);
  return *this;
}

SStringW& SStringW::Trim() { return TrimRight().TrimLeft(); }

bool IsWideBlankChar(wchar_t c) { return std::iswspace(static_cast<wint_t>(c)) != 0; }

SStringW& SStringW::Trim(wchar_t ch) {
  size_t b = 0, e = s_.size();
  while (b < e && s_[b] == ch) ++b;
  while (e > b && s_[e - 1] == ch) --e;
  s_ = s_.substr(b, e - b);
  return *this;
}

std::vector<SStringW> SplitString(const SStringW& text, wchar_t sep) {
  std::vector<SStringW> parts;
  const std::wstring& s = text.str();
  size_t start = 0;
  for (;;) {
    const size_t pos = s.find(sep, start);
    if (pos == std::wstring::npos) {
      parts.emplace_back(s.substr(start));
      break;
    }
    parts.emplace_back(s.substr(start, pos - start));
    start = pos + 1;
  }
  return parts;
}

bool EqualsNoCase(const wchar_t* a, const wchar_t* b) {
  return SStringW(a).CompareNoCase(b) == 0;
}

}  // namespace SOUI

namespace {

bool ParseInteger(const wchar_t* p, int flags, uint64_t* value) {
  *value = 0;
  if (!p) return false;
  while (*p == L' ' || *p == L'\t' || *p == L'\n' || *p == L'\r') ++p;
  bool negative = false;
  if (*p == L'-' || *p == L'+') {
    negative = *p == L'-';
    ++p;
  }
  uint64_t v = 0;
  bool any = false;
  if ((flags & STIF_SUPPORT_HEX) && p[0] == L'0' && (p[1] == L'x' || p[1] == L'X')) {
    p += 2;
    for (;; ++p) {
      int d;
      if (*p >= L'0' && *p <= L'9') d = *p - L'0';
      else if (*p >= L'a' && *p <= L'f') d = *p - L'a' + 10;
      else if (*p >= L'A' && *p <= L'F') d = *p - L'A' + 10;
      else break;
      v = v * 16 + static_cast<uint64_t>(d);
      any = true;
    }
  } else {
    for (; *p >= L'0' && *p <= L'9'; ++p) {
      v = v * 10 + static_cast<uint64_t>(*p - L'0');
      any = true;
    }
  }
  if (!any) return false;
  *value = negative ? (~v + 1) : v;  // two's complement negation, wrapping
  return true;
}

}  // namespace

BOOL StrToIntExW(const wchar_t* text, int flags, int* out) {
  uint64_t v = 0;
  const bool ok = ParseInteger(text, flags, &v);
  if (out) *out = static_cast<int>(static_cast<uint32_t>(v));
  return ok ? TRUE : FALSE;
}

BOOL StrToInt64ExW(const wchar_t* text, int flags, int64_t* out) {
  uint64_t v = 0;
  const bool ok = ParseInteger(text, flags, &v);
  if (out) *out = static_cast<int64_t>(v);
  return ok ? TRUE : FALSE;
}
