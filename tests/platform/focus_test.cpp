// Keyboard focus: taking it on press, Tab order, focus events, keys to the
// focused window, buttons clicked from the keyboard, losing it cleanly;
// and the cursor and clipboard the host and application keep.
#include <gtest/gtest.h>

#include "soui/stdctrls.h"
#include "testing/recording_render.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

// Notes the keyboard messages it gets.
class KeyProbe : public SWindow {
  SOUI_CLASS_NAME(KeyProbe, SWindow, L"keyprobe")
 public:
  KeyProbe() { focusable_ = TRUE; }
  UINT OnGetDlgCode() const override { return want_tab ? SC_WANTTAB | SC_WANTCHARS : 0; }
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override {
    log += SStringW().Format2(L"k%u ", vk);
    SWindow::OnKeyDown(vk, repeat, flags);
  }
  void OnChar(UINT ch, UINT, UINT) override { log += SStringW().Format2(L"c%u ", ch); }
  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override {
    if (msg == WM_IME_COMPOSITION) {
      const ImeText* ime = reinterpret_cast<const ImeText*>(lp);
      log += (wp == GCS_RESULTSTR ? L"commit:" : L"comp:") + ime->text + L" ";
      return TRUE;
    }
    return SWindow::ProcessSwndMessage(msg, wp, lp, result);
  }
  SStringW log;
  bool want_tab = false;
};

class FocusTest : public test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    app_->GetFactory().RegisterWindowClass<KeyProbe>();
    CreateHostWithChildren(
        L"<keyprobe name='a' pos='0,0,50,50'/>"
        L"<window name='box' pos='50,0,200,50'>"
        L"  <keyprobe name='b' pos='0,0,50,50'/>"
        L"  <keyprobe name='hidden' pos='50,0,100,50' visible='0'/>"
        L"  <button name='ok' pos='100,0,150,50' cursor='hand'/>"
        L"</window>"
        L"<keyprobe name='off' pos='200,0,250,50' enable='0'/>"
        L"<text name='label' pos='0,60,100,80' cursor='sizewe'>x</text>"
        L"<keyprobe name='c' pos='250,0,300,50'/>",
        300, 100);
    a = Find<KeyProbe>(L"a");
    b = Find<KeyProbe>(L"b");
    c = Find<KeyProbe>(L"c");
    ok = Find<SButton>(L"ok");
  }
  SStringW FocusName() { return host()->GetFocus() ? host()->GetFocus()->GetName() : SStringW(L"-"); }
  void Tab(bool shift = false) {
    if (shift) gen().PressKey(VK_SHIFT);
    gen().PressKey(VK_TAB);
    gen().Char(L'\t');
    gen().ReleaseKey(VK_TAB);
    if (shift) gen().ReleaseKey(VK_SHIFT);
  }
  KeyProbe *a = nullptr, *b = nullptr, *c = nullptr;
  SButton* ok = nullptr;
};

TEST_F(FocusTest, TabAndShiftTabWalkVisibleEnabledTargetsInTreeOrderAndWrap) {
  std::vector<SStringW> seen;
  for (int i = 0; i < 5; ++i) {
    Tab();
    seen.push_back(FocusName());
  }
  // hidden, disabled and non-focusable windows are skipped; the walk wraps
  EXPECT_EQ(seen, (std::vector<SStringW>{L"a", L"b", L"ok", L"c", L"a"}));
  Tab(true);
  EXPECT_EQ(FocusName(), L"c");
  Tab(true);
  EXPECT_EQ(FocusName(), L"ok");
  // the Tab keys and their character never reached the windows (Shift did)
  EXPECT_EQ(a->log.Find(L"9 "), -1);
  EXPECT_EQ(c->log.Find(L"9 "), -1);
  EXPECT_EQ(c->log, L"k16 ");
}

TEST_F(FocusTest, AWindowThatWantsTabKeepsItAndKeysGoToTheFocus) {
  b->want_tab = true;
  b->SetFocus();
  Tab();
  EXPECT_EQ(FocusName(), L"b");
  EXPECT_EQ(b->log, L"k9 c9 ");
  gen().PressKey('X');
  gen().Char(L'x');
  EXPECT_EQ(b->log, L"k9 c9 k88 c120 ");
  EXPECT_EQ(a->log, L"");
}

TEST_F(FocusTest, PressTakesFocusAndFocusEventsFireInOrder) {
  gen().MoveMouseToCenterOf(a);
  gen().ClickLeftButton();
  EXPECT_EQ(FocusName(), L"a");
  ClearEvents();
  gen().MoveMouseToCenterOf(c);
  gen().ClickLeftButton();
  EXPECT_EQ(FocusName(), L"c");
  std::vector<std::pair<int, SStringW>> focus_events;
  for (const auto& e : events()) {
    if (e.id == EVT_SETFOCUS || e.id == EVT_KILLFOCUS) focus_events.push_back({e.id, e.nameFrom});
  }
  EXPECT_EQ(focus_events, (std::vector<std::pair<int, SStringW>>{{EVT_KILLFOCUS, L"a"}, {EVT_SETFOCUS, L"c"}}));
  // a press on a window that cannot take the focus leaves it where it is
  gen().MoveMouseTo(50, 70);
  gen().ClickLeftButton();
  EXPECT_EQ(FocusName(), L"c");
}

