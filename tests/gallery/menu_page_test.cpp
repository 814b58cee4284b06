// The gallery's menus page driven as a user would: each button opens its
// menu under it, keys pick, and the status line says what was chosen.
#include <gtest/gtest.h>

#include "gallery_page_test_base.h"
#include "popups/guide.h"
#include "popups/menu.h"

namespace {

using SOUI::SStringW;

class MenuPageTest : public gallery::GalleryPageTest {
 protected:
  // Presses keys once the menu's loop runs.
  void KeysLater(std::vector<UINT> keys) {
    app_->GetClock().SetTimer(10, [this, keys] {
      for (UINT vk : keys) gen().PressAndReleaseKey(vk);
    }, false);
  }
  SStringW Status() { return Find(L"demo_menu_status")->GetWindowText(); }
};

TEST_F(MenuPageTest, TheOrderMenuOpensUnderItsButtonAndReportsTheChoice) {
  SOUI::CRect under;
  app_->GetClock().SetTimer(5, [&] { under = QVStandardCtrls::IQVMenu::GetOpenMenu()->GetWindowRect(); }, false);
  KeysLater({VK_DOWN, VK_DOWN, VK_RETURN});
  Click(L"demo_menu_open");
  EXPECT_EQ(Status(), L"Chose row 2");
  SOUI::CRect button = Find(L"demo_menu_open")->GetWindowRect();
  button.OffsetRect(host()->GetWindowRect().TopLeft());
  // Left-aligned with the button; the full-height gallery reaches below the
  // screen, so the menu is kept on the work area.
  EXPECT_EQ(under.left, button.left);
  EXPECT_LE(under.bottom, app_->GetWorkArea(host()).bottom);
  KeysLater({VK_ESCAPE});
  Click(L"demo_menu_open");
  EXPECT_EQ(Status(), L"Menu dismissed");
}

TEST_F(MenuPageTest, TheColumnChooserKeepsItsChoiceBetweenOpenings) {
  // Rows: Select all, Clear, rule, Price, Change %, Code (fixed), ...
  KeysLater({VK_HOME, VK_DOWN, VK_DOWN, VK_SPACE, VK_END, VK_RETURN});
  Click(L"demo_menu_columns");
  EXPECT_EQ(Status(), L"Columns: Change % Code");
  KeysLater({VK_HOME, VK_SPACE, VK_ESCAPE});  // all ticked, then cancelled
  Click(L"demo_menu_columns");
  EXPECT_EQ(Status(), L"Columns kept: Change % Code");
}

TEST_F(MenuPageTest, TheGuideWalksThroughThePageAndReportsHowItEnded) {
  using QVStandardCtrls::EnQVGuidePart;
  using QVStandardCtrls::IQVGuide;
  const HWND owner = host()->m_hWnd;
  Click(L"demo_guide_start");
  ASSERT_TRUE(IQVGuide::IsRunning(owner));
  // Each step points at its control, from above: the page is the last of
  // the gallery, with no room below it.
  const wchar_t* const anchors[] = {L"demo_menu_open", L"demo_menu_columns", L"demo_menu_status"};
  for (int i = 0; i < 3; ++i) {
    ASSERT_EQ(IQVGuide::GetStep(owner), i);
    SOUI::CRect a = Find(anchors[i])->GetWindowRect();
    a.OffsetRect(host()->GetWindowRect().TopLeft());
    QVStandardCtrls::CQVGuideWnd* bubble = IQVGuide::GetGuideWnd(owner);
    const SOUI::CPoint tip = bubble->GetTailTip();
    EXPECT_EQ(bubble->GetSide(), QVStandardCtrls::EnQVGuideSide::Above) << i;
    EXPECT_TRUE(tip.x >= a.left && tip.x < a.right && tip.y == a.top - IQVGuide::kGap - 1) << i;
    if (i < 2) gen().PressAndReleaseKey(VK_RETURN);
  }
  // "Done" with the mouse on the last step.
  QVStandardCtrls::CQVGuideWnd* bubble = IQVGuide::GetGuideWnd(owner);
  SOUI::test::EventGenerator g(bubble);
  g.MoveMouseTo(bubble->GetPartRect(EnQVGuidePart::Next).CenterPoint());
  g.ClickLeftButton();
  EXPECT_EQ(Status(), L"Guide finished");
  // Again, skipped with Esc on the second step.
  Click(L"demo_guide_start");
  gen().PressAndReleaseKey(VK_RETURN);
  gen().PressAndReleaseKey(VK_ESCAPE);
  EXPECT_EQ(Status(), L"Guide skipped at step 2");
  EXPECT_FALSE(IQVGuide::IsRunning(owner));
}

}  // namespace
