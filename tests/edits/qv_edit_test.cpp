#include "edits/qv_edit.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "edits/decimal_text.h"

#include "library_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SStringW;

class QVEditTest : public test::LibraryTestBase {
 protected:
  CQVEdit* Make(const wchar_t* attrs) {
    CreateHostWithChildren((SStringW(L"<qv_edit name=\"e\" pos=\"10,10,@200,@24\" ") + attrs + L"/>").c_str());
    CQVEdit* e = Find<CQVEdit>(L"e");
    if (e) e->SetFocus();
    return e;
  }
  void Ctrl(UINT vk) {
    gen().PressKey(VK_CONTROL);
    gen().PressAndReleaseKey(vk);
    gen().ReleaseKey(VK_CONTROL);
  }
  void Paste(const SStringW& text) {
    app_->GetClipboard().SetText(text);
    Ctrl('V');
  }
  int Errors() const { return CountEvents(EVT_QVEDIT_INPUT_ERROR); }
  static SStringW Sel(CQVEdit* e) {
    long s = 0, t = 0;
    e->GetSel(s, t);
    return SStringW().Format2(L"%ld-%ld", s, t);
  }
};

// ---- each built-in filter, typed through the real input path ----------------------

struct TypingCase {
  const char* name;
  const wchar_t* filter;
  const wchar_t* text;  // set before typing, unfiltered
  long sel_start, sel_end;
  const wchar_t* typed;
  const wchar_t* expected;
  int errors;
};

class QVEditTypingTest : public QVEditTest, public ::testing::WithParamInterface<TypingCase> {};

TEST_P(QVEditTypingTest, JudgesTheCandidateText) {
  const TypingCase& c = GetParam();
  CQVEdit* e = Make((SStringW(L"filter=\"") + c.filter + L"\"").c_str());
  ASSERT_NE(e, nullptr);
  e->SetWindowText(c.text);
  e->SetSel(c.sel_start, c.sel_end);
  ClearEvents();
  gen().Type(c.typed);
  EXPECT_EQ(e->GetWindowText(), c.expected);
  EXPECT_EQ(Errors(), c.errors);
}

const TypingCase kTypingCases[] = {
    {"FloatPointIntoEmpty", L"float", L"", -1, -1, L".", L"", 1},
    {"FloatMinusIntoEmpty", L"float", L"", -1, -1, L"-", L"", 1},
    {"FloatDigitAfterPoint", L"float", L"1.", -1, -1, L"5", L"1.5", 0},
    {"FloatLeadingPointBeforeDigits", L"float", L"5", 0, 0, L".", L".5", 0},
    {"FloatSecondPointAtEnd", L"float", L"1.5", -1, -1, L".", L"1.5", 1},
    {"FloatSecondPointAtStart", L"float", L"1.5", 0, 0, L".", L"1.5", 1},
    {"FloatSecondPointInside", L"float", L"12.5", 1, 1, L".", L"12.5", 1},
    {"FloatSignBeforeDigits", L"float", L"5", 0, 0, L"-", L"-5", 0},
    {"FloatManyDecimals", L"float", L"0.", -1, -1, L"123456789", L"0.123456789", 0},
    {"NumberDigitOverWholeSelection", L"number", L"x.y", 0, -1, L"7", L"7", 0},
    {"NumberRejectsSignAndPoint", L"number", L"12", -1, -1, L"-.a", L"12", 3},
    {"IntegerMinusFirst", L"integer", L"", -1, -1, L"-12", L"-12", 0},
    {"IntegerMinusBeforeDigits", L"integer", L"12", 0, 0, L"+", L"+12", 0},
    {"IntegerMinusAfterDigit", L"integer", L"1", -1, -1, L"-", L"1", 1},
    {"IntegerSecondSign", L"integer", L"-", -1, -1, L"-", L"-", 1},
    {"EnUpperConverts", L"EnUpper", L"", -1, -1, L"aB1 c", L"ABC", 2},
    {"EnLowerConverts", L"EnLower", L"", -1, -1, L"aB1 c", L"abc", 2},
    {"NonAsciiNeverFilteredWhenTyped", L"number", L"1", -1, -1, L"\x4E2D\x00E9", L"1\x4E2D\x00E9", 0},
    {"NoFilterForNull", L"null", L"", -1, -1, L"x.-", L"x.-", 0},
};

INSTANTIATE_TEST_SUITE_P(Filters, QVEditTypingTest, ::testing::ValuesIn(kTypingCases),
                         [](const ::testing::TestParamInfo<TypingCase>& i) { return i.param.name; });

