// The guide driven through the event generator on the test clock: its step
// events, where the bubble stands for anchors near each edge, following
// its anchor, and bad input.
#include "popups/guide.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "library_test_base.h"
#include "soui/sapp.h"
#include "testing/event_generator.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;
using SOUI::test::EventGenerator;

// An 800 x 600 owner at (100, 50) with anchors near its edges and corners.
constexpr const wchar_t* kOwner =
    L"<SOUI><root>"
    L"<button name='below' pos='0,0,-0,-0' text='below'/>"
    L"<text name='top_left' pos='10,10,@60,@24' text='TL'/>"
    L"<text name='top_right' pos='730,10,@60,@24' text='TR'/>"
    L"<text name='bottom_left' pos='10,566,@60,@24' text='BL'/>"
    L"<text name='bottom_right' pos='730,566,@60,@24' text='BR'/>"
    L"<text name='left_tall' pos='10,60,@40,@480' text='L'/>"
    L"<text name='right_tall' pos='750,60,@40,@480' text='R'/>"
    L"<text name='middle' pos='370,288,@60,@24' text='M'/>"
    L"</root></SOUI>";

QVGuideStep Step(const wchar_t* anchor, const wchar_t* title = L"Title") {
  return QVGuideStep{anchor, title, L"Some words about what this is for.", L""};
}

class GuideTest : public LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    CreateHost(kOwner, 800, 600);
    host()->SetWindowPos(nullptr, 100, 50, 800, 600, SOUI::SWP_NOZORDER | SOUI::SWP_SHOWWINDOW);
    Layout();
    Find(L"below")->subscribeEvent(SOUI::EVT_CMD, [this](SOUI::EventArgs*) {
      ++clicks_below_;
      return true;
    });
    // Each guide event as one line: "step 1 from 0", "finished 2", "skipped 1 user".
    SOUI::SWindow* root = host()->GetRoot();
    IQVGuide::AddEvents(root);
    root->subscribeEvent(EVT_QVGUIDE_STEP_CHANGED, [this](SOUI::EventArgs* e) {
      auto* s = static_cast<EventQVGuideStepChanged*>(e);
      log_.push_back("step " + std::to_string(s->step) + " from " + std::to_string(s->previous));
      return true;
    });
    root->subscribeEvent(EVT_QVGUIDE_FINISHED, [this](SOUI::EventArgs* e) {
      log_.push_back("finished " + std::to_string(static_cast<EventQVGuideFinished*>(e)->step));
      return true;
    });
    root->subscribeEvent(EVT_QVGUIDE_SKIPPED, [this](SOUI::EventArgs* e) {
      auto* s = static_cast<EventQVGuideSkipped*>(e);
      static const char* const kReasons[] = {"user", "anchor lost", "replaced", "stopped"};
      log_.push_back("skipped " + std::to_string(s->step) + " " + kReasons[static_cast<int>(s->reason)]);
      return true;
    });
  }
  HWND owner() { return host()->m_hWnd; }
  CQVGuideWnd* Bubble() { return IQVGuide::GetGuideWnd(owner()); }
  // A click on a part of the bubble, through the bubble's own window.
  void ClickPart(EnQVGuidePart part) {
    CQVGuideWnd* wnd = Bubble();
    ASSERT_NE(wnd, nullptr);
    const CRect rc = wnd->GetPartRect(part);
    ASSERT_FALSE(rc.IsRectEmpty());
    EventGenerator g(wnd);
    g.MoveMouseTo(rc.CenterPoint());
    g.ClickLeftButton();
  }
  // Keys go to the owner, which keeps the keyboard while the bubble shows.
  void Key(UINT vk) { gen().PressAndReleaseKey(vk); }
  // An anchor's rectangle on the screen.
  CRect AnchorRect(const wchar_t* name) {
    CRect rc = Find(name)->GetWindowRect();
    rc.OffsetRect(host()->GetWindowRect().TopLeft());
    return rc;
  }
  std::vector<std::string> log_;
  int clicks_below_ = 0;
};

