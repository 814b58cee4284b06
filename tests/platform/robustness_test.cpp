// Hostile layouts and sizes: each must end promptly with one clear log line
// and leave a host that still lays out, paints and routes a click.
#include <gtest/gtest.h>

#include <pthread.h>

#include <chrono>
#include <functional>
#include <string>

#include "qvhost/qvlog.h"
#include "soui/render.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

using Clock = std::chrono::steady_clock;

// Counts how often its content is measured.
class CountingWnd : public SWindow {
  SOUI_CLASS_NAME(CountingWnd, SWindow, L"counting")
 public:
  static int measured;

 protected:
  CSize MeasureContent(int width) override {
    ++measured;
    return SWindow::MeasureContent(width);
  }
};
int CountingWnd::measured = 0;

class RobustnessTest : public test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    app_->GetFactory().RegisterWindowClass<CountingWnd>();
  }

  // A host around `body` with a button to prove input still works.
  void Build(const SStringW& body, int width = 400, int height = 300) {
    const auto start = Clock::now();
    CreateHostWithChildren(SStringW(L"<button name='ok' pos='0,0,@80,@30'/>") + body, width, height);
    build_ms_ = ElapsedMs(start);
  }

  static long long ElapsedMs(Clock::time_point since) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - since).count();
  }

  // Lays out, paints and routes a click to the button.
  void ExpectUsable() {
    ASSERT_NE(nullptr, host()->Render());
    SWindow* ok = Find(L"ok");
    ASSERT_NE(nullptr, ok);
    EXPECT_EQ(CRect(0, 0, 80, 30), ok->GetWindowRect());
    ClearEvents();
    gen().MoveMouseToCenterOf(ok);
    gen().ClickLeftButton();
    EXPECT_EQ(1, CountEvents(EVT_CMD));
  }

  int CountLogLines(const wchar_t* text) const {
    int n = 0;
    for (const QVLogLine& l : QVLogSinkOf(*app_).Lines()) n += l.Format().Find(text) >= 0;
    return n;
  }

  long long build_ms_ = 0;
};

// Runs fn on a thread with a stack of the given size, and waits for it.
void RunWithStack(size_t bytes, std::function<void()> fn) {
  pthread_attr_t attr;
  pthread_attr_init(&attr);
  pthread_attr_setstacksize(&attr, bytes);
  pthread_t thread;
  auto body = [](void* arg) -> void* {
    (*static_cast<std::function<void()>*>(arg))();
    return nullptr;
  };
  ASSERT_EQ(0, pthread_create(&thread, &attr, body, &fn));
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attr);
}

// Half the usual 8 MB main stack: the deepest tree must fit with room to spare.
constexpr size_t kHalfStack = 4u << 20;

// Generous enough for a sanitized build on a busy machine; the faults these
// guard against took tens of seconds or crashed.
constexpr long long kPromptMs = 3000;

// ---- includes --------------------------------------------------------------------

TEST_F(RobustnessTest, SelfIncludingLayoutIsExpandedOnce) {
  app_->GetResProvider().AddXml(L"LAYOUT", L"self", "<window name='me'><include src='LAYOUT:self'/></window>");
  Build(L"<include src='LAYOUT:self'/>");
  EXPECT_LT(build_ms_, kPromptMs);
  EXPECT_TRUE(LogContains(L"include: cycle layout:self -> layout:self"));
  // The layout itself is there once; the repeat inside it is not.
  SWindow* me = Find(L"me");
  ASSERT_NE(nullptr, me);
  EXPECT_EQ(0u, me->GetChildrenCount());
  ExpectUsable();
}

TEST_F(RobustnessTest, TwoLayoutCycleExpandsEachOnce) {
  app_->GetResProvider().AddXml(L"LAYOUT", L"a", "<window name='a'><include src='b'/></window>");
  app_->GetResProvider().AddXml(L"LAYOUT", L"b", "<window name='b'><include src='LAYOUT:a'/></window>");
  Build(L"<include src='LAYOUT:a'/>");
  EXPECT_LT(build_ms_, kPromptMs);
  EXPECT_TRUE(LogContains(L"include: cycle layout:a -> layout:b -> layout:a"));
  // a holds b, b holds nothing: the hop from a to b is legitimate.
  SWindow* b = Find(L"b");
  ASSERT_NE(nullptr, b);
  EXPECT_EQ(Find(L"a"), b->GetParent());
  EXPECT_EQ(0u, b->GetChildrenCount());
  ExpectUsable();
}