TEST_F(QVEditTest, BackspacePassesUnderEveryFilter) {
  // Each text is valid; deleting its last character leaves one its filter
  // would reject if it were judged.
  const wchar_t* const kCases[][2] = {{L"float", L"-5"}, {L"number", L"5"}, {L"integer", L"-"}, {L"EnUpper", L"A"}};
  for (const auto& c : kCases) {
    CQVEdit* e = Make((SStringW(L"filter=\"") + c[0] + L"\"").c_str());
    e->SetWindowText(c[1]);
    e->SetSel(-1, -1);
    ClearEvents();
    gen().Char(L'\b');
    EXPECT_EQ(e->GetWindowText(), SStringW(c[1]).Left(SStringW(c[1]).GetLength() - 1)) << c[0];
    EXPECT_EQ(Errors(), 0) << c[0];
  }
  // The slot's own backspace rule: "\b" passes whatever the text.
  QVEditFilter f;
  ASSERT_TRUE(FindQVEditFilter(L"number", &f));
  SStringW bs(L'\b');
  EXPECT_FALSE(f(L"", bs, 0, 0));
}

TEST_F(QVEditTest, RejectedKeyKeepsTextAndSelection) {
  CQVEdit* e = Make(L"filter=\"number\"");
  e->SetWindowText(L"1234");
  e->SetSel(1, 3);
  gen().Char(L'x');
  EXPECT_EQ(e->GetWindowText(), L"1234");
  EXPECT_EQ(Sel(e), L"1-3");
  EXPECT_EQ(Errors(), 1);
}

TEST_F(QVEditTest, FilterValuesOutsideTheTableChangeNothing) {
  CQVEdit* e = Make(L"filter=\"float\"");
  // Compared case-sensitively: "Float" is not a value, so float stays.
  e->SetAttribute(L"filter", L"Float", FALSE);
  e->SetAttribute(L"filter", L"digits", FALSE);
  gen().Type(L"a1");
  EXPECT_EQ(e->GetWindowText(), L"1");
  EXPECT_EQ(Errors(), 1);
  // "0" empties the slot.
  e->SetAttribute(L"filter", L"0", FALSE);
  EXPECT_FALSE(e->HasFilter());
  gen().Type(L"a");
  EXPECT_EQ(e->GetWindowText(), L"1a");
}

// ---- the host's own filter ---------------------------------------------------------

TEST_F(QVEditTest, HostFilterMayRewriteTheInsertedText) {
  CQVEdit* e = Make(L"");
  std::vector<SStringW> seen;
  e->SetFilter([&seen](const SStringW& text, SStringW& inserted, int start, int end) {
    seen.push_back(SStringW().Format2(L"%ls|%ls|%d-%d", text.c_str(), inserted.c_str(), start, end));
    if (inserted == L",") inserted = L".";  // a European keyboard's decimal key
    return inserted == L"x";                // true rejects
  });
  gen().Type(L"1,5x");
  EXPECT_EQ(e->GetWindowText(), L"1.5");
  EXPECT_EQ(Errors(), 1);
  ASSERT_EQ(seen.size(), 4u);
  EXPECT_EQ(seen[1], L"1|,|1-1");
  // The rewritten character is one undo step of its own.
  Ctrl('Z');
  EXPECT_EQ(e->GetWindowText(), L"1.");
  e->RemoveFilter();
  gen().Type(L"x");
  EXPECT_EQ(e->GetWindowText(), L"1.x");
}

TEST_F(QVEditTest, HostFilterThatChangesTheEditLeavesItConsistent) {
  CQVEdit* e = Make(L"");
  e->SetWindowText(L"123");
  e->SetSel(1, 2);
  // Clears the text it was asked about, then accepts: the character goes in
  // at the selection as it stands afterwards.
  e->SetFilter([e](const SStringW&, SStringW&, int, int) {
    e->SetWindowText(L"");
    return false;
  });
  gen().Char(L'4');
  EXPECT_EQ(e->GetWindowText(), L"4");
  EXPECT_EQ(Sel(e), L"1-1");
  // Removes itself while running.
  e->SetFilter([e](const SStringW&, SStringW&, int, int) {
    e->RemoveFilter();
    return false;
  });
  gen().Char(L'5');
  EXPECT_EQ(e->GetWindowText(), L"45");
  EXPECT_FALSE(e->HasFilter());
  // Throws: counted as a rejection.
  e->SetFilter([](const SStringW&, SStringW&, int, int) -> bool { throw std::runtime_error("host bug"); });
  gen().Char(L'6');
  app_->GetClipboard().SetText(L"7");
  Ctrl('V');
  EXPECT_EQ(e->GetWindowText(), L"45");
  EXPECT_EQ(Errors(), 2);
}

// ---- paste and input method --------------------------------------------------------