TEST_F(GuideTest, NextPreviousEnterAndEscapeRaiseStepEventsInOrder) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"top_left"), Step(L"middle"), Step(L"bottom_right")}));
  // The first step has no "previous".
  EXPECT_TRUE(Bubble()->GetPartRect(EnQVGuidePart::Previous).IsRectEmpty());
  ClickPart(EnQVGuidePart::Next);
  Key(VK_RETURN);
  ClickPart(EnQVGuidePart::Previous);
  Key(VK_ESCAPE);
  EXPECT_EQ(log_, (std::vector<std::string>{"step 0 from -1", "step 1 from 0", "step 2 from 1", "step 1 from 2",
                                            "skipped 1 user"}));
  EXPECT_FALSE(IQVGuide::IsRunning(owner()));
  EXPECT_EQ(IQVGuide::RunningCount(), 0u);
  // Nothing of it reached the owner's windows.
  EXPECT_EQ(clicks_below_, 0);
}

TEST_F(GuideTest, DoneOnTheLastStepFinishesAndCloseSkips) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"top_left"), Step(L"middle")}));
  Key(VK_RETURN);
  ClickPart(EnQVGuidePart::Next);  // "done" on the last step
  EXPECT_EQ(log_, (std::vector<std::string>{"step 0 from -1", "step 1 from 0", "finished 1"}));
  EXPECT_EQ(Bubble(), nullptr);
  // Once over, Esc and Enter are the owner's again.
  Advance(10);
  log_.clear();
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"top_left"), Step(L"middle")}));
  ClickPart(EnQVGuidePart::Close);
  EXPECT_EQ(log_, (std::vector<std::string>{"step 0 from -1", "skipped 0 user"}));
}

// Where the bubble stands for an anchor, by the order below, above, right,
// left; it always stays inside the owner and its tail points at the anchor.
struct PlacementCase {
  const char* label;
  const wchar_t* anchor;
  EnQVGuideSide side;
};

class GuidePlacementTest : public GuideTest, public ::testing::WithParamInterface<PlacementCase> {};

TEST_P(GuidePlacementTest, StaysInsideTheOwnerAndPointsAtTheAnchor) {
  const PlacementCase& c = GetParam();
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(c.anchor)}));
  CQVGuideWnd* wnd = Bubble();
  ASSERT_NE(wnd, nullptr);
  EXPECT_EQ(wnd->GetSide(), c.side);
  CRect inside = host()->GetWindowRect();
  inside.DeflateRect(IQVGuide::kMargin, IQVGuide::kMargin);
  const CRect b = wnd->GetBubbleRect();
  EXPECT_TRUE(b.left >= inside.left && b.top >= inside.top && b.right <= inside.right && b.bottom <= inside.bottom)
      << b.left << "," << b.top << "," << b.right << "," << b.bottom;
  // The tail's point stands kGap off the anchor's facing edge, within its
  // span, and the tail reaches the bubble.
  const CRect a = AnchorRect(c.anchor);
  const CPoint tip = wnd->GetTailTip();
  const int reach = IQVGuide::kTail;
  switch (c.side) {
    case EnQVGuideSide::Below:
      EXPECT_EQ(tip.y, a.bottom + IQVGuide::kGap);
      EXPECT_EQ(tip.y + reach, b.top);
      break;
    case EnQVGuideSide::Above:
      EXPECT_EQ(tip.y, a.top - IQVGuide::kGap - 1);
      EXPECT_EQ(tip.y - reach + 1, b.bottom);
      break;
    case EnQVGuideSide::Right:
      EXPECT_EQ(tip.x, a.right + IQVGuide::kGap);
      EXPECT_EQ(tip.x + reach, b.left);
      break;
    case EnQVGuideSide::Left:
      EXPECT_EQ(tip.x, a.left - IQVGuide::kGap - 1);
      EXPECT_EQ(tip.x - reach + 1, b.right);
      break;
  }
  if (c.side == EnQVGuideSide::Below || c.side == EnQVGuideSide::Above) {
    EXPECT_TRUE(tip.x >= a.left && tip.x < a.right) << tip.x;
  } else {
    EXPECT_TRUE(tip.y >= a.top && tip.y < a.bottom) << tip.y;
  }
  // The window holds the whole bubble and its tail.
  const CRect win = wnd->GetWindowRect();
  EXPECT_TRUE(win.PtInRect(tip) && win.PtInRect(b.TopLeft()) && win.PtInRect(CPoint(b.right - 1, b.bottom - 1)));
}

