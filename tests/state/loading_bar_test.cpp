#include "state/loading_bar.h"

#include <gtest/gtest.h>

#include <string>

#include "library_test_base.h"
#include "testing/recording_render.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CRect;
using SOUI::SStringW;

class LoadingBarTest : public LibraryTestBase {
 protected:
  // A page with a top bar and a bottom bar over a clickable content window.
  void SetUp() override {
    LibraryTestBase::SetUp();
    CreateHostWithChildren(
        L"<button name=\"content\" pos=\"0,0,-0,-0\"/>"
        L"<qv_toploadingbar name=\"top\" pos=\"0,0,-0,@28\"/>"
        L"<qv_bottomloadingbar name=\"bottom\" pos=\"0,-28,-0,-0\" qvstyle=\"LB2\" showdelay=\"0\" minshowtime=\"0\"/>",
        400, 300);
    top_ = Find<QVTopLoadingBar>(L"top");
    bottom_ = Find<QVBottomLoadingBar>(L"bottom");
    ASSERT_TRUE(top_ && bottom_);
  }
  std::string Paint(SOUI::SWindow* w) {
    SOUI::RecordingRenderTarget rt(400, 300);
    w->RedrawRegion(&rt, w->GetWindowRect());
    return rt.Dump();
  }
  size_t Handlers() { return host()->GetTimeline().HandlerCount(); }
  QVTopLoadingBar* top_ = nullptr;
  QVBottomLoadingBar* bottom_ = nullptr;
};

TEST_F(LoadingBarTest, StateWordsAndCodesAndTheirRejects) {
  // Every word in any case; the enumeration round-trips.
  for (int i = 0; i <= QVLoadingBar_Fail; ++i) {
    EnQVLoadingBarState s;
    SStringW word = QVLoadingBarStateName(static_cast<EnQVLoadingBarState>(i));
    word.MakeUpper();
    ASSERT_TRUE(ParseQVLoadingBarState(word, &s));
    EXPECT_EQ(s, i);
  }
  top_->SetAttribute(L"state", L"fail", FALSE);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Fail);
  // An unknown word or code, or a number outside the enumeration: logged, nothing changes.
  top_->SetAttribute(L"state", L"done", FALSE);
  top_->SetLoadingState(9);
  top_->SetAttribute(L"qvstyle", L"LB9", FALSE);
  EXPECT_EQ(top_->GetLoadingState(), QVLoadingBar_Fail);
  EXPECT_EQ(top_->GetStyleInfo(), FindQVLoadingBarStyle(L"LB1"));
  EXPECT_TRUE(LogContains(L"state=\"done\""));
  EXPECT_TRUE(LogContains(L"qvstyle=\"LB9\""));
  // The codes differ in the line's thickness.
  EXPECT_EQ(bottom_->GetStyleInfo()->line_dp, 3);
}

TEST_F(LoadingBarTest, ShowDelayHidesQuickLoadsEntirely) {
  top_->SetLoadingState(QVLoadingBar_Loading);
  // Asked for, not shown yet, and nothing ticks.
  EXPECT_EQ(top_->GetLoadingState(), QVLoadingBar_Loading);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Empty);
  EXPECT_EQ(Handlers(), 0u);
  Advance(150);
  // Done within the delay: no line, no fade, nothing at all.
  top_->SetLoadingState(QVLoadingBar_Complete);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Empty);
  EXPECT_EQ(top_->GetLoadingState(), QVLoadingBar_Empty);
  Advance(500);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Empty);
  EXPECT_EQ(Paint(top_), "");
}

TEST_F(LoadingBarTest, LineShowsAfterTheDelayStaysItsMinimumAndFadesOut) {
  top_->SetLoadingState(QVLoadingBar_Loading);
  Advance(199);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Empty);
  Advance(1);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Loading);
  EXPECT_TRUE(top_->IsAnimating());
  // The track and a segment along the top edge, 2dp high.
  const std::string dump = Paint(top_);
  EXPECT_NE(dump.find("FillSolidRect [0,0,400,2] #2F6BFF24"), std::string::npos) << dump;
  EXPECT_EQ(top_->GetSegmentRect().top, 0);
  EXPECT_EQ(top_->GetSegmentRect().bottom, 2);
  // The segment moves with time.
  const CRect before = top_->GetSegmentRect();
  Advance(300);
  EXPECT_NE(top_->GetSegmentRect(), before);
  // Completed 300 ms after showing: waits out the 400 ms minimum first.
  top_->SetLoadingState(QVLoadingBar_Complete);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Loading);
  Advance(100);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Complete);
  // The full line, fading: half way it is half as opaque.
  Advance(200);
  EXPECT_NE(Paint(top_).find("FillSolidRect [0,0,400,2] #2F6BFF80"), std::string::npos) << Paint(top_);
  Advance(200);
  // Faded: empty again, the timeline let go.
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Empty);
  EXPECT_EQ(top_->GetLoadingState(), QVLoadingBar_Empty);
  EXPECT_EQ(Handlers(), 0u);
}

TEST_F(LoadingBarTest, BottomBarDrawsOnItsLowerEdge) {
  bottom_->SetLoadingState(QVLoadingBar_Loading);
  ASSERT_EQ(bottom_->GetShownState(), QVLoadingBar_Loading);
  EXPECT_EQ(bottom_->GetLineRect(), CRect(0, 297, 400, 300));
}

