#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "soui/sstring.h"

using namespace SOUI;

TEST(SStringW, SlicingClampsOutOfRangeCounts) {
  const SStringW s(L"LAYOUT:a:b");
  EXPECT_EQ(s.Left(6), L"LAYOUT");
  EXPECT_EQ(s.Mid(7), L"a:b");
  EXPECT_EQ(s.Left(100), s);
  EXPECT_EQ(s.Left(-3), L"");
  EXPECT_EQ(s.Right(3), L"a:b");
  EXPECT_EQ(s.Right(99), s);
  EXPECT_EQ(s.Mid(-5, 2), L"LA");
  EXPECT_EQ(s.Mid(8, 100), L":b");
  EXPECT_EQ(s.Mid(50), L"");
  EXPECT_EQ(s.Find(L':'), 6);
  EXPECT_EQ(s.Find(L':', 7), 8);
  EXPECT_EQ(s.Find(L"z"), -1);
  EXPECT_EQ(s.Find(L':', 99), -1);
  EXPECT_EQ(s.ReverseFind(L':'), 8);
}

TEST(SStringW, FormatTakesWideStringsForPercentS) {
  SStringW s;
  s.Format(L"%s, 0dp, %s, -0dp", L"30dp", L"-40dp");
  EXPECT_EQ(s, L"30dp, 0dp, -40dp, -0dp");
  s.Format(L"0,%f", 0.5);
  EXPECT_EQ(s, L"0,0.500000");
  s.Format(L"%d%c%%", 99, L'+');
  EXPECT_EQ(s, L"99+%");
  // Long output grows the buffer instead of truncating.
  const SStringW big(L'x', 5000);
  EXPECT_EQ(SStringW::Format2(L"[%s]", big.c_str()).GetLength(), 5002);
}

TEST(SStringW, ReplaceCompareAndCase) {
  SStringW s(L"a\\nb\\nc");
  EXPECT_EQ(s.Replace(L"\\n", L"\n"), 2);
  EXPECT_EQ(s, L"a\nb\nc");
  EXPECT_EQ(SStringW(L"QV_BUTTON").CompareNoCase(L"qv_button"), 0);
  EXPECT_LT(SStringW(L"abc").CompareNoCase(L"ABD"), 0);
  EXPECT_NE(SStringW(L"abc").Compare(L"ABC"), 0);
  EXPECT_EQ(SStringW(L"MiXeD").MakeLower(), L"mixed");
  EXPECT_EQ(SStringW(L"  pad \t").Trim(), L"pad");
  EXPECT_EQ(SStringW(L"").Replace(L"", L"x"), 0);
}

TEST(SStringW, Utf8RoundTripsChineseAndRejectsBrokenInput) {
  const SStringW zh(L"新建窗口");
  EXPECT_EQ(zh.ToUtf8(), std::string("\xE6\x96\xB0\xE5\xBB\xBA\xE7\xAA\x97\xE5\x8F\xA3"));
  EXPECT_EQ(SStringW::FromUtf8(zh.ToUtf8()), zh);
  // Truncated and invalid sequences become replacement characters, never a crash.
  EXPECT_EQ(SStringW::FromUtf8(std::string("a\xE6\x96")), SStringW(L"a\xFFFD"));
  EXPECT_EQ(SStringW::FromUtf8(std::string("\xFF" "b")), SStringW(L"\xFFFD" L"b"));
  EXPECT_EQ(SStringW::FromUtf8(std::string("\xC3\x28")).GetAt(0), L'\xFFFD');
  // Every width of encoding in one string; what no string can hold (a lone
  // surrogate, past U+10FFFF, a negative wchar_t) is written as U+FFFD.
  const wchar_t mixed[] = {L'a', 0xE9, 0x4E2D, 0x1F600, 0xD800, 0x110000, static_cast<wchar_t>(-1), L'z', 0};
  EXPECT_EQ(SStringW::ToUtf8(mixed), std::string("a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80"
                                                "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz"));
  EXPECT_EQ(SStringW::ToUtf8(std::wstring_view()), "");
}

// AssignUtf8 reuses one string for text of every length, with a non-ASCII
// character (or a broken one) anywhere in it or nowhere, and reads no byte
// past the length it is given.
TEST(SStringW, AssignUtf8MatchesFromUtf8AtEveryLengthAndPosition) {
  SStringW reused;
  for (size_t len = 0; len <= 20; ++len) {
    for (size_t at = 0; at <= len; ++at) {
      for (const char* odd : {"\xC3\xA9", "\xE6\x96\xB0", "\xFF"}) {
        std::string text(len, 'x');
        for (size_t i = 0; i < len; ++i) text[i] = static_cast<char>('a' + i);
        if (at < len) text.replace(at, 1, odd);
        const std::vector<char> exact(text.begin(), text.end());  // ASan sees a read past it
        reused.AssignUtf8(exact.data(), exact.size());
        ASSERT_EQ(reused, SStringW::FromUtf8(text)) << len << " " << at;
      }
    }
  }
  EXPECT_EQ(reused.AssignUtf8(nullptr, 5), L"");
}

TEST(SStringW, SplitKeepsEmptyPieces) {
  const auto parts = SplitString(L"a,,b,", L',');
  ASSERT_EQ(parts.size(), 4u);
  EXPECT_EQ(parts[1], L"");
  EXPECT_EQ(parts[3], L"");
}

struct IntCase {
  const wchar_t* text;
  int flags;
  BOOL ok;
  int64_t value;
};

class StrToIntTest : public ::testing::TestWithParam<IntCase> {};

TEST_P(StrToIntTest, ParsesLikeShlwapi) {
  const IntCase& c = GetParam();
  int64_t v64 = 12345;
  EXPECT_EQ(StrToInt64ExW(c.text, c.flags, &v64), c.ok);
  EXPECT_EQ(v64, c.value);
  int v32 = 12345;
  EXPECT_EQ(StrToIntExW(c.text, c.flags, &v32), c.ok);
  EXPECT_EQ(v32, static_cast<int>(static_cast<uint32_t>(c.value)));
}

INSTANTIATE_TEST_SUITE_P(
    Cases, StrToIntTest,
    ::testing::Values(IntCase{L"15", STIF_SUPPORT_HEX, TRUE, 15},
                      IntCase{L"0x10", STIF_SUPPORT_HEX, TRUE, 16},
                      IntCase{L"0X1f", STIF_SUPPORT_HEX, TRUE, 31},
                      IntCase{L"0x10", STIF_DEFAULT, TRUE, 0},  // hex not allowed: reads the 0
                      IntCase{L"  -42abc", STIF_DEFAULT, TRUE, -42},
                      IntCase{L"+7", STIF_DEFAULT, TRUE, 7},
                      IntCase{L"4294967296", STIF_DEFAULT, TRUE, 4294967296LL},
                      IntCase{L"abc", STIF_SUPPORT_HEX, FALSE, 0},
                      IntCase{L"", STIF_SUPPORT_HEX, FALSE, 0},
                      IntCase{L"-", STIF_DEFAULT, FALSE, 0},
                      IntCase{L"0x", STIF_SUPPORT_HEX, FALSE, 0},
                      IntCase{nullptr, STIF_DEFAULT, FALSE, 0}));

TEST(StrToInt, HexWrapsToThirtyTwoBits) {
  int v = 0;
  EXPECT_TRUE(StrToIntExW(L"0xFFFFFFFF", STIF_SUPPORT_HEX, &v));
  EXPECT_EQ(v, -1);
  EXPECT_FALSE(StrToIntExW(L"1", STIF_DEFAULT, nullptr) == FALSE);  // null output is allowed
}
