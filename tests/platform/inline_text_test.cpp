#include "soui/inline_text.h"

#include <gtest/gtest.h>

#include <string>

namespace SOUI {
namespace {

std::wstring Of(const InlineText& t) { return std::wstring(t.c_str(), static_cast<size_t>(t.GetLength())); }

TEST(InlineTextTest, KeepsTextsOnEitherSideOfTheInlineLimit) {
  InlineText t;
  EXPECT_TRUE(t.IsEmpty());
  EXPECT_STREQ(t.c_str(), L"");
  // Short, at the limit, one past it, much longer, then short again in the
  // kept block: each terminated and compared by content.
  const std::wstring texts[] = {L"12.34", std::wstring(InlineText::kInlineChars, L'7'),
                                std::wstring(InlineText::kInlineChars + 1, L'8'), std::wstring(300, L'x'), L"-0.5%", L""};
  for (const std::wstring& s : texts) {
    t.Assign(s.c_str(), static_cast<int>(s.size()));
    EXPECT_EQ(Of(t), s);
    EXPECT_EQ(t.c_str()[s.size()], L'\0');
    EXPECT_TRUE(t.Equals(SStringW(s)));
    EXPECT_FALSE(t.Equals(SStringW(s + L"!")));
    EXPECT_EQ(t.ToString(), SStringW(s));
  }
}

TEST(InlineTextTest, AssignsFromItsOwnCharacters) {
  InlineText t;
  for (const wchar_t* start : {L"abcdef", L"a long text that lives on the heap"}) {
    t.Assign(start, static_cast<int>(std::wcslen(start)));
    const std::wstring tail(t.c_str() + 2);
    t.Assign(t.c_str() + 2, t.GetLength() - 2);
    EXPECT_EQ(Of(t), tail);
  }
}

TEST(InlineTextTest, NullOrNegativeLengthIsEmpty) {
  InlineText t;
  t.Assign(L"price", 5);
  t.Assign(nullptr, 4);
  EXPECT_TRUE(t.IsEmpty());
  t.Assign(L"price", -3);
  EXPECT_TRUE(t.IsEmpty());
  EXPECT_STREQ(t.c_str(), L"");
}

}  // namespace
}  // namespace SOUI
