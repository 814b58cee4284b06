// Host windows among themselves: activation, Z order, disabled hosts, and
// SDropDownWnd's life with a bare owner (the combo box has its own tests).
#include <gtest/gtest.h>

#include "soui/dropdown.h"
#include "soui/stdctrls.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

// Counts what reaches it.
class Tally : public SWindow {
  SOUI_CLASS_NAME(Tally, SWindow, L"tally")
 public:
  Tally() { focusable_ = TRUE; }
  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override {
    if (msg == WM_LBUTTONDOWN) ++presses;
    if (msg == WM_LBUTTONUP) ++releases;
    if (msg == WM_KEYDOWN) ++keys;
    return SWindow::ProcessSwndMessage(msg, wp, lp, result);
  }
  int presses = 0, releases = 0, keys = 0;
};

// A drop-down opener that is not a control: records the notifications.
class Opener : public ISDropDownOwner {
 public:
  explicit Opener(SWindow* wnd) : wnd_(wnd) {}
  SWindow* GetDropDownOwner() override { return wnd_; }
  void OnCreateDropDown(SDropDownWnd* dd) override {
    ++created;
    open = dd;
    inner = new Tally();
    inner->SetAttribute(L"pos", L"0,0,-0,-0", TRUE);
    dd->GetRoot()->InsertChild(inner);
    dd->SetFocus(inner);
  }
  void OnDestroyDropDown(SDropDownWnd* dd) override {
    ++destroyed;
    last_code = dd->GetExitCode();
    open = nullptr;
    inner = nullptr;
  }
  SDropDownWnd* Open(const CRect& rc) {
    auto* dd = new SDropDownWnd(this);
    dd->Create(rc);
    return open;
  }
  SWindow* wnd_;
  SDropDownWnd* open = nullptr;
  Tally* inner = nullptr;
  int created = 0, destroyed = 0;
  UINT last_code = 0;
};

class PopupTest : public test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    app_->GetFactory().RegisterWindowClass<Tally>();
    CreateHostWithChildren(L"<tally name='opener' pos='10,10,@50,@20'/><tally name='rest' pos='10,100,@200,@100'/>");
    opener_wnd = Find<Tally>(L"opener");
    rest = Find<Tally>(L"rest");
    opener = std::make_unique<Opener>(opener_wnd);
  }
  void TearDown() override {
    host_.reset();
    opener.reset();
    UiTestBase::TearDown();
  }
  std::unique_ptr<SHostWnd> MakeHost(HWND owner = nullptr) {
    auto h = std::make_unique<SHostWnd>();
    h->InitFromXmlText(L"<SOUI width='100' height='100'><root/></SOUI>");
    h->Create(owner, 500, 500);
    return h;
  }
  Tally* opener_wnd = nullptr;
  Tally* rest = nullptr;
  std::unique_ptr<Opener> opener;
};

TEST_F(PopupTest, ActivationFollowsActivatingShowsOnly) {
  EXPECT_EQ(GetActiveWindow(), host()->m_hWnd);
  auto quiet = MakeHost(host()->m_hWnd);
  quiet->ShowWindow(SW_SHOWNOACTIVATE);
  EXPECT_EQ(GetActiveWindow(), host()->m_hWnd);
  EXPECT_EQ(app_->GetZOrder().back(), quiet.get());
  auto loud = MakeHost();
  loud->ShowWindow(SW_SHOW);
  EXPECT_EQ(GetActiveWindow(), loud->m_hWnd);
  // Placing without activation or Z order: neither changes.
  quiet->SetWindowPos(nullptr, 0, 0, 10, 10, SWP_NOACTIVATE | SWP_NOZORDER);
  EXPECT_EQ(app_->GetZOrder().back(), loud.get());
  EXPECT_EQ(GetActiveWindow(), loud->m_hWnd);
  // Raising the owner brings its owned window along above it.
  SetActiveWindow(host()->m_hWnd);
  const auto& z = app_->GetZOrder();
  ASSERT_GE(z.size(), 3u);
  EXPECT_EQ(z[z.size() - 1], quiet.get());
  EXPECT_EQ(z[z.size() - 2], host());
  EXPECT_EQ(app_->HostFromScreenPoint(CPoint(5, 5)), quiet.get());
  EXPECT_EQ(app_->HostFromScreenPoint(CPoint(50, 50)), host());
  // Hiding the active window hands activation to its owner; a disabled
  // or hidden host cannot be activated.
  loud->SetOwner(host()->m_hWnd);
  SetActiveWindow(loud->m_hWnd);
  loud->ShowWindow(SW_HIDE);
  EXPECT_EQ(GetActiveWindow(), host()->m_hWnd);
  EXPECT_EQ(SetActiveWindow(loud->m_hWnd), nullptr);
  loud->ShowWindow(SW_SHOW);
  SetActiveWindow(host()->m_hWnd);
  loud->EnableWindow(FALSE);
  EXPECT_EQ(SetActiveWindow(loud->m_hWnd), nullptr);
  loud.reset();
  EXPECT_EQ(GetActiveWindow(), host()->m_hWnd);
  EXPECT_EQ(SetActiveWindow(reinterpret_cast<HWND>(0x1234)), nullptr);
}

