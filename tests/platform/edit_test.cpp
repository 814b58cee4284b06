// SEdit driven through the host's real input path. Text is measured with the
// recording target's fixed metric: every character 6 px wide, lines 12 px.
#include <gtest/gtest.h>

#include "edit_test_base.h"

namespace SOUI {
namespace {

class EditTest : public test::EditTestBase {
 protected:
  SEdit* Make(const wchar_t* attrs = L"") {
    const SStringW xml = SStringW(L"<edit name='e' pos='0,0,120,40' font='size:12' ") + attrs +
                         L"/><button name='b' pos='0,50,40,70'/>";
    CreateHostWithChildren(xml, 200, 100);
    SEdit* e = Find<SEdit>(L"e");
    e->SetFocus();
    return e;
  }
  int Changes() {
    int n = 0;
    for (const auto& ev : events()) n += ev.id == EVT_RE_NOTIFY;
    return n;
  }
};

TEST_F(EditTest, TypingBackspaceAndTheSelectionMessage) {
  SEdit* e = Make();
  gen().Type(L"12.5x");
  gen().Char(0x08);  // backspace arrives as a character, as Windows sends it
  EXPECT_EQ(e->GetWindowText(), L"12.5");
  EXPECT_EQ(Changes(), 6);  // one change event per edit
  DWORD s = 99, t = 99;
  const LRESULT r = e->SwndProc(EM_GETSEL, reinterpret_cast<WPARAM>(&s), reinterpret_cast<LPARAM>(&t));
  EXPECT_EQ(s, 4u);
  EXPECT_EQ(t, 4u);
  EXPECT_EQ(r, MAKELPARAM(4, 4));
  e->SetSel(0, 2);
  e->ReplaceSel(L"99", TRUE);
  EXPECT_EQ(e->GetWindowText(), L"99.5");
  EXPECT_EQ(host()->GetCursorName(), L"arrow");
  gen().MoveMouseTo(10, 10);
  EXPECT_EQ(host()->GetCursorName(), L"ibeam");
}

TEST_F(EditTest, KeyboardSelectionByCharacterWordLineAndAll) {
  SEdit* e = Make();
  gen().Type(L"buy 600519 now");
  Key(VK_LEFT, false, true);
  Key(VK_LEFT, false, true);
  EXPECT_EQ(Sel(e), L"12-14");
  Key(VK_LEFT);  // collapses to the selection's start
  EXPECT_EQ(Sel(e), L"12-12");
  Key(VK_LEFT, true);  // by word
  EXPECT_EQ(Sel(e), L"11-11");
  Key(VK_LEFT, true);
  EXPECT_EQ(Sel(e), L"4-4");
  Key(VK_RIGHT, true, true);
  EXPECT_EQ(Sel(e), L"4-11");
  gen().Type(L"000001 ");  // typing replaces the selection
  EXPECT_EQ(e->GetWindowText(), L"buy 000001 now");
  Key(VK_HOME, false, true);
  EXPECT_EQ(Sel(e), L"0-11");
  Key(VK_END);
  Key('A', true);
  EXPECT_EQ(Sel(e), L"0-14");
  Key(VK_DELETE);
  EXPECT_EQ(e->GetWindowText(), L"");
}

TEST_F(EditTest, MouseClickDragDoubleClickAndShiftClick) {
  SEdit* e = Make();
  e->SetWindowText(L"alpha beta gamma");
  gen().MoveMouseTo(6 * 6 + 2, 10);  // just right of the 6th character's start
  gen().ClickLeftButton();
  EXPECT_EQ(Sel(e), L"6-6");
  gen().DragTo(CPoint(6 * 10, 10));
  EXPECT_EQ(Sel(e), L"6-10");
  gen().MoveMouseTo(6 * 12 + 1, 10);
  gen().DoubleClickLeftButton();  // the word under the mouse
  EXPECT_EQ(Sel(e), L"11-16");
  gen().MoveMouseTo(1, 10);
  gen().PressKey(VK_SHIFT);
  gen().ClickLeftButton();  // extends from the anchor
  gen().ReleaseKey(VK_SHIFT);
  EXPECT_EQ(Sel(e), L"0-11");
}

TEST_F(EditTest, CopyCutPasteAndUndoRedo) {
  SEdit* e = Make();
  gen().Type(L"100 lots");
  Key(VK_LEFT, true, true);
  Key('C', true);
  EXPECT_EQ(app_->GetClipboard().GetText(), L"lots");
  Key('X', true);
  EXPECT_EQ(e->GetWindowText(), L"100 ");
  Key('V', true);
  Key('V', true);
  EXPECT_EQ(e->GetWindowText(), L"100 lotslots");
  Key('Z', true);
  EXPECT_EQ(e->GetWindowText(), L"100 lots");
  Key('Z', true);
  Key('Z', true);
  EXPECT_EQ(e->GetWindowText(), L"100 lots");  // the cut undone
  Key('Z', true);
  EXPECT_EQ(e->GetWindowText(), L"");  // the typed run is one step
  EXPECT_FALSE(e->CanUndo());
  Key('Y', true);
  EXPECT_EQ(e->GetWindowText(), L"100 lots");
  gen().Type(L"!");
  EXPECT_FALSE(e->CanRedo());  // a new edit drops what could be redone
}

// Records what reaches the insertion point and drops letters from pastes.
class FilteredEdit : public SEdit {
  SOUI_CLASS_NAME(FilteredEdit, SEdit, L"fedit")
 protected:
  void InsertText(const SStringW& text, InsertSource source) override {
    seen += SStringW().Format2(L"%d:", static_cast<int>(source)) + text + L" ";
    SStringW kept;
    for (int i = 0; i < text.GetLength(); ++i) {
      if (source == InsertSource::kTyped || !iswalpha(text[i])) kept += text[i];
    }
    SEdit::InsertText(kept, source);
  }