TEST_F(LoadingBarTest, TimelineOnlyWhileVisibleAndMoving) {
  bottom_->SetLoadingState(QVLoadingBar_Loading);
  EXPECT_EQ(Handlers(), 1u);
  // Hidden by an ancestor: the next frame lets go.
  host()->GetRoot()->SetVisible(FALSE);
  Advance(50);
  EXPECT_EQ(Handlers(), 0u);
  EXPECT_EQ(bottom_->GetShownState(), QVLoadingBar_Loading);
  // Shown again: the next paint picks the frames up.
  host()->GetRoot()->SetVisible(TRUE);
  host()->Render();
  EXPECT_EQ(Handlers(), 1u);
  // Hidden itself: at once.
  bottom_->SetVisible(FALSE);
  EXPECT_EQ(Handlers(), 0u);
  bottom_->SetVisible(TRUE);
  EXPECT_EQ(Handlers(), 1u);
  // A band or an empty bar never ticks.
  bottom_->SetLoadingState(QVLoadingBar_Remind);
  EXPECT_EQ(Handlers(), 0u);
  bottom_->SetLoadingState(QVLoadingBar_Empty);
  Advance(1000);
  EXPECT_EQ(Handlers(), 0u);
}

TEST_F(LoadingBarTest, ClickablePartRaisesTheClickEventWithTheState) {
  top_->SetAttribute(L"failtext", L"Quotes failed to load", FALSE);
  top_->SetLoadingState(QVLoadingBar_Fail);
  host()->Render();
  const CRect link = top_->GetLinkRect();
  ASSERT_FALSE(link.IsRectEmpty());
  // The message, then the link in the link colour.
  const std::string dump = Paint(top_);
  EXPECT_NE(dump.find("DrawText \"Quotes failed to load\""), std::string::npos) << dump;
  EXPECT_NE(dump.find("DrawText \"Retry\""), std::string::npos) << dump;
  EXPECT_NE(dump.find("#2F6BFFFF"), std::string::npos) << dump;
  // A click on the message is nothing; on the link it is the event.
  gen().MoveMouseTo(link.left - 20, 14);
  gen().ClickLeftButton();
  EXPECT_EQ(CountEvents(EVT_QVLOADINGBAR_CLICK), 0);
  gen().MoveMouseToCenterOf(top_);
  gen().MoveMouseTo(link.CenterPoint());
  EXPECT_EQ(host()->GetCursorName(), L"hand");
  gen().ClickLeftButton();
  ASSERT_EQ(CountEvents(EVT_QVLOADINGBAR_CLICK), 1);
  EXPECT_EQ(events().back().name, L"on_qvloadingbar_click");
  // Remind has its own link; the event says which state it came from.
  int seen = -1;
  top_->subscribeEvent(EVT_QVLOADINGBAR_CLICK, [&](SOUI::EventArgs* e) {
    seen = static_cast<EventQVLoadingBarClick*>(e)->state;
    return true;
  });
  top_->SetLoadingState(QVLoadingBar_Remind);
  gen().MoveMouseTo(top_->GetLinkRect().CenterPoint());
  gen().ClickLeftButton();
  EXPECT_EQ(seen, QVLoadingBar_Remind);
}

TEST_F(LoadingBarTest, LineAndEmptyBarLetClicksThroughToThePage) {
  int clicks = 0;
  Find(L"content")->subscribeEvent(SOUI::EVT_CMD, [&](SOUI::EventArgs*) {
    ++clicks;
    return true;
  });
  bottom_->SetLoadingState(QVLoadingBar_Loading);
  gen().MoveMouseTo(200, 290);
  gen().ClickLeftButton();
  EXPECT_EQ(clicks, 1);
  // The band takes them.
  bottom_->SetLoadingState(QVLoadingBar_Remind);
  gen().ClickLeftButton();
  EXPECT_EQ(clicks, 1);
}

TEST_F(LoadingBarTest, NewLoadClearsAStaleMessageAndALateStateWaitsForTheMinimum) {
  top_->SetLoadingState(QVLoadingBar_Fail);
  // Retry: the fail band goes at once, the line comes after the delay.
  top_->SetLoadingState(QVLoadingBar_Loading);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Empty);
  Advance(200);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Loading);
  // Failed again 50 ms later: the line stays to 400 ms, then the band.
  Advance(50);
  top_->SetLoadingState(QVLoadingBar_Fail);
  Advance(349);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Loading);
  Advance(1);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Fail);
  // Loading asked again while waiting: it simply stays.
  top_->SetLoadingState(QVLoadingBar_Loading);
  Advance(200);
  top_->SetLoadingState(QVLoadingBar_Remind);
  top_->SetLoadingState(QVLoadingBar_Loading);
  Advance(1000);
  EXPECT_EQ(top_->GetShownState(), QVLoadingBar_Loading);
}

TEST_F(LoadingBarTest, DestroyedWhileTimersAndFramesArePending) {
  top_->SetLoadingState(QVLoadingBar_Loading);  // delay pending
  bottom_->SetLoadingState(QVLoadingBar_Loading);
  bottom_->SetLoadingState(QVLoadingBar_Complete);  // fade pending, ticking
  ASSERT_EQ(Handlers(), 1u);
  top_->DestroyWindow();
  bottom_->DestroyWindow();
  EXPECT_EQ(Handlers(), 0u);
  Advance(2000);
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