TEST_F(PopupTest, DisabledHostGetsNoInput) {
  host()->EnableWindow(FALSE);
  gen().MoveMouseToCenterOf(rest);
  gen().ClickLeftButton();
  rest->SetFocus();
  gen().PressAndReleaseKey('A');
  EXPECT_EQ(rest->presses + rest->releases + rest->keys, 0);
  host()->EnableWindow(TRUE);
  gen().ClickLeftButton();
  gen().PressAndReleaseKey('A');
  EXPECT_EQ(rest->presses, 1);
  EXPECT_EQ(rest->keys, 1);
}

TEST_F(PopupTest, DropDownTellsItsOwnerAndTakesKeysWhileOpen) {
  rest->SetFocus();
  SDropDownWnd* dd = opener->Open(CRect(10, 30, 110, 130));
  ASSERT_NE(dd, nullptr);
  EXPECT_EQ(opener->created, 1);
  EXPECT_TRUE(dd->IsWindowVisible());
  EXPECT_TRUE(dd->IsPopupWindow());
  EXPECT_EQ(GetActiveWindow(), host()->m_hWnd);
  // Keys typed at the owner reach the drop-down's focus; the owner's focus
  // stays where it was.
  gen().PressAndReleaseKey('A');
  EXPECT_EQ(opener->inner->keys, 1);
  EXPECT_EQ(rest->keys, 0);
  EXPECT_EQ(host()->GetFocus(), rest);
  // Input inside the drop-down is its own.
  test::EventGenerator dgen(dd);
  dgen.MoveMouseTo(20, 20);
  dgen.ClickLeftButton();
  EXPECT_EQ(opener->inner->presses, 1);
  EXPECT_EQ(opener->created - opener->destroyed, 1);
  // Esc closes: the owner hears it once, with the code.
  gen().PressAndReleaseKey(VK_ESCAPE);
  EXPECT_EQ(opener->destroyed, 1);
  EXPECT_EQ(opener->last_code, static_cast<UINT>(IDCANCEL));
  EXPECT_EQ(rest->keys, 0);  // the Esc went to the drop-down
  gen().PressAndReleaseKey('A');
  EXPECT_EQ(rest->keys, 1);
}

TEST_F(PopupTest, OutsidePressClosesAndIsReplayedUnlessOnTheOpener) {
  opener->Open(CRect(10, 30, 110, 130));
  gen().MoveMouseToCenterOf(rest);
  gen().ClickLeftButton();
  EXPECT_EQ(opener->destroyed, 1);
  EXPECT_EQ(rest->presses, 1);
  EXPECT_EQ(rest->releases, 1);
  // On the opener: swallowed with its release.
  opener->Open(CRect(10, 30, 110, 130));
  gen().MoveMouseToCenterOf(opener_wnd);
  gen().ClickLeftButton();
  EXPECT_EQ(opener->destroyed, 2);
  EXPECT_EQ(opener_wnd->presses + opener_wnd->releases, 0);
  // In another host of the application: closes and goes on there.
  auto other = MakeHost();
  other->ShowWindow(SW_SHOWNA);
  opener->Open(CRect(10, 30, 110, 130));
  other->OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(5, 5));
  other->OnMouseEvent(WM_LBUTTONUP, 0, CPoint(5, 5));
  EXPECT_EQ(opener->destroyed, 3);
}

TEST_F(PopupTest, PopupOwnedByThePopupKeepsItOpen) {
  SDropDownWnd* dd = opener->Open(CRect(10, 30, 110, 130));
  // A sub-popup owned by the drop-down (a sub-menu).
  auto sub = MakeHost(dd->m_hWnd);
  sub->ShowWindow(SW_SHOWNA);
  sub->OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, CPoint(5, 5));
  sub->OnMouseEvent(WM_LBUTTONUP, 0, CPoint(5, 5));
  EXPECT_EQ(opener->destroyed, 0);
  // Closing the owner host takes the drop-down with it.
  host()->DestroyWindow();
  EXPECT_EQ(opener->destroyed, 1);
  EXPECT_EQ(app_->GetActiveHost(), nullptr);
}

TEST_F(PopupTest, DropDownWithoutALiveOpenerHostIsNotShown) {
  SWindow loose;
  Opener stray(&loose);
  EXPECT_EQ(stray.Open(CRect(0, 0, 10, 10)), nullptr);
  EXPECT_EQ(stray.created, 0);
  Opener none(nullptr);
  EXPECT_EQ(none.Open(CRect(0, 0, 10, 10)), nullptr);
  gen().MoveMouseTo(1, 1);  // deletes the refused ones
}

TEST(PopupAppTest, AnOpenDropDownGoesWithTheApplication) {
  // The owner host outlives the application (a caller's leak): still no
  // crash and no leak of the drop-down.
  auto app = std::make_unique<SApplication>();
  auto host = std::make_unique<SHostWnd>();
  host->InitFromXmlText(L"<SOUI width='100' height='100'><root><window name='w' pos='0,0,20,20'/></root></SOUI>");
  host->Create();
  host->ShowWindow(SW_SHOW);
  Opener opener(host->FindChildByName(L"w"));
  ASSERT_NE(opener.Open(CRect(0, 20, 50, 70)), nullptr);
  app.reset();
  EXPECT_EQ(opener.destroyed, 1);
  host.reset();
}

}  // namespace
}  // namespace SOUI