TEST_F(QVEditTest, PasteIsJudgedWholeAndRejectedOnce) {
  CQVEdit* e = Make(L"filter=\"float\"");
  e->SetWindowText(L"12");
  e->SetSel(1, 1);
  Paste(L"3.4.5");  // would make a second point: all or nothing
  EXPECT_EQ(e->GetWindowText(), L"12");
  EXPECT_EQ(Sel(e), L"1-1");
  EXPECT_EQ(Errors(), 1);
  Paste(L".5");
  EXPECT_EQ(e->GetWindowText(), L"1.52");
  // A single-line edit keeps the first line of the clipboard; that is what
  // gets judged.
  e->SetSel(-1, -1);
  Paste(L"0\r\nnot a number");
  EXPECT_EQ(e->GetWindowText(), L"1.520");
  EXPECT_EQ(Errors(), 1);
  // Undo takes the accepted paste back as one step.
  Ctrl('Z');
  EXPECT_EQ(e->GetWindowText(), L"1.52");
}

TEST_F(QVEditTest, CommittedInputMethodTextGoesThroughTheFilter) {
  CQVEdit* e = Make(L"filter=\"EnUpper\"");
  host()->OnImeComposition(L"ab", 2);
  EXPECT_EQ(e->GetWindowText(), L"");  // composing is not inserting
  host()->OnImeCommit(L"ab");
  EXPECT_EQ(e->GetWindowText(), L"AB");
  // A committed CJK word is judged like a paste, unlike a typed CJK key.
  host()->OnImeCommit(L"\x4E2D\x6587");
  EXPECT_EQ(e->GetWindowText(), L"AB");
  EXPECT_EQ(Errors(), 1);
  EXPECT_EQ(e->GetComposition(), L"");
}

TEST_F(QVEditTest, UndoAfterFilteredInsertsRestoresEachAcceptedStep) {
  CQVEdit* e = Make(L"filter=\"integer\"");
  gen().Type(L"-4x2");
  EXPECT_EQ(e->GetWindowText(), L"-42");
  Ctrl('Z');
  EXPECT_EQ(e->GetWindowText(), L"-4");
  Ctrl('Z');
  Ctrl('Z');
  EXPECT_EQ(e->GetWindowText(), L"");
  EXPECT_FALSE(e->CanUndo());  // the rejected key left no step
  Ctrl('Y');
  EXPECT_EQ(e->GetWindowText(), L"-");
}

TEST_F(QVEditTest, HugePasteIsCutToMaxBufBeforeItIsJudged) {
  CQVEdit* e = Make(L"filter=\"number\" maxBuf=\"16\"");
  // What falls beyond the room left is never judged: the "x" is cut off.
  Paste(SStringW(L'7', 1024 * 1024) + L"x");
  EXPECT_EQ(e->GetWindowText(), SStringW(L'7', 16));
  EXPECT_EQ(Errors(), 0);
  // Full: a further paste inserts nothing and is no input error.
  Paste(L"1");
  EXPECT_EQ(e->GetTextLength(), 16);
  EXPECT_EQ(Errors(), 0);
  // Default maxBuf: a megabyte of digits ends at 32767 characters.
  CQVEdit* big = Make(L"filter=\"number\"");
  Paste(SStringW(L'1', 1024 * 1024));
  EXPECT_EQ(big->GetTextLength(), SOUI::SEdit::kDefaultMaxBuf);
}

// ---- style and classes -------------------------------------------------------------

TEST_F(QVEditTest, StyleCodeSetsSkinHeightFontAndPaddingLaterAttributesWin) {
  CreateHostWithChildren(
      L"<qv_edit name=\"a\" pos=\"0,0\" width=\"100\" qvstyle=\"NI2\"/>"
      L"<qv_edit name=\"b\" pos=\"0,40\" width=\"100\" qvstyle=\"UI3\" height=\"20\" font=\"size:14dp\"/>"
      L"<qv_edit name=\"c\" pos=\"0,80\" width=\"100\" qvstyle=\"ni2\" height=\"20\"/>");
  Layout();
  CQVEdit* a = Find<CQVEdit>(L"a");
  EXPECT_EQ(a->GetWindowRect().Height(), 24);
  EXPECT_EQ(a->GetAttribute(L"skin"), L"skin_edit_std_input_normal");
  EXPECT_EQ(a->GetStyle().font[0].Source(), L"size:12dp");
  CQVEdit* b = Find<CQVEdit>(L"b");
  EXPECT_EQ(b->GetWindowRect().Height(), 20);
  EXPECT_EQ(b->GetAttribute(L"skin"), L"skin_edit_std_input_underline");
  EXPECT_EQ(b->GetStyle().font[0].Source(), L"size:14dp");
  // Codes are case-sensitive: "ni2" sets nothing.
  EXPECT_EQ(Find<CQVEdit>(L"c")->GetAttribute(L"skin"), L"");
  EXPECT_TRUE(a->IsClass(L"edit"));
  EXPECT_STREQ(CQVEdit::BaseClassName(), L"edit");
}

}  // namespace
}  // namespace QVStandardCtrls

