#include "state/page_loading.h"

#include <gtest/gtest.h>

#include <string>

#include "display/buttons.h"
#include "library_test_base.h"
#include "testing/recording_render.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CRect;
using SOUI::SStringW;

class PageLoadingTest : public LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    CreateHostWithChildren(
        L"<button name=\"content\" pos=\"0,0,-0,-0\"/>"
        L"<qv_pageloadingctrl name=\"panel\" pos=\"0,0,-0,-0\" failtext=\"Positions failed to load\"/>",
        400, 300);
    panel_ = Find<QVPageLoadingCtrl>(L"panel");
    ASSERT_TRUE(panel_);
  }
  std::string Paint() {
    Layout();
    SOUI::RecordingRenderTarget rt(400, 300);
    panel_->RedrawRegion(&rt, panel_->GetWindowRect());
    return rt.Dump();
  }
  size_t Handlers() { return host()->GetTimeline().HandlerCount(); }
  QVPageLoadingCtrl* panel_ = nullptr;
};

TEST_F(PageLoadingTest, EachStateDrawsItsBlockCentred) {
  // None: nothing at all.
  EXPECT_EQ(Paint(), "");
  // Empty: page colour, the card picture (96dp) and the text under it.
  panel_->SetAttribute(L"state", L"EMPTY", FALSE);
  std::string dump = Paint();
  EXPECT_NE(dump.find("FillSolidRect [0,0,400,300] #FFFFFFFF"), std::string::npos) << dump;
  EXPECT_NE(dump.find("FillRoundRect"), std::string::npos) << dump;
  EXPECT_NE(dump.find("DrawText \"No data\""), std::string::npos) << dump;
  EXPECT_EQ(dump.find("FillEllipse"), std::string::npos) << dump;  // no warning mark
  const CRect pic = panel_->GetGraphicRect();
  EXPECT_EQ(pic.Width(), 96);
  EXPECT_EQ(pic.CenterPoint().x, 200);
  EXPECT_EQ(panel_->GetTextRect().top, pic.bottom + 12);
  EXPECT_FALSE(panel_->GetRefreshButton()->IsVisible());
  // Fail: the mark in the error colour, the text, the refresh button under it.
  panel_->SetPageState(QVPageLoading_Fail);
  dump = Paint();
  EXPECT_NE(dump.find("FillEllipse"), std::string::npos) << dump;
  EXPECT_NE(dump.find("#F23B3BFF"), std::string::npos) << dump;
  EXPECT_NE(dump.find("DrawText \"Positions failed to load\""), std::string::npos) << dump;
  CQVButton* refresh = panel_->GetRefreshButton();
  ASSERT_TRUE(refresh->IsVisible());
  EXPECT_EQ(refresh->GetWindowRect().top, panel_->GetTextRect().bottom + 16);
  EXPECT_EQ(refresh->GetAppliedStyle(), FindQVButtonStyle(L"MB2_D"));
  // The smaller style: smaller picture and button.
  panel_->SetAttribute(L"qvstyle", L"PL2", FALSE);
  Layout();
  EXPECT_EQ(panel_->GetGraphicRect().Width(), 56);
  EXPECT_EQ(refresh->GetAppliedStyle(), FindQVButtonStyle(L"MB3_D"));
}

