// The gallery's toast and tooltip page driven as a user would: each button
// raises its toast over the gallery (or a second window), and the bars'
// links and close buttons answer in the status line.
#include <gtest/gtest.h>

#include "popups/toast.h"
#include "popups/tooltip.h"
#include "soui/qvrichtext.h"
#include "gallery_page_test_base.h"

namespace {

using SOUI::SStringW;

using ToastPageTest = gallery::GalleryPageTest;

TEST_F(ToastPageTest, ButtonsRaiseToastsAndBarsReportClicks) {
  // Each kind over the gallery: one window, its text replaced each time.
  Click(L"demo_toast_success");
  auto toast = QVStandardCtrls::IQVToast::FindToastWnd(host()->m_hWnd);
  ASSERT_TRUE(toast);
  EXPECT_EQ(toast->GetText(), SStringW(L"Order filled"));
  Click(L"demo_toast_long");
  EXPECT_EQ(QVStandardCtrls::IQVToast::FindToastWnd(host()->m_hWnd), toast);
  Advance(120);
  EXPECT_GT(toast->GetToastHeight(), 62);
  // The repeated fill counts instead of restarting.
  Click(L"demo_toast_coalesce");
  Click(L"demo_toast_coalesce");
  Click(L"demo_toast_coalesce");
  EXPECT_EQ(toast->GetRepeatCount(), 3);
  // The second window gets its own toast.
  Click(L"demo_toast_second");
  EXPECT_EQ(QVStandardCtrls::IQVToast::ToastWndCount(), 2u);
  Advance(5000);
  EXPECT_FALSE(toast->IsWindowVisible());

  // The wrapped warn bar is tall; its link and close button answer.
  auto* bar = Find<QVStandardCtrls::CQVToolTip>(L"demo_tip_tw_long");
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->GetWindowRect().Height(), 44);
  SOUI::SWindow* close = bar->FindChildByName(L"close");
  gen().MoveMouseToCenterOf(close);
  gen().ClickLeftButton();
  EXPECT_EQ(Find(L"demo_toast_status")->GetWindowText(), SStringW(L"demo_tip_tw_long: close clicked"));
}

}  // namespace