namespace QVStandardCtrls {
namespace {

// ---- price mode ----------------------------------------------------------------------

TEST(QVDecimalTextTest, ParsesFormatsAndStepsExactly) {
  int64_t v = 0;
  EXPECT_TRUE(ParseQVDecimal(L"0.1", 2, &v));
  int64_t w = 0;
  EXPECT_TRUE(ParseQVDecimal(L"0.2", 2, &w));
  EXPECT_EQ(FormatQVDecimal(v + w, 2), L"0.30");  // no 0.30000000000000004
  EXPECT_TRUE(ParseQVDecimal(L"-.5", 3, &v));
  EXPECT_EQ(FormatQVDecimal(v, 3), L"-0.500");
  EXPECT_EQ(FormatQVDecimal(-7, 2), L"-0.07");
  EXPECT_EQ(FormatQVDecimal(12, 0), L"12");
  // Not exact at 2 places, not a number, or too long: refused.
  for (const wchar_t* bad : {L"1.234", L"", L"-", L".", L"1.2.3", L"1e5", L"1234567890123456789",
                             L"-98765432109876543210987654321"}) {
    EXPECT_FALSE(ParseQVDecimal(bad, 2, &v)) << bad;
  }
  // Digits that fit until the places are added are still too long.
  EXPECT_FALSE(ParseQVDecimal(L"999999999999", 9, &v));
  EXPECT_TRUE(ParseQVDecimal(L"999999999", 9, &v));
  EXPECT_EQ(QVDecimalPlaces(L"0.005"), 3);
  // Off the grid, a step lands on the next grid point in its direction.
  EXPECT_EQ(StepQVDecimal(103, 5, 1), 105);
  EXPECT_EQ(StepQVDecimal(103, 5, -1), 100);
  EXPECT_EQ(StepQVDecimal(-3, 5, -1), -5);
  EXPECT_EQ(StepQVDecimal(105, 5, 1), 110);
}

TEST_F(QVEditTest, PriceStepsByTickWithinBoundsAsUndoableText) {
  CQVEdit* e = Make(L"tick=\"0.05\" min=\"1\" max=\"1.2\"");
  // An empty price steps to the minimum, written with the tick's places.
  gen().PressAndReleaseKey(VK_UP);
  EXPECT_EQ(e->GetWindowText(), L"1.00");
  gen().PressAndReleaseKey(VK_UP);
  EXPECT_EQ(e->GetWindowText(), L"1.05");
  // Typed off the grid: the next step lands on the grid.
  e->SetWindowText(L"1.13");
  gen().PressAndReleaseKey(VK_DOWN);
  EXPECT_EQ(e->GetWindowText(), L"1.10");
  for (int i = 0; i < 5; ++i) gen().PressAndReleaseKey(VK_UP);
  EXPECT_EQ(e->GetWindowText(), L"1.20");  // held at max
  Ctrl('Z');
  EXPECT_EQ(e->GetWindowText(), L"1.15");
  // Typing keeps to two places, no sign (min is positive).
  e->SetWindowText(L"");
  gen().Type(L"-1.234");
  EXPECT_EQ(e->GetWindowText(), L"1.23");
  EXPECT_EQ(Errors(), 2);
}

TEST_F(QVEditTest, WheelStepsOnlyWhenAskedAndFocused) {
  CreateHostWithChildren(
      L"<qv_edit name=\"a\" pos=\"0,0,@100,@24\" decimals=\"2\" text=\"5.00\"/>"
      L"<qv_edit name=\"b\" pos=\"0,40,@100,@24\" decimals=\"2\" text=\"5.00\" wheel=\"1\"/>");
  CQVEdit* a = Find<CQVEdit>(L"a");
  CQVEdit* b = Find<CQVEdit>(L"b");
  a->SetFocus();
  gen().MoveMouseToCenterOf(a);
  gen().MouseWheel(120);
  EXPECT_EQ(a->GetWindowText(), L"5.00");  // not asked
  gen().MoveMouseToCenterOf(b);
  gen().MouseWheel(120);
  EXPECT_EQ(b->GetWindowText(), L"5.00");  // not focused
  b->SetFocus();
  gen().MouseWheel(-120);
  EXPECT_EQ(b->GetWindowText(), L"4.99");
}

}  // namespace
}  // namespace QVStandardCtrls