TEST_F(PageLoadingTest, SpinnerWaitsTheDelayTurnsAndStopsWhenHidden) {
  panel_->SetPageState(QVPageLoading_Loading);
  EXPECT_EQ(panel_->GetShownState(), QVPageLoading_None);
  EXPECT_EQ(Handlers(), 0u);
  Advance(200);
  ASSERT_EQ(panel_->GetShownState(), QVPageLoading_Loading);
  EXPECT_EQ(Handlers(), 1u);
  // Twelve dots, one lit; 80 ms later the next one.
  SOUI::RecordingRenderTarget rt(400, 300);
  panel_->RedrawRegion(&rt, panel_->GetWindowRect());
  EXPECT_EQ(rt.Count("FillEllipse"), 12);
  EXPECT_EQ(rt.Count("brush=#2F6BFFFF"), 1);
  EXPECT_EQ(panel_->GetSpinnerStep(), 0);
  Advance(80);
  EXPECT_EQ(panel_->GetSpinnerStep(), 1);
  EXPECT_EQ(panel_->GetGraphicRect().Width(), 32);
  // Hidden: no frames; data arrived while hidden still ends the spinner.
  panel_->SetVisible(FALSE);
  EXPECT_EQ(Handlers(), 0u);
  Advance(400);
  panel_->SetPageState(QVPageLoading_None);
  EXPECT_EQ(panel_->GetShownState(), QVPageLoading_None);
  panel_->SetVisible(TRUE);
  EXPECT_EQ(Handlers(), 0u);
}

TEST_F(PageLoadingTest, QuickDataNeverShowsTheSpinnerAndAShownOneStaysItsMinimum) {
  panel_->SetPageState(QVPageLoading_Loading);
  Advance(100);
  panel_->SetPageState(QVPageLoading_None);
  Advance(1000);
  EXPECT_EQ(panel_->GetShownState(), QVPageLoading_None);
  // Shown, then empty 100 ms later: the spinner stays to 400 ms.
  panel_->SetPageState(QVPageLoading_Loading);
  Advance(300);
  panel_->SetPageState(QVPageLoading_Empty);
  EXPECT_EQ(panel_->GetShownState(), QVPageLoading_Loading);
  Advance(300);
  EXPECT_EQ(panel_->GetShownState(), QVPageLoading_Empty);
  EXPECT_EQ(Handlers(), 0u);
}

TEST_F(PageLoadingTest, RefreshClickRaisesTheEventAndNonePassesInputThrough) {
  int content_clicks = 0;
  Find(L"content")->subscribeEvent(SOUI::EVT_CMD, [&](SOUI::EventArgs*) {
    ++content_clicks;
    return true;
  });
  gen().MoveMouseTo(20, 20);
  gen().ClickLeftButton();
  EXPECT_EQ(content_clicks, 1);
  // The fail panel covers the page; its button raises 29101.
  panel_->SetPageState(QVPageLoading_Fail);
  Layout();
  gen().ClickLeftButton();
  EXPECT_EQ(content_clicks, 1);
  EXPECT_EQ(CountEvents(EVT_QVPAGELOADING_REFRESH), 0);
  gen().MoveMouseToCenterOf(panel_->GetRefreshButton());
  gen().ClickLeftButton();
  ASSERT_EQ(CountEvents(EVT_QVPAGELOADING_REFRESH), 1);
  EXPECT_EQ(events().back().name, L"on_qvpageloading_refresh");
  // The keyboard reaches it too.
  gen().PressAndReleaseKey(VK_SPACE);
  EXPECT_EQ(CountEvents(EVT_QVPAGELOADING_REFRESH), 2);
}

TEST_F(PageLoadingTest, BadWordsAndCodesChangeNothingAndDestroyingMidSpinIsSafe) {
  panel_->SetPageState(QVPageLoading_Empty);
  panel_->SetAttribute(L"state", L"busy", FALSE);
  panel_->SetPageState(-1);
  panel_->SetAttribute(L"qvstyle", L"PL7", FALSE);
  EXPECT_EQ(panel_->GetShownState(), QVPageLoading_Empty);
  EXPECT_EQ(panel_->GetStyleInfo(), FindQVPageLoadingCtrlStyle(L"PL1"));
  EXPECT_TRUE(LogContains(L"state=\"busy\""));
  EXPECT_TRUE(LogContains(L"qvstyle=\"PL7\""));
  panel_->SetAttribute(L"showdelay", L"0", FALSE);
  panel_->SetPageState(QVPageLoading_Loading);
  ASSERT_EQ(Handlers(), 1u);
  panel_->DestroyWindow();
  EXPECT_EQ(Handlers(), 0u);
  Advance(1000);
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