 public:
  SStringW seen;
};

TEST_F(EditTest, InputMethodAndPasteReachTheOverridableInsertionPoint) {
  app_->GetFactory().RegisterWindowClass<FilteredEdit>();
  CreateHostWithChildren(L"<fedit name='f' pos='0,0,200,40'/>", 200, 100);
  auto* f = Find<FilteredEdit>(L"f");
  f->SetFocus();
  gen().Char(L'a');
  host()->OnImeComposition(L"gu", 2);
  EXPECT_EQ(f->GetComposition(), L"gu");  // shown, not yet text
  EXPECT_EQ(f->GetWindowText(), L"a");
  host()->OnImeCommit(L"\x80A1x");
  EXPECT_EQ(f->GetComposition(), L"");
  app_->GetClipboard().SetText(L"1b2");
  gen().PressKey(VK_CONTROL);
  gen().PressAndReleaseKey('V');
  gen().ReleaseKey(VK_CONTROL);
  EXPECT_EQ(f->GetWindowText(), L"a\x80A1" L"12");
  EXPECT_EQ(f->seen, L"0:a 2:\x80A1x 1:1b2 ");
}

TEST_F(EditTest, CaretBlinksFromATimerOnlyWhileFocused) {
  SEdit* e = Make();
  EXPECT_TRUE(e->IsCaretShown());
  Advance(SEdit::kCaretBlinkMs);
  EXPECT_FALSE(e->IsCaretShown());
  Advance(SEdit::kCaretBlinkMs);
  EXPECT_TRUE(e->IsCaretShown());
  Find(L"b")->SetFocus();
  EXPECT_FALSE(e->IsCaretShown());
  // nothing is left to wake an idle host
  EXPECT_EQ(app_->GetClock().NextDue(), UINT64_MAX);
}

TEST_F(EditTest, BadInputIsClampedCutOrDroppedWithoutLosingValidText) {
  SEdit* e = Make(L"maxBuf='16'");
  e->SetSel(-5, 1000);  // out of range: the end of the text
  EXPECT_EQ(Sel(e), L"0-0");
  app_->GetClipboard().SetText(SStringW(L'7', 1024 * 1024));
  ClearEvents();
  e->Paste();
  EXPECT_EQ(e->GetWindowText(), SStringW(L'7', 16));
  EXPECT_EQ(Changes(), 2);  // EN_CHANGE, then EN_MAXTEXT
  gen().Char(L'8');
  EXPECT_EQ(e->GetTextLength(), 16);

  SEdit* m = e;
  m->SetAttribute(L"maxBuf", L"100", FALSE);
  m->SetWindowText(SStringW(L"a\0b", 3) + SStringW::FromUtf8(std::string("c\xE4" "d\xFF")));
  EXPECT_EQ(m->GetWindowText(), L"abc\xFFFD" L"d\xFFFD");
  m->SetWindowText(L"first line\r\nsecond");  // a single line keeps its first line
  EXPECT_EQ(m->GetWindowText(), L"first line");
}

TEST_F(EditTest, MultiLineBreaksOnEnterMovesByLineAndScrolls) {
  SEdit* e = Make(L"multiLines='1' wantReturn='1'");
  gen().Type(L"ab\rcdef\rg");
  EXPECT_EQ(e->GetWindowText(), L"ab\ncdef\ng");
  Key(VK_UP);
  EXPECT_EQ(Sel(e), L"4-4");  // column 1 of the second line
  Key(VK_UP, false, true);
  EXPECT_EQ(Sel(e), L"1-4");  // the anchor stays at 4
  Key(VK_END, true);
  for (int i = 0; i < 5; ++i) gen().Type(L"\rline");
  EXPECT_GT(e->GetScrollY(), 0);  // 8 lines of 12 px do not fit in 40
  EXPECT_LE(e->GetScrollY(), 8 * 12 - 40);
}

TEST_F(EditTest, ALongSingleLineScrollsToKeepTheCaretInView) {
  SEdit* e = Make();
  gen().Type(SStringW(L'9', 30));  // 180 px of text in a 120 px edit
  EXPECT_EQ(e->GetScrollX(), 30 * 6 - 120 + 1);
  Key(VK_HOME);
  EXPECT_EQ(e->GetScrollX(), 0);
  RecordingRenderTarget rt(200, 100);
  Key(VK_END);
  e->RedrawRegion(&rt, host()->GetClientRect());
  // the text is drawn shifted left by the scroll, clipped to the edit
  EXPECT_TRUE(rt.Contains("TextOut \"" + std::string(30, '9') + "\" (-61,")) << rt.Dump();

  // Widened until the text fits, it shows all of it from the start (a
  // scroll left from a narrow first layout must not hide the beginning).
  const CRect wide(0, 0, 300, 30);
  e->Move(&wide);
  EXPECT_EQ(e->GetScrollX(), 0);
}

TEST_F(EditTest, PasswordReadOnlyNumberAndCueText) {
  SEdit* pw = Make(L"password='1' passwordChar='#' cueText='PIN' cueColor='#FF0000'");
  RecordingRenderTarget rt(200, 100);
  pw->RedrawRegion(&rt, host()->GetClientRect());
  EXPECT_TRUE(rt.Contains("TextOut \"PIN\"")) << rt.Dump();
  gen().Type(L"42");
  rt.Clear();
  pw->RedrawRegion(&rt, host()->GetClientRect());
  EXPECT_TRUE(rt.Contains("TextOut \"##\"")) << rt.Dump();
  EXPECT_FALSE(rt.Contains("PIN"));
  Key('A', true);
  Key('C', true);
  EXPECT_EQ(app_->GetClipboard().GetText(), L"");  // never copied out

  pw->SetAttribute(L"password", L"0", FALSE);
  pw->SetAttribute(L"number", L"1", FALSE);
  Key(VK_END);
  gen().Type(L"1a.5");
  EXPECT_EQ(pw->GetWindowText(), L"4215");
  pw->SetAttribute(L"readOnly", L"1", FALSE);
  gen().Type(L"9");
  gen().Char(0x08);
  EXPECT_EQ(pw->GetWindowText(), L"4215");
}

}  // namespace
}  // namespace SOUI
