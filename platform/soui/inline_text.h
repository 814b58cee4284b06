// InlineText: the text a window shows. Prices, codes and short captions (up
// to kInlineChars characters) are kept inside the object, so a watchlist of
// labels costs no allocation for their texts; longer texts go to the heap,
// whose block is kept for the next text that fits in it.
#pragma once

#include <cstddef>

#include "soui/sstring.h"

namespace SOUI {

class InlineText {
 public:
  static constexpr int kInlineChars = 7;

  InlineText() { inline_[0] = L'\0'; }
  ~InlineText() {
    if (capacity_) delete[] heap_;
  }
  InlineText(const InlineText&) = delete;
  InlineText& operator=(const InlineText&) = delete;

  // len characters of text (which may lie inside this object's own text).
  void Assign(const wchar_t* text, int len);
  void Assign(const SStringW& text) { Assign(text.c_str(), text.GetLength()); }

  const wchar_t* c_str() const { return capacity_ ? heap_ : inline_; }
  int GetLength() const { return length_; }
  bool IsEmpty() const { return length_ == 0; }
  bool Equals(const SStringW& text) const;
  SStringW ToString() const { return SStringW(c_str(), length_); }

 private:
  int length_ = 0;
  int capacity_ = 0;  // characters the heap block holds; 0 while inline
  union {
    wchar_t inline_[kInlineChars + 1];
    wchar_t* heap_;
  };
};

}  // namespace SOUI
