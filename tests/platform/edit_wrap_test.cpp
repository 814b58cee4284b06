// A multi-line SEdit wrapping to its width, and the edit's word stops,
// colours and caret reports. Text is measured with the recording target's
// fixed metric (every character 6 px, lines 12 px), so a 60 px edit holds
// ten characters a line; break opportunities come from pango.
#include <gtest/gtest.h>

#include <chrono>

#include "edit_test_base.h"

namespace SOUI {
namespace {

class EditWrapTest : public test::EditTestBase {
 protected:
  SEdit* Make(const wchar_t* text, const wchar_t* attrs = L"") {
    const SStringW xml = SStringW(L"<edit name='e' pos='0,0,60,48' font='size:12' multiLines='1' wantReturn='1' ") +
                         attrs + L"/>";
    CreateHostWithChildren(xml, 200, 100);
    Layout();
    SEdit* e = Find<SEdit>(L"e");
    e->SetWindowText(text);
    e->SetFocus();
    return e;
  }
  long Caret(SEdit* e) {
    long s = 0, t = 0;
    e->GetSel(s, t);
    return t;
  }
  std::string Paint(SEdit* e) {
    RecordingRenderTarget rt(200, 100);
    e->RedrawRegion(&rt, host()->GetClientRect());
    return rt.Dump();
  }
};

TEST_F(EditWrapTest, LinesBreakAfterSpacesAndLongWordsBetweenCharacters) {
  SEdit* e = Make(L"alpha beta gamma delta");
  // "alpha beta " (the space hangs), "gamma ", "delta".
  EXPECT_EQ(e->GetLineCount(), 3);
  const std::string dump = Paint(e);
  EXPECT_NE(dump.find("TextOut \"alpha beta \" (0,0)"), std::string::npos) << dump;
  EXPECT_NE(dump.find("TextOut \"gamma \" (0,12)"), std::string::npos) << dump;
  EXPECT_NE(dump.find("TextOut \"delta\" (0,24)"), std::string::npos) << dump;
  // A word wider than the line is cut where it fills the line.
  e->SetWindowText(L"abcdefghijklmnopqrstuvwxy\nshort");
  EXPECT_EQ(e->GetLineCount(), 4);
  // Wider, fewer lines; autoHscroll turns wrapping off.
  e->Move(0, 0, 120, 48);
  EXPECT_EQ(e->GetLineCount(), 3);
  e->SetAttribute(L"autoHscroll", L"1", FALSE);
  EXPECT_EQ(e->GetLineCount(), 2);
}

TEST_F(EditWrapTest, CjkBreaksBetweenCharactersButNotBeforeClosingPunctuation) {
  SEdit* e = Make(L"交易终端控件库交易终端控件库");
  EXPECT_EQ(e->GetLineCount(), 2);  // ten and four
  // The comma may not start a line, so the character before it moves down too.
  e->SetWindowText(L"一二三四五六七八九十，好");
  EXPECT_EQ(e->GetLineCount(), 2);
  EXPECT_NE(Paint(e).find("TextOut \"十，好\" (0,12)"), std::string::npos);
}

TEST_F(EditWrapTest, UpDownHomeEndFollowVisualLines) {
  SEdit* e = Make(L"alpha beta gamma delta");
  e->SetSel(3, 3);
  // Down keeps the caret's x through the wrapped lines, and Up comes back.
  Key(VK_DOWN);
  EXPECT_EQ(Caret(e), 14);
  Key(VK_DOWN);
  EXPECT_EQ(Caret(e), 20);
  Key(VK_DOWN);  // no line below: stays
  EXPECT_EQ(Caret(e), 20);
  Key(VK_UP);
  Key(VK_UP);
  EXPECT_EQ(Caret(e), 3);
  // End stops before the hanging space; Home goes to the visual line's start.
  Key(VK_DOWN);
  Key(VK_END);
  EXPECT_EQ(Caret(e), 16);
  Key(VK_HOME, false, true);
  long s = 0, t = 0;
  e->GetSel(s, t);
  EXPECT_EQ(s, 11);
  EXPECT_EQ(t, 16);
  // On a line cut inside a word End is the wrap point, shown on the upper line.
  e->SetWindowText(L"abcdefghijklmnopqrstuvwxy");
  e->SetSel(3, 3);
  Key(VK_END);
  EXPECT_EQ(Caret(e), 10);
  EXPECT_NE(Paint(e).find("FillSolidRect [60,0,61,12]"), std::string::npos);
  gen().Type(L"Z");
  EXPECT_EQ(e->GetWindowText(), L"abcdefghijZklmnopqrstuvwxy");
  // The goal x survives a short line in between.
  e->SetWindowText(L"abcdefghij\nab\nabcdefghij");
  e->SetSel(8, 8);
  Key(VK_DOWN);
  EXPECT_EQ(Caret(e), 13);
  Key(VK_DOWN);
  EXPECT_EQ(Caret(e), 22);
}

TEST_F(EditWrapTest, ClicksLandOnWrappedLines) {
  SEdit* e = Make(L"alpha beta gamma delta");
  gen().MoveMouseTo(6 * 2 + 1, 12 + 6);  // line 2, just after its second character's start
  gen().ClickLeftButton();
  EXPECT_EQ(Caret(e), 13);
  gen().MoveMouseTo(59, 6);  // past the end of the first line: before its hanging space
  gen().ClickLeftButton();
  EXPECT_EQ(Caret(e), 10);
  gen().MoveMouseTo(40, 40);  // below the last line: its nearest column
  gen().ClickLeftButton();
  EXPECT_EQ(Caret(e), 22);
}

TEST_F(EditWrapTest, TheViewFollowsTheCaretThroughWrappedLines) {
  SEdit* e = Make(L"");
  gen().Type(SStringW(L'x', 60));  // six lines in a view of four
  EXPECT_EQ(e->GetLineCount(), 6);
  EXPECT_EQ(e->GetScrollY(), 6 * 12 - 48);
  Key(VK_PRIOR);
  EXPECT_EQ(e->GetScrollY(), 12);  // the caret's line is the top one
  Key(VK_HOME, true);
  EXPECT_EQ(e->GetScrollY(), 0);
  Key(VK_NEXT);
  EXPECT_EQ(Caret(e), 40);
  // Painting starts at the first line in view: lines 3 to 6.
  Key(VK_END, true);
  RecordingRenderTarget rt(200, 100);
  e->RedrawRegion(&rt, host()->GetClientRect());
  EXPECT_EQ(rt.Count("TextOut \"xxxxxxxxxx\""), 4);
  EXPECT_TRUE(rt.Contains("TextOut \"xxxxxxxxxx\" (0,0)"));
}

struct WordCase {
  const char* name;
  const wchar_t* text;
  std::vector<int> forward;  // Ctrl+Right stops from the start
};

class EditWordStops : public EditWrapTest, public ::testing::WithParamInterface<WordCase> {};

TEST_P(EditWordStops, CtrlArrowsStopAtWordsAndPunctuation) {
  const WordCase& c = GetParam();
  SEdit* e = Make(c.text, L"multiLines='0'");
  e->SetSel(0, 0);
  std::vector<int> stops;
  for (size_t i = 0; i < c.forward.size(); ++i) {
    Key(VK_RIGHT, true);
    stops.push_back(static_cast<int>(Caret(e)));
  }
  EXPECT_EQ(stops, c.forward);
  // Backwards visits the same stops (the end excepted) down to 0.
  std::vector<int> back;
  for (size_t i = 0; i < c.forward.size(); ++i) {
    Key(VK_LEFT, true);
    back.push_back(static_cast<int>(Caret(e)));
  }
  std::vector<int> expected(c.forward.rbegin() + 1, c.forward.rend());
  expected.push_back(0);
  EXPECT_EQ(back, expected);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, EditWordStops,
    ::testing::Values(WordCase{"Spaces", L"buy 600519 now", {4, 11, 14}},
                      WordCase{"Punctuation", L"foo(bar), baz", {3, 4, 7, 10, 13}},
                      WordCase{"Cjk", L"买入茅台", {1, 2, 3, 4}},
                      WordCase{"CjkWithComma", L"买入，卖出", {1, 2, 3, 4, 5}}),
    [](const ::testing::TestParamInfo<WordCase>& info) { return std::string(info.param.name); });

TEST_F(EditWrapTest, SelectionAndCompositionColoursComeFromAttributes) {
  SEdit* e = Make(L"alpha beta", L"colorSelBkgnd='#112233' colorSelText='#445566' colorImeLine='#778899'");
  e->SetSel(0, 5);
  std::string dump = Paint(e);
  EXPECT_NE(dump.find("FillSolidRect [0,0,30,12] #112233FF"), std::string::npos) << dump;
  EXPECT_NE(dump.find("PushClipRect [0,0,30,12]"), std::string::npos);
  EXPECT_NE(dump.find("color=#445566FF"), std::string::npos);
  host()->OnImeComposition(L"ni", 2);
  dump = Paint(e);
  EXPECT_NE(dump.find("#778899FF"), std::string::npos) << dump;
  // Unset, the selection is a translucent blue over the usual text colour.
  SEdit* plain = Make(L"alpha beta");
  plain->SetSel(0, 5);
  EXPECT_NE(Paint(plain).find("FillSolidRect [0,0,30,12] #338CFF66"), std::string::npos);
}

class CaretBackend : public IHostBackend {
 public:
  void OnCreate(SHostWnd*) override {}
  void OnDestroy(SHostWnd*) override {}
  void OnShow(SHostWnd*, bool, bool) override {}
  void OnMove(SHostWnd*, const CRect&) override {}
  void OnTitle(SHostWnd*, const SStringW&) override {}
  void OnFrame(SHostWnd*) override {}
  void OnTextInputRect(SHostWnd*, const CRect& caret) override { rects.push_back(caret); }
  std::vector<CRect> rects;
};

TEST_F(EditWrapTest, TheHostHearsWhereTheCaretIs) {
  SEdit* e = Make(L"abc");
  auto backend = std::make_shared<CaretBackend>();
  host()->SetBackend(backend);
  e->SetSel(0, 0);
  gen().Type(L"xy");
  ASSERT_FALSE(backend->rects.empty());
  EXPECT_EQ(backend->rects.back(), CRect(12, 0, 13, 12));
  // Wrapping moves it to the next line; an edit without the focus says nothing.
  gen().Type(L"zzzzzzzzzz");
  EXPECT_EQ(backend->rects.back(), CRect(12, 12, 13, 24));
  const size_t n = backend->rects.size();
  host()->SetFocus(nullptr);
  e->SetSel(0, 0);
  EXPECT_EQ(backend->rects.size(), n);
}

TEST_F(EditWrapTest, AMegabyteWordInANarrowEditStaysUsable) {
  SEdit* e = Make(L"", L"maxBuf='2000000'");
  const auto start = std::chrono::steady_clock::now();
  e->SetWindowText(SStringW(L'w', 1 << 20));
  EXPECT_EQ(e->GetLineCount(), ((1 << 20) + 9) / 10);
  gen().Type(L"!");  // at the start: the whole paragraph re-wraps
  Key(VK_END, true);
  Key(VK_UP);
  Key(VK_HOME);
  gen().MoveMouseTo(30, 30);
  gen().ClickLeftButton();
  host()->Render();
  EXPECT_EQ(e->GetTextLength(), (1 << 20) + 1);
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  EXPECT_LT(seconds, 20.0);  // generous for sanitizer builds; about a second in debug
}

}  // namespace
}  // namespace SOUI
