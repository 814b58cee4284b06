// The gallery's menus page driven as a user would: each button opens its
// menu under it, keys pick, and the status line says what was chosen.
#include <gtest/gtest.h>

#include "gallery_page_test_base.h"
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

}  // namespace
