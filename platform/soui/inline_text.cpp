#include "soui/inline_text.h"

#include <algorithm>
#include <cwchar>

namespace SOUI {

void InlineText::Assign(const wchar_t* text, int len) {
  len = text ? std::max(len, 0) : 0;
  wchar_t* block = capacity_ ? heap_ : inline_;
  const int room = capacity_ ? capacity_ : kInlineChars;
  if (len > room) {
    // A new block first: the text may be the old block's own.
    wchar_t* grown = new wchar_t[static_cast<size_t>(len) + 1];
    std::wmemcpy(grown, text, static_cast<size_t>(len));
    grown[len] = L'\0';
    if (capacity_) delete[] heap_;
    heap_ = grown;
    capacity_ = len;
    length_ = len;
    return;
  }
  // wmemmove: the text may overlap the block.
  std::wmemmove(block, text, static_cast<size_t>(len));
  block[len] = L'\0';
  length_ = len;
}

bool InlineText::Equals(const SStringW& text) const {
  return text.GetLength() == length_ && std::wmemcmp(c_str(), text.c_str(), static_cast<size_t>(length_)) == 0;
}

}  // namespace SOUI
