// The tab strip's menus: the "more" button listing the tabs that do not fit,
// and a host's own menu opened from the right-button event at the click.
// Menus run a nested loop, so keys are scripted with clock timers that fire
// inside it.
#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "library_test_base.h"
#include "popups/menu.h"
#include "soui/sapp.h"
#include "tabs/tabctrl_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;

class TabMenusTest : public test::LibraryTestBase {
 protected:
  // A primary strip 300 px wide with n tabs, settled.
  CQVTabCtrlBase* MakeStrip(int n, const wchar_t* extra = L"moreButton=\"1\"") {
    SStringW xml = SStringW::Format2(L"<qv_primarytab name=\"strip\" pos=\"10,10,@300,@40\" %s>", extra);
    for (int i = 0; i < n; ++i) xml += SStringW::Format2(L"<tabitem title=\"Tab %d\"/>", i);
    xml += L"</qv_primarytab>";
    CreateHostWithChildren(xml, 400, 200);
    host()->SetWindowPos(nullptr, 100, 50, 400, 200, SOUI::SWP_NOZORDER | SOUI::SWP_SHOWWINDOW);
    Layout();
    Advance(400);
    strip_ = Find<CQVTabCtrlBase>(L"strip");
    return strip_;
  }
  // Runs fn once a menu loop has run ms.
  void At(uint32_t ms, std::function<void()> fn) { app_->GetClock().SetTimer(ms, std::move(fn), false); }
  void Keys(std::vector<UINT> keys) {
    At(10, [this, keys] {
      for (UINT vk : keys) gen().PressAndReleaseKey(vk);
    });
  }
  // Whether the tab stands whole in the strip, clear of the button.
  bool Shows(int id) {
    const CRect r = strip_->GetTabObjById(id)->GetFinalRect();
    CRect room = strip_->GetWindowRect();
    if (strip_->IsMoreButtonShown()) room.right = strip_->GetMoreButtonRect().left;
    return r.left >= room.left && r.right <= room.right;
  }
  CQVTabCtrlBase* strip_ = nullptr;
};

TEST_F(TabMenusTest, TheMoreButtonListsHiddenTabsAndBringsTheChosenOneIntoView) {
  MakeStrip(8);
  ASSERT_TRUE(strip_->IsMoreButtonShown());
  const std::vector<int> hidden = strip_->GetHiddenTabIds();
  ASSERT_FALSE(hidden.empty());
  EXPECT_EQ(hidden.back(), 7);
  for (int id = 0; id < 8; ++id) {
    EXPECT_EQ(Shows(id), std::find(hidden.begin(), hidden.end(), id) == hidden.end()) << id;
  }
  // A click on the button opens the menu under it; End and Enter pick the
  // last hidden tab.
  CRect menu_rc, listed;
  int rows = 0;
  At(5, [&] {
    menu_rc = IQVMenu::GetOpenMenu()->GetWindowRect();
    rows = IQVMenu::GetOpenMenu()->GetRowCount();
  });
  Keys({VK_END, VK_RETURN});
  gen().MoveMouseTo(strip_->GetMoreButtonRect().CenterPoint());
  gen().ClickLeftButton();
  EXPECT_EQ(rows, static_cast<int>(hidden.size()));
  CRect button = strip_->GetMoreButtonRect();
  button.OffsetRect(host()->GetWindowRect().TopLeft());
  EXPECT_EQ(menu_rc.left, button.left);
  EXPECT_EQ(menu_rc.top, button.bottom);
  // Chosen, selected and scrolled in; the first tabs went out on the left.
  EXPECT_EQ(strip_->GetCurSelId(), 7);
  Advance(400);
  EXPECT_TRUE(Shows(7));
  EXPECT_FALSE(Shows(0));
  EXPECT_EQ(strip_->GetHiddenTabIds().front(), 0);
}

TEST_F(TabMenusTest, SelectingAHiddenTabScrollsItInFromEitherSide) {
  MakeStrip(8);
  strip_->SetCurSelById(6, true);
  Advance(400);
  EXPECT_TRUE(Shows(6));
  EXPECT_FALSE(Shows(0));
  strip_->SetCurSelById(0, true);
  Advance(400);
  EXPECT_TRUE(Shows(0));
  EXPECT_FALSE(Shows(6));
  // Dismissed with Esc: nothing changes.
  Keys({VK_ESCAPE});
  EXPECT_EQ(strip_->TrackMoreMenu(), -1);
  EXPECT_EQ(strip_->GetCurSelId(), 0);
}

TEST_F(TabMenusTest, NoButtonWhenTheTabsFitOrWhenNotAskedFor) {
  MakeStrip(2);
  EXPECT_FALSE(strip_->IsMoreButtonShown());
  EXPECT_TRUE(strip_->GetHiddenTabIds().empty());
  EXPECT_EQ(strip_->TrackMoreMenu(), -1);
  MakeStrip(8, L"");
  EXPECT_FALSE(strip_->IsMoreButtonShown());
  EXPECT_TRUE(strip_->GetMoreButtonRect().IsRectEmpty());
  // Removing tabs until they fit takes the button away.
  MakeStrip(8);
  while (strip_->GetTabCount() > 2) strip_->RemoveTabByOrder(strip_->GetTabCount() - 1);
  Advance(400);
  EXPECT_FALSE(strip_->IsMoreButtonShown());
  EXPECT_TRUE(Shows(0) && Shows(1));
}

TEST_F(TabMenusTest, AHostOpensItsMenuAtTheRightClickFromTheTabEvent) {
  MakeStrip(3, L"");
  // The host's handler: a menu for the clicked tab at the click point.
  UINT chosen = 0;
  int tab = -1;
  CPoint screen_pt;
  strip_->subscribeEvent(EVT_QVTAB_ITEM_CLICK_RBUTTON, [&](SOUI::EventArgs* e) {
    auto* evt = static_cast<EventQVTabItemClickRButton*>(e);
    tab = evt->nId;
    screen_pt = CPoint(evt->x, evt->y) + host()->GetWindowRect().TopLeft();
    chosen = IQVMenu::TrackPopupMenu(host()->m_hWnd,
                                     {QVMenuAttr::Item(1, L"Rename"), QVMenuAttr::Item(2, L"Close tab"),
                                      QVMenuAttr::Item(3, L"Close others")},
                                     screen_pt);
    return true;
  });
  CRect menu_rc;
  At(5, [&] { menu_rc = IQVMenu::GetOpenMenu()->GetWindowRect(); });
  Keys({VK_DOWN, VK_DOWN, VK_RETURN});
  gen().MoveMouseToCenterOf(strip_->GetTabObjById(1));
  gen().ClickRightButton();
  EXPECT_EQ(tab, 1);
  EXPECT_EQ(chosen, 2u);
  EXPECT_EQ(menu_rc.TopLeft(), screen_pt);
  // The right click neither selected the tab nor left the strip stuck.
  EXPECT_EQ(strip_->GetCurSelId(), 0);
  gen().MoveMouseToCenterOf(strip_->GetTabObjById(2));
  gen().ClickLeftButton();
  EXPECT_EQ(strip_->GetCurSelId(), 2);
}

}  // namespace
}  // namespace QVStandardCtrls