TEST_F(RobustnessTest, SameLayoutIncludedTwiceSideBySideIsNoCycle) {
  app_->GetResProvider().AddXml(L"LAYOUT", L"leaf", "<window name='leaf'/>");
  Build(L"<include src='leaf'/><include src='leaf'/>");
  EXPECT_FALSE(LogContains(L"include:"));
  EXPECT_EQ(3u, host()->GetRoot()->GetChildrenCount());  // the button and two leaves
}

TEST_F(RobustnessTest, IncludeChainDeeperThanTheLimitStops) {
  // l0 includes l1 includes l2 ...: distinct layouts, no cycle, too deep.
  const int n = SWindow::kMaxIncludeDepth + 5;
  for (int i = 0; i < n; ++i) {
    const std::string xml =
        "<window name='l" + std::to_string(i) + "'><include src='l" + std::to_string(i + 1) + "'/></window>";
    app_->GetResProvider().AddXml(L"LAYOUT", SStringW::Format2(L"l%d", i), xml);
  }
  Build(L"<include src='l0'/>");
  EXPECT_TRUE(LogContains(L"nested deeper than 32 includes"));
  EXPECT_NE(nullptr, Find(SStringW::Format2(L"l%d", SWindow::kMaxIncludeDepth - 1)));
  EXPECT_EQ(nullptr, Find(SStringW::Format2(L"l%d", SWindow::kMaxIncludeDepth)));
  ExpectUsable();
}

// ---- nesting depth ------------------------------------------------------------------

TEST_F(RobustnessTest, HundredThousandLevelsAreCutAtTheLimitAndTheDeepestTreeWorks) {
  constexpr int kLevels = 100000;
  std::wstring xml;
  xml.reserve(kLevels * 32);
  for (int i = 0; i < kLevels; ++i) xml += L"<window pos='0,0,-0,-0'>";
  for (int i = 0; i < kLevels; ++i) xml += L"</window>";
  RunWithStack(kHalfStack, [&] {
    Build(SStringW(xml.c_str()));
    EXPECT_LT(build_ms_, kPromptMs);
    EXPECT_EQ(1, CountLogLines(L"layout nested deeper than 1000 levels"));

    // Hit-testing reaches the deepest window the limit allows.
    const auto start = Clock::now();
    gen().MoveMouseTo(300, 200);
    SWindow* deepest = host()->GetHover();
    ASSERT_NE(nullptr, deepest);
    EXPECT_EQ(SWindow::kMaxTreeDepth, deepest->GetDepth());
    EXPECT_EQ(CRect(0, 0, 400, 300), deepest->GetWindowRect());
    ExpectUsable();
    // A resize lays the whole chain out again.
    host()->MoveWindow(0, 0, 500, 400);
    ASSERT_NE(nullptr, host()->Render());
    EXPECT_EQ(CRect(0, 0, 500, 400), deepest->GetWindowRect());
    // Zoom and theme changes reach every level.
    app_->SetZoom(150);
    app_->NotifyThemeChanged();
    ASSERT_NE(nullptr, host()->Render());
    EXPECT_EQ(host()->GetClientRect(), deepest->GetWindowRect());
    // And the deepest tree is destroyed without trouble.
    host_.reset();
    EXPECT_LT(ElapsedMs(start), kPromptMs);
  });
}

TEST_F(RobustnessTest, DeepestContentSizedChainFitsHalfAStack) {
  // Every level sizes to its content: measuring recurses the whole depth.
  std::wstring xml;
  for (int i = 0; i < 100000; ++i) xml += L"<window text='x' colorBkgnd='#FFFFFF'>";
  for (int i = 0; i < 100000; ++i) xml += L"</window>";
  RunWithStack(kHalfStack, [&] {
    Build(SStringW(xml.c_str()));
    EXPECT_LT(build_ms_, kPromptMs);
    EXPECT_TRUE(LogContains(L"layout nested deeper than 1000 levels"));
    SWindow* outer = host()->GetRoot()->GetWindow(GSW_LASTCHILD);
    EXPECT_GT(outer->GetWindowRect().Width(), 0);
    ExpectUsable();
    host_.reset();
  });
}

