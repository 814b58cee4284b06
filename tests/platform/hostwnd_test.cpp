// Input routing of the host window, driven through the event generator.
#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "soui/sapp.h"
#include "soui/stdctrls.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

// Logs the messages it receives as short words.
class Probe : public SWindow {
  SOUI_CLASS_NAME(Probe, SWindow, L"probe")
 public:
  Probe() { focusable_ = TRUE; }
  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override {
    const wchar_t* word = nullptr;
    switch (msg) {
      case WM_MOUSEHOVER: word = L"hover"; break;
      case WM_MOUSELEAVE: word = L"leave"; break;
      case WM_LBUTTONDOWN: word = L"down"; break;
      case WM_LBUTTONUP: word = L"up"; break;
      case WM_RBUTTONDOWN: word = L"rdown"; break;
      case WM_RBUTTONUP: word = L"rup"; break;
      case WM_MOUSEMOVE: word = L"move"; break;
      case WM_MOUSEWHEEL: word = L"wheel"; break;
      case WM_KEYDOWN: word = L"key"; break;
      case WM_CHAR: word = L"char"; break;
      case WM_SETFOCUS: word = L"focus"; break;
      case WM_KILLFOCUS: word = L"blur"; break;
      default: break;
    }
    if (word) log += SStringW(log.IsEmpty() ? L"" : L" ") + word;
    const BOOL handled = SWindow::ProcessSwndMessage(msg, wp, lp, result);
    if (msg == WM_MOUSEWHEEL) result = eat_wheel;
    return msg == WM_MOUSEWHEEL ? eat_wheel : handled;
  }
  SStringW log;
  BOOL eat_wheel = FALSE;
};

class HostRoutingTest : public test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    app_->GetFactory().RegisterWindowClass<Probe>();
    CreateHostWithChildren(
        L"<probe name='a' pos='0,0,100,100'><probe name='inner' pos='10,10,50,50'/></probe>"
        L"<probe name='b' pos='100,0,200,100'/>"
        L"<probe name='off' pos='0,100,100,200' enable='0'/>"
        L"<probe name='glass' pos='100,100,200,200' msgTransparent='1'/>",
        300, 300);
    a = Find<Probe>(L"a");
    inner = Find<Probe>(L"inner");
    b = Find<Probe>(L"b");
    off = Find<Probe>(L"off");
  }
  Probe *a = nullptr, *inner = nullptr, *b = nullptr, *off = nullptr;
};

TEST_F(HostRoutingTest, HoverMovesWithTheMouseAndLeavesTheOldWindow) {
  gen().MoveMouseTo(20, 20);
  EXPECT_EQ(inner->log, L"hover move");
  EXPECT_EQ(a->log, L"");  // the deepest window under the mouse gets it
  gen().MoveMouseTo(80, 80);
  EXPECT_EQ(inner->log, L"hover move leave");
  EXPECT_EQ(a->log, L"hover move");
  EXPECT_TRUE(a->GetState() & WndState_Hover);
  gen().MoveMouseTo(150, 50);
  EXPECT_EQ(a->log, L"hover move leave");
  EXPECT_FALSE(a->GetState() & WndState_Hover);
  gen().MouseLeaveHost();
  EXPECT_EQ(b->log, L"hover move leave");
  EXPECT_EQ(host()->GetHover(), nullptr);
}

TEST_F(HostRoutingTest, CaptureKeepsThePressedWindowUntilRelease) {
  gen().MoveMouseTo(20, 20);
  gen().PressLeftButton();
  EXPECT_EQ(host()->GetCapture(), inner);
  gen().MoveMouseTo(150, 50);  // over b, but inner holds the capture
  EXPECT_EQ(b->log, L"");
  gen().ReleaseLeftButton();
  EXPECT_EQ(inner->log, L"hover move focus down leave move up");
  EXPECT_EQ(host()->GetCapture(), nullptr);
  EXPECT_EQ(b->log, L"hover");  // hover is re-evaluated on release
  // Released outside: no click.
  EXPECT_EQ(CountEvents(EVT_CMD), 0);
}

TEST_F(HostRoutingTest, PressAndReleaseInsideIsAClick) {
  gen().MoveMouseTo(150, 50);
  gen().ClickLeftButton();
  ASSERT_EQ(CountEvents(EVT_CMD), 1);
  EXPECT_EQ(events().back().nameFrom, L"b");
  gen().ClickRightButton();
  EXPECT_EQ(CountEvents(EVT_CMD), 1);
  EXPECT_EQ(CountEvents(EVT_CTXMENU), 1);
}

TEST_F(HostRoutingTest, DisabledAndTransparentWindowsTakeNoInput) {
  gen().MoveMouseTo(50, 150);
  gen().ClickLeftButton();
  EXPECT_EQ(off->log, L"");
  EXPECT_EQ(CountEvents(EVT_CMD), 0);
  // The transparent window passes the click to what lies under it (the root).
  gen().MoveMouseTo(150, 150);
  gen().ClickLeftButton();
  ASSERT_EQ(CountEvents(EVT_CMD), 1);
  EXPECT_EQ(events().back().idFrom, 0);
  EXPECT_TRUE(events().back().nameFrom.IsEmpty());
}

