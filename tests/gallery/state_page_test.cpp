// The gallery's state controls page driven as a user would: the buttons
// switch every control through its states, and what the controls raise
// reaches the status line.
#include <gtest/gtest.h>

#include "gallery_page_test_base.h"
#include "display/buttons.h"
#include "soui/combobox.h"
#include "state/combobox.h"
#include "state/loading_bar.h"
#include "state/page_loading.h"
#include "state/picture_upload.h"
#include "state/progress.h"

namespace {

using namespace QVStandardCtrls;
using SOUI::SStringW;

using StatePageTest = gallery::GalleryPageTest;

TEST_F(StatePageTest, ButtonsSwitchStatesAndEventsReachTheStatusLine) {
  auto* top = Find<QVTopLoadingBar>(L"state_top_bar");
  auto* page = Find<QVPageLoadingCtrl>(L"state_page");
  auto* front = Find<QVPictureUploadCtrl>(L"state_upload_front");
  auto* progress = Find<CQVProgress>(L"state_progress");
  ASSERT_TRUE(top && page && front && progress);
  SOUI::SWindow* status = Find(L"state_status");
  // Nothing has the focus at start, so no box shows the focus frame.
  EXPECT_EQ(host()->GetFocus(), nullptr);

  Click(L"state_bar_fail");
  EXPECT_EQ(top->GetShownState(), QVLoadingBar_Fail);
  Layout();
  gen().MoveMouseTo(top->GetLinkRect().CenterPoint());
  gen().ClickLeftButton();
  EXPECT_EQ(status->GetWindowText(), SStringW(L"state_top_bar: fail link clicked"));

  // The refresh button asks for a reload: the spinner follows after its delay.
  Click(page->GetRefreshButton());
  EXPECT_EQ(status->GetWindowText(), SStringW(L"state_page: refresh clicked"));
  Advance(200);
  EXPECT_EQ(page->GetShownState(), QVPageLoading_Loading);
  Click(L"state_page_empty");
  Advance(400);
  EXPECT_EQ(page->GetShownState(), QVPageLoading_Empty);

  Click(L"state_progress_more");
  Click(L"state_progress_more");
  EXPECT_EQ(progress->GetValue(), 60);

  // A slot asks for a file; the page uploads its sample in ten steps.
  Click(front);
  EXPECT_EQ(front->GetUploadState(), QVPictureUpload_Uploading);
  Advance(1200);
  EXPECT_EQ(front->GetUploadState(), QVPictureUpload_Done);
  Click(L"state_upload_fail");
  Click(L"state_upload_reset");
  Click(front);
  Advance(1200);
  EXPECT_EQ(front->GetUploadState(), QVPictureUpload_Failed);
  EXPECT_EQ(front->GetUploadProgress(), 60);

  // The order type ignores a passing wheel; time in force takes it.
  auto* order = Find<CQVComboBox>(L"state_order_type");
  auto* tif = Find<CQVComboBox>(L"state_tif");
  gen().MoveMouseToCenterOf(order);
  gen().MouseWheel(-120);
  EXPECT_EQ(order->GetCurSel(), 0);
  gen().MoveMouseToCenterOf(tif);
  gen().MouseWheel(-120);
  EXPECT_EQ(tif->GetCurSel(), 1);
  EXPECT_EQ(status->GetWindowText(), SStringW(L"state_tif: Good till cancelled"));
}

}  // namespace