INSTANTIATE_TEST_SUITE_P(
    Edges, GuidePlacementTest,
    ::testing::Values(PlacementCase{"TopLeft", L"top_left", EnQVGuideSide::Below},
                      PlacementCase{"TopRight", L"top_right", EnQVGuideSide::Below},
                      PlacementCase{"BottomLeft", L"bottom_left", EnQVGuideSide::Above},
                      PlacementCase{"BottomRight", L"bottom_right", EnQVGuideSide::Above},
                      PlacementCase{"LeftTall", L"left_tall", EnQVGuideSide::Right},
                      PlacementCase{"RightTall", L"right_tall", EnQVGuideSide::Left},
                      PlacementCase{"Middle", L"middle", EnQVGuideSide::Below}),
    [](const ::testing::TestParamInfo<PlacementCase>& info) { return std::string(info.param.label); });

TEST_F(GuideTest, FollowsTheAnchorWhenTheOwnerMovesAndTheLayoutChanges) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"middle")}));
  const CRect before = Bubble()->GetBubbleRect();
  // The owner moves: the bubble moves with it at once.
  host()->SetWindowPos(nullptr, 160, 90, 800, 600, SOUI::SWP_NOZORDER | SOUI::SWP_NOACTIVATE);
  CRect moved = before;
  moved.OffsetRect(60, 40);
  EXPECT_EQ(Bubble()->GetBubbleRect(), moved);
  // The layout moves the anchor: the bubble follows within a follow tick.
  Find(L"middle")->SetAttribute(L"pos", L"300,200,@60,@24", FALSE);
  Advance(IQVGuide::kFollowMs);
  EXPECT_EQ(Bubble()->GetTailTip().x, AnchorRect(L"middle").CenterPoint().x);
  EXPECT_EQ(Bubble()->GetTailTip().y, AnchorRect(L"middle").bottom + IQVGuide::kGap);
  // Hidden with its owner, back when the owner shows again.
  host()->ShowWindow(SOUI::SW_HIDE);
  EXPECT_FALSE(Bubble()->IsWindowVisible());
  host()->ShowWindow(SOUI::SW_SHOWNOACTIVATE);
  Advance(IQVGuide::kFollowMs);
  EXPECT_TRUE(Bubble()->IsWindowVisible());
  // A new zoom lays the bubble out again at its scale.
  app_->SetZoom(150);
  Advance(IQVGuide::kFollowMs);
  EXPECT_EQ(Bubble()->GetBubbleRect().Width(), IQVGuide::kBubbleW * 3 / 2);
}

TEST_F(GuideTest, BadStartsAreRefusedWithALogLine) {
  EXPECT_FALSE(IQVGuide::Start(owner(), {}));
  EXPECT_TRUE(LogContains(L"empty step list"));
  EXPECT_FALSE(IQVGuide::Start(nullptr, {Step(L"middle")}));
  EXPECT_FALSE(IQVGuide::Start(reinterpret_cast<HWND>(0x7777), {Step(L"middle")}));
  EXPECT_TRUE(LogContains(L"hWnd Not Valid"));
  EXPECT_FALSE(IQVGuide::Start(owner(), {Step(L"middle")}, 1));
  EXPECT_FALSE(IQVGuide::Start(owner(), {Step(L"middle")}, -1));
  EXPECT_TRUE(LogContains(L"out of range"));
  EXPECT_FALSE(IQVGuide::Start(owner(), {Step(L"nowhere"), Step(L"")}));
  EXPECT_TRUE(LogContains(L"no step has an anchor"));
  EXPECT_EQ(IQVGuide::RunningCount(), 0u);
  EXPECT_TRUE(log_.empty());
  // Calls on an owner without a guide do nothing.
  IQVGuide::Stop(owner());
  EXPECT_FALSE(IQVGuide::Next(owner()));
  EXPECT_FALSE(IQVGuide::Previous(owner()));
  EXPECT_EQ(IQVGuide::GetStep(owner()), -1);
  // A missing picture is named; the step shows without it.
  EXPECT_TRUE(IQVGuide::Start(owner(), {QVGuideStep{L"middle", L"T", L"x", L"no_such_skin"}}));
  EXPECT_TRUE(LogContains(L"image skin \"no_such_skin\" not found"));
}