TEST_F(FocusTest, EnterAndSpaceClickTheFocusedButton) {
  ok->SetFocus();
  ClearEvents();
  gen().PressKey(VK_RETURN);
  EXPECT_EQ(CountEvents(EVT_CMD), 0);  // a click is the release
  gen().ReleaseKey(VK_RETURN);
  gen().PressAndReleaseKey(VK_SPACE);
  EXPECT_EQ(CountEvents(EVT_CMD), 2);
  gen().PressAndReleaseKey('A');
  EXPECT_EQ(CountEvents(EVT_CMD), 2);
}

TEST_F(FocusTest, HiddenDisabledRemovedOrDestroyedFocusIsLetGoCleanly) {
  b->SetFocus();
  Find(L"box")->SetVisible(FALSE, TRUE);  // an ancestor hides
  EXPECT_EQ(host()->GetFocus(), nullptr);
  EXPECT_EQ(CountEvents(EVT_KILLFOCUS), 1);
  Find(L"box")->SetVisible(TRUE, TRUE);

  c->SetFocus();
  c->EnableWindow(FALSE);
  EXPECT_EQ(host()->GetFocus(), nullptr);
  c->EnableWindow(TRUE);

  c->SetFocus();
  SWindow* root = host()->GetRoot();
  ASSERT_TRUE(root->RemoveChild(c));  // unlinked but alive: told it lost the focus
  EXPECT_EQ(host()->GetFocus(), nullptr);
  EXPECT_EQ(CountEvents(EVT_KILLFOCUS), 3);
  root->InsertChild(c);

  a->SetFocus();
  a->DestroyWindow();
  EXPECT_EQ(host()->GetFocus(), nullptr);
  Tab();  // the walk goes on without the destroyed window
  EXPECT_EQ(FocusName(), L"b");
  gen().Char(L'z');
  EXPECT_EQ(b->log, L"c122 ");
}

TEST_F(FocusTest, FocusSkinOrFocusRectPaintsOnlyWhileFocused) {
  c->SetAttribute(L"drawFocusRect", L"1", FALSE);
  RecordingRenderTarget rt(300, 100);
  auto paint = [&] {
    rt.Clear();
    host()->GetRoot()->RedrawRegion(&rt, host()->GetClientRect());
    return rt.Count("DrawRectangle [252,2,298,48]");
  };
  EXPECT_EQ(paint(), 0);
  c->SetFocus();
  EXPECT_EQ(paint(), 1);
  a->SetFocus();
  EXPECT_EQ(paint(), 0);
}

TEST_F(FocusTest, InputMethodTextGoesToTheFocusedWindow) {
  host()->OnImeCommit(L"lost");  // no focus: nowhere to go
  b->SetFocus();
  host()->OnImeComposition(L"ni", 2);
  host()->OnImeCommit(L"\x4F60");
  EXPECT_EQ(b->log, L"comp:ni commit:\x4F60 ");
}

TEST_F(FocusTest, TheHostShowsTheCursorOfTheWindowUnderTheMouse) {
  EXPECT_EQ(host()->GetCursorName(), L"arrow");
  gen().MoveMouseToCenterOf(ok);
  EXPECT_EQ(host()->GetCursorName(), L"hand");
  gen().PressLeftButton();
  gen().MoveMouseTo(10, 10);  // captured: the pressed window's cursor stays
  EXPECT_EQ(host()->GetCursorName(), L"hand");
  gen().ReleaseLeftButton();
  EXPECT_EQ(host()->GetCursorName(), L"arrow");
  gen().MoveMouseTo(50, 70);  // message-transparent label: the root below it
  EXPECT_EQ(host()->GetCursorName(), L"arrow");
}

TEST(Clipboard, InProcessByDefaultAndReplaceable) {
  SApplication app;
  app.GetClipboard().SetText(L"12.5");
  EXPECT_EQ(app.GetClipboard().GetText(), L"12.5");
  struct Fixed : IClipboard {
    SStringW GetText() override { return L"fixed"; }
    void SetText(const SStringW&) override {}
  };
  app.SetClipboard(std::make_unique<Fixed>());
  EXPECT_EQ(app.GetClipboard().GetText(), L"fixed");
  app.SetClipboard(nullptr);
  EXPECT_EQ(app.GetClipboard().GetText(), L"");
}

TEST(Utf8, InvalidBytesBecomeReplacementCharactersWithoutLosingValidText) {
  // a lead byte cut short before valid text, a stray continuation, a bad lead
  EXPECT_EQ(SStringW::FromUtf8(std::string("a\xE4\xB8" "bc")), L"a\xFFFD\xFFFD" L"bc");
  EXPECT_EQ(SStringW::FromUtf8(std::string("a\xE4" "b")), L"a\xFFFD" L"b");
  EXPECT_EQ(SStringW::FromUtf8(std::string("\x80x\xFFy\xE4")), L"\xFFFDx\xFFFDy\xFFFD");
  EXPECT_EQ(SStringW::FromUtf8(std::string("n\0ul", 4)), SStringW(L"n\0ul", 4));
}

}  // namespace
}  // namespace SOUI