TEST_F(RobustnessTest, InsertChildRefusesToGoDeeperThanTheLimit) {
  CreateHostWithChildren(L"");
  SWindow* bottom = host()->GetRoot();
  for (int i = 0; i < SWindow::kMaxTreeDepth; ++i) {
    auto* w = new SWindow();
    ASSERT_TRUE(bottom->InsertChild(w));
    bottom = w;
  }
  EXPECT_EQ(SWindow::kMaxTreeDepth, bottom->GetDepth());
  SWindow extra;
  EXPECT_FALSE(bottom->InsertChild(&extra));
  EXPECT_EQ(nullptr, extra.GetParent());
  EXPECT_TRUE(LogContains(L"InsertChild: the tree would be deeper than 1000 levels"));

  // A subtree two deep fits one level higher only if it reaches no deeper.
  auto* pair = new SWindow();
  pair->InsertChild(new SWindow());
  SWindow* above = bottom->GetParent();
  EXPECT_FALSE(above->InsertChild(pair));
  ASSERT_TRUE(above->GetParent()->InsertChild(pair));
  EXPECT_EQ(SWindow::kMaxTreeDepth, pair->GetWindow(GSW_FIRSTCHILD)->GetDepth());
  // Moved to the root, the subtree's depths follow.
  ASSERT_TRUE(pair->GetParent()->RemoveChild(pair));
  EXPECT_EQ(1, pair->GetWindow(GSW_FIRSTCHILD)->GetDepth());
  ASSERT_TRUE(host()->GetRoot()->InsertChild(pair));
  EXPECT_EQ(2, pair->GetWindow(GSW_FIRSTCHILD)->GetDepth());
}

TEST_F(RobustnessTest, AWindowTakenOutOfTheTreeOutlivesItsHost) {
  // Taken out with the capture, hover and a timer on it, the subtree leaves
  // the host with nothing pointing either way; deleting it after the host
  // is gone touches no host.
  CreateHostWithChildren(L"<window name='box' pos='0,0,100,100'><window name='inner' pos='0,0,50,50'/></window>");
  SWindow* box = Find(L"box");
  SWindow* inner = Find(L"inner");
  gen().MoveMouseTo(CPoint(10, 10));
  gen().PressLeftButton();
  inner->SetCapture();
  inner->SetTimer(1, 10);
  ASSERT_TRUE(host()->GetRoot()->RemoveChild(box));
  EXPECT_EQ(nullptr, host()->GetCapture());
  EXPECT_EQ(nullptr, host()->GetHover());
  EXPECT_EQ(nullptr, inner->GetContainer());
  host_.reset();
  delete box;
}

// ---- measuring once a pass ----------------------------------------------------------

TEST_F(RobustnessTest, NestedWrapWindowsAreMeasuredOncePerPass) {
  constexpr int kLevels = 200;
  std::wstring xml;
  for (int i = 0; i < kLevels; ++i) xml += L"<counting text='x'>";
  for (int i = 0; i < kLevels; ++i) xml += L"</counting>";
  CountingWnd::measured = 0;
  CreateHostWithChildren(xml.c_str());
  // Building and the first layout: once per window (the host sizes itself first).
  EXPECT_LE(CountingWnd::measured, 2 * kLevels);
  CountingWnd::measured = 0;
  host()->MoveWindow(0, 0, 500, 400);
  host()->UpdateLayout();
  EXPECT_LE(CountingWnd::measured, kLevels);
}

TEST_F(RobustnessTest, ChangedTextDeepInsideResizesEveryWrapAncestor) {
  CreateHostWithChildren(
      L"<window name='outer' padding='2'><window name='mid' padding='2'>"
      L"<window name='inner' text='ab'/></window></window>");
  const int before = Find(L"outer")->GetWindowRect().Width();
  ASSERT_GT(before, 0);
  Find(L"inner")->SetWindowText(L"a much longer label than before");
  Layout();
  EXPECT_GT(Find(L"outer")->GetWindowRect().Width(), before);
  EXPECT_EQ(Find(L"inner")->GetWindowRect().Width() + 8, Find(L"outer")->GetWindowRect().Width());
}

// ---- text size ----------------------------------------------------------------------