TEST_F(GuideTest, StepsWithoutAnAnchorArePassedOverBothWays) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"nowhere"), Step(L"top_left"), Step(L"gone"), Step(L"middle")}));
  EXPECT_TRUE(LogContains(L"anchor \"nowhere\" not found"));
  Key(VK_RETURN);
  EXPECT_TRUE(IQVGuide::Previous(owner()));
  // Nothing showable before step 1: "previous" stays where it is.
  EXPECT_FALSE(IQVGuide::Previous(owner()));
  EXPECT_EQ(IQVGuide::GetStep(owner()), 1);
  EXPECT_EQ(log_, (std::vector<std::string>{"step 1 from -1", "step 3 from 1", "step 1 from 3"}));
}

TEST_F(GuideTest, AnAnchorDestroyedWhileItsStepShowsMovesOnOrEnds) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"top_left"), Step(L"middle")}));
  // The first step's anchor goes: the guide moves on to the next step.
  SOUI::SWindow* tl = Find(L"top_left");
  tl->GetParent()->DestroyChild(tl);
  Advance(1);
  EXPECT_EQ(IQVGuide::GetStep(owner()), 1);
  // The last step's anchor hides: nothing is left, so the guide ends.
  Find(L"middle")->SetVisible(FALSE, TRUE);
  Advance(IQVGuide::kFollowMs);
  EXPECT_EQ(log_, (std::vector<std::string>{"step 0 from -1", "step 1 from 0", "skipped 1 anchor lost"}));
  EXPECT_TRUE(LogContains(L"no later step can show"));
  EXPECT_EQ(IQVGuide::RunningCount(), 0u);
}

TEST_F(GuideTest, ASecondStartReplacesAndStopEnds) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"top_left"), Step(L"middle")}));
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"bottom_left")}));
  EXPECT_EQ(IQVGuide::RunningCount(), 1u);
  EXPECT_EQ(Bubble()->GetSide(), EnQVGuideSide::Above);
  IQVGuide::Stop(owner());
  EXPECT_EQ(log_, (std::vector<std::string>{"step 0 from -1", "skipped 0 replaced", "step 0 from -1",
                                            "skipped 0 stopped"}));
}

TEST_F(GuideTest, TheOwnerClosingTakesItsGuideQuietly) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"top_left"), Step(L"middle")}));
  // Closed mid-guide, then its windows destroyed with the host object.
  host()->DestroyWindow();
  EXPECT_EQ(IQVGuide::RunningCount(), 0u);
  Advance(IQVGuide::kFollowMs * 3);
  host_.reset();
  Advance(IQVGuide::kFollowMs * 3);
  EXPECT_EQ(log_, (std::vector<std::string>{"step 0 from -1"}));
}

TEST_F(GuideTest, TheBubbleDestroyedAloneEndsTheGuideAsStopped) {
  ASSERT_TRUE(IQVGuide::Start(owner(), {Step(L"top_left")}));
  Bubble()->DestroyWindow();
  Advance(IQVGuide::kFollowMs);
  EXPECT_EQ(log_, (std::vector<std::string>{"step 0 from -1", "skipped 0 stopped"}));
  EXPECT_EQ(IQVGuide::RunningCount(), 0u);
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
