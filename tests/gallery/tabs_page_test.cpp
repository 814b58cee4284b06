// The gallery's tab view driven as a user would: "+" opens a selected tab at
// the end, a tab's close button closes that tab, and the last tab stays.
#include <gtest/gtest.h>

#include "gallery_page_test_base.h"
#include "tabs/tab_variants.h"

namespace {

using namespace QVStandardCtrls;

using TabsPageTest = gallery::GalleryPageTest;

SOUI::SWindow* CloseButtonOf(CQVItemBase* tab) { return tab ? tab->FindChildByName(L"btn_tail") : nullptr; }

TEST_F(TabsPageTest, AddOpensASelectedTabAndCloseClosesItsOwnTab) {
  auto* tabs = Find<CQVTabView>(L"tabs_view");
  ASSERT_NE(tabs, nullptr);
  const int before = tabs->GetTabCount();

  Click(tabs->GetAddButton());
  Layout();
  ASSERT_EQ(tabs->GetTabCount(), before + 1);
  EXPECT_EQ(tabs->GetCurSelOrder(), before);
  auto* opened = static_cast<CQVVariantItemBase*>(tabs->GetTabObjByOrder(before));
  ASSERT_NE(opened->GetTitleWnd(), nullptr);
  EXPECT_EQ(opened->GetTitleWnd()->GetWindowText(), L"新标签 1");

  // Closing the second tab leaves the others in order.
  CQVItemBase* second = tabs->GetTabObjByOrder(1);
  const int second_id = second->GetItemId();
  const int third_id = tabs->GetTabObjByOrder(2)->GetItemId();
  gen().MoveMouseToCenterOf(second);  // the close button shows on hover
  Click(CloseButtonOf(second));
  Advance(1000);
  Layout();
  EXPECT_EQ(tabs->GetTabCount(), before);
  EXPECT_EQ(tabs->GetTabObjById(second_id), nullptr);
  EXPECT_EQ(tabs->GetTabObjByOrder(1)->GetItemId(), third_id);

  // Down to one tab, its close button does nothing.
  while (tabs->GetTabCount() > 1) {
    CQVItemBase* first = tabs->GetTabObjByOrder(0);
    gen().MoveMouseToCenterOf(first);
    Click(CloseButtonOf(first));
    Advance(1000);
    Layout();
  }
  CQVItemBase* last = tabs->GetTabObjByOrder(0);
  gen().MoveMouseToCenterOf(last);
  Click(CloseButtonOf(last));
  Advance(1000);
  EXPECT_EQ(tabs->GetTabCount(), 1);
}

}  // namespace