TEST_F(HostRoutingTest, KeysGoToTheFocusedWindowAndWheelClimbsUntilHandled) {
  gen().MoveMouseTo(20, 20);
  gen().ClickLeftButton();
  gen().PressKey(VK_RETURN);
  gen().Type(L"hi");
  EXPECT_EQ(inner->log, L"hover move focus down up key char char");
  gen().MoveMouseTo(150, 50);
  gen().ClickLeftButton();
  EXPECT_TRUE(inner->log.Right(4) == L"blur");
  a->eat_wheel = TRUE;
  gen().MoveMouseTo(20, 20);
  gen().MouseWheel(120);
  // The focused window is b; without sendWheel2Hover the wheel goes to focus.
  EXPECT_TRUE(b->log.Right(5) == L"wheel");
  EXPECT_EQ(a->log.Find(L"wheel"), -1);
}

TEST(HostWnd, WheelToHoverClimbsParentsUntilOneHandlesIt) {
  SApplication app;
  app.GetFactory().RegisterWindowClass<Probe>();
  SHostWnd host;
  host.InitFromXmlText(
      L"<SOUI sendWheel2Hover='1'><root><probe name='a' pos='0,0,100,100'>"
      L"<probe name='inner' pos='10,10,50,50'/></probe></root></SOUI>");
  host.Create(nullptr, 0, 0, 200, 200);
  test::EventGenerator gen(&host);
  auto* a = host.FindChildByName2<Probe>(L"a");
  auto* inner = host.FindChildByName2<Probe>(L"inner");
  a->eat_wheel = TRUE;
  gen.MoveMouseTo(20, 20);
  gen.MouseWheel(-120);
  EXPECT_EQ(inner->log, L"hover move wheel");
  EXPECT_EQ(a->log, L"wheel");
}

TEST(HostWnd, SizesFromLayoutAndFromContent) {
  SApplication app;
  {
    SHostWnd host;
    host.InitFromXmlText(L"<SOUI width='300dp' height='200dp' minsize='320,100'><root/></SOUI>");
    EXPECT_TRUE(IsWindow(host.Create()));
    EXPECT_EQ(host.GetWindowRect(), CRect(0, 0, 320, 200));  // minsize wins
    app.SetZoom(150);
    EXPECT_EQ(host.GetWindowRect(), CRect(0, 0, 450, 300));
  }
  app.SetZoom(100);
  SHostWnd wrap;
  wrap.InitFromXmlText(L"<SOUI><root><window pos='0,0,@120,@40'/></root></SOUI>");
  HWND hwnd = wrap.Create();
  EXPECT_EQ(wrap.GetWindowRect(), CRect(0, 0, 120, 40));
  wrap.DestroyWindow();
  EXPECT_FALSE(IsWindow(hwnd));
  EXPECT_FALSE(IsWindow(nullptr));
  RECT rc;
  EXPECT_FALSE(GetWindowRect(hwnd, &rc));
}

TEST(HostWnd, MalformedLayoutsAreRefusedAndLogged) {
  SApplication app;
  SHostWnd host;
  EXPECT_FALSE(host.InitFromXmlText(L"<SOUI><root></SOUI"));
  EXPECT_FALSE(host.InitFromXmlText(L"<notsoui/>"));
  SHostWnd missing(L"LAYOUT:nothing");
  EXPECT_EQ(missing.Create(), nullptr);
}

}  // namespace
}  // namespace SOUI

namespace SOUI {
namespace {

// Registries keyed by handle hear each destroyed window once, may destroy
// other hosts and drop listeners from inside the call.
TEST(HwndListenerTest, HearsEachDestroyedHandleOnceAndMayDestroyOthersMeanwhile) {
  SApplication app;
  auto make = [] {
    auto h = std::make_unique<SHostWnd>();
    h->InitFromXmlText(L"<SOUI><root/></SOUI>");
    h->Create(nullptr, 0, 0, 50, 50);
    return h;
  };
  std::unique_ptr<SHostWnd> a = make(), b = make();
  const HWND ha = a->m_hWnd, hb = b->m_hWnd;
  std::vector<HWND> heard;
  int second = 0;
  const int first = app.AddHwndDestroyedListener([&](HWND h) {
    heard.push_back(h);
    if (h == ha) {
      app.RemoveHwndDestroyedListener(second);
      b.reset();  // a window keyed to a goes with it
    }
  });
  second = app.AddHwndDestroyedListener([&](HWND) { ADD_FAILURE() << "removed listener called"; });
  EXPECT_EQ(app.AddHwndDestroyedListener(nullptr), 0);
  a->DestroyWindow();
  a->DestroyWindow();  // a second destroy reports nothing
  EXPECT_EQ(heard, (std::vector<HWND>{ha, hb}));
  EXPECT_FALSE(IsWindow(hb));
  app.RemoveHwndDestroyedListener(first);
  a.reset();
  EXPECT_EQ(heard.size(), 2u);
}

}  // namespace
}  // namespace SOUI