TEST_F(RobustnessTest, TenMegabyteAttributeIsCutAndMeasuresWide) {
  const std::wstring huge(10 * 1024 * 1024, L'W');
  Build(SStringW(L"<window name='big' pos='0,40' text='") + huge.c_str() + L"'/>");
  EXPECT_LT(build_ms_, kPromptMs);
  EXPECT_EQ(1, CountLogLines(L"attribute text longer than 65536 characters; cut"));
  SWindow* big = Find(L"big");
  ASSERT_NE(nullptr, big);
  EXPECT_EQ(SWindow::kMaxWindowTextLength, big->GetWindowText().GetLength());
  // Wider than any screen, not zero or negative from a wrapped int.
  EXPECT_GT(big->GetWindowRect().Width(), 100000);
  const auto start = Clock::now();
  ExpectUsable();
  EXPECT_LT(ElapsedMs(start), kPromptMs);
}

TEST_F(RobustnessTest, LongTextSetInCodeIsCut) {
  CreateHostWithChildren(L"<window name='w'/>");
  Find(L"w")->SetWindowText(SStringW(std::wstring(SWindow::kMaxWindowTextLength + 1, L'x').c_str()));
  EXPECT_EQ(SWindow::kMaxWindowTextLength, Find(L"w")->GetWindowText().GetLength());
  EXPECT_TRUE(LogContains(L"text of 65537 characters cut to 65536"));
}

TEST_F(RobustnessTest, TextTooWideForIntMeasuresHugeNotWrapped) {
  // 16K glyphs of a 3000 px font would be ~10^11 pango units across.
  std::unique_ptr<IRenderTarget> rt = app_->GetRenderFactory()->CreateRenderTarget(10, 10);
  FontDesc desc;
  desc.height = 3000;
  rt->SelectFont(rt->CreateFont(desc));
  const std::wstring text(kMaxRenderTextLength, L'W');
  SIZE size{};
  rt->MeasureText(text.c_str(), static_cast<int>(text.size()), &size);
  EXPECT_GT(size.cx, 100000);
  CRect rc(0, 0, 0, 0);
  rt->DrawText(text.c_str(), static_cast<int>(text.size()), &rc, DT_SINGLELINE | DT_CALCRECT);
  EXPECT_GT(rc.Width(), 100000);
}

// ---- sizes and resources ------------------------------------------------------------

TEST_F(RobustnessTest, HostTooLargeToPaintSaysSoOnceAndRecoversOnResize) {
  CreateHostWithChildren(L"<button name='ok' pos='0,0,@80,@30'/><window name='fill' pos='0,0,-0,-0'/>");
  const auto start = Clock::now();
  host()->MoveWindow(0, 0, 100000, 100000);
  EXPECT_EQ(nullptr, host()->Render());
  EXPECT_EQ(nullptr, host()->Render());
  EXPECT_EQ(1, CountLogLines(L"no frame of 100000x100000 pixels"));
  // Layout and input go on regardless.
  EXPECT_EQ(CRect(0, 0, 100000, 100000), Find(L"fill")->GetWindowRect());
  gen().MoveMouseToCenterOf(Find(L"ok"));
  gen().ClickLeftButton();
  EXPECT_EQ(1, CountEvents(EVT_CMD));
  // Back to a sane size, it paints again.
  host()->MoveWindow(0, 0, 320, 200);
  IRenderTarget* frame = host()->Render();
  ASSERT_NE(nullptr, frame);
  EXPECT_EQ(CSize(320, 200), frame->GetSize());
  EXPECT_LT(ElapsedMs(start), kPromptMs);
  ExpectUsable();
}

TEST_F(RobustnessTest, SkinWithMissingImageWarnsOnceNotPerPaint) {
  pugi::xml_document doc;
  ASSERT_TRUE(doc.load_string(
      "<uidef><skin><imglist name='ghost' src='no_such_dir/ghost.png' states='2'/></skin></uidef>"));
  ASSERT_TRUE(app_->GetResProvider().LoadUiDef(doc.first_child(), L"/nonexistent/"));
  CreateHostWithChildren(L"<window name='w' pos='0,0,50,50' skin='ghost'/>");
  host()->Render();
  Find(L"w")->Invalidate();
  host()->Render();
  EXPECT_EQ(1, CountLogLines(L"skin 'ghost' (imglist): image 'no_such_dir/ghost.png' could not be loaded"));
}

TEST_F(RobustnessTest, OutOfRangePosIsReported) {
  CreateHostWithChildren(L"<window name='far' pos='99999999999dp,0'/>");
  EXPECT_TRUE(LogContains(L"window name='far': pos=\"99999999999dp,0\" is malformed or out of range"));
}

}  // namespace
}  // namespace SOUI
