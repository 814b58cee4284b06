#include "tabs/tab_page_host.h"

#include <gtest/gtest.h>

#include "framework/control_classes.h"
#include "testing/ui_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CRect;
using SOUI::SStringW;

class TabPageHostTest : public SOUI::test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    RegisterQVStandardCtrls(app_->GetFactory());
    CreateHostWithChildren(
        L"<qv_tabctrl name=\"host\" pos=\"0,0,-0,-0\" TabMarginX=\"10\">"
        L"<page title=\"Quotes\" id=\"5\"><window name=\"p_quotes\" pos=\"0,0,-0,-0\"/></page>"
        L"<page title=\"Orders\"><window name=\"p_orders\" pos=\"0,0,-0,-0\"/></page>"
        L"</qv_tabctrl>",
        400, 300);
    Layout();
    tabs_ = Find<CQVTabCtrl>(L"host");
    ASSERT_NE(tabs_, nullptr);
  }
  // Which page is showing, by the name of its content.
  bool Shows(const wchar_t* name) { return Find(name)->IsVisible(TRUE) != FALSE; }
  CQVTabCtrl* tabs_ = nullptr;
};

TEST_F(TabPageHostTest, PagesBecomeTitlesAndPagesBelowThem) {
  EXPECT_EQ(tabs_->GetItemCount(), 2);
  CQVTabCtrlBase* titles = tabs_->GetTitleStrip();
  EXPECT_EQ(titles->GetTabCount(), 2);
  EXPECT_EQ(titles->GetTabId(0), 5);
  EXPECT_EQ(titles->GetTabId(1), 6);  // ids after a given one are not reused
  EXPECT_EQ(titles->GetItemAttrByOrder(L"title", 1), L"Orders");
  EXPECT_EQ(tabs_->GetCurSel(), 0);
  EXPECT_TRUE(Shows(L"p_quotes"));
  EXPECT_FALSE(Shows(L"p_orders"));
  EXPECT_EQ(titles->GetWindowRect().left, 10);
  EXPECT_EQ(tabs_->GetPageCtrl()->GetWindowRect().top, titles->GetWindowRect().bottom);
}

TEST_F(TabPageHostTest, ClickingATitleSwitchesThePage) {
  CQVItemBase* orders = tabs_->GetTitleStrip()->GetTabObjByOrder(1);
  gen().MoveMouseToCenterOf(orders);
  gen().ClickLeftButton();
  Advance(500);
  EXPECT_EQ(tabs_->GetCurSel(), 1);
  EXPECT_EQ(tabs_->GetPageCtrl()->GetCurSel(), 1);
  EXPECT_TRUE(Shows(L"p_orders"));
  EXPECT_FALSE(Shows(L"p_quotes"));
}

TEST_F(TabPageHostTest, InsertAndDeleteKeepTitlesAndPagesInStep) {
  EXPECT_EQ(tabs_->InsertItem({{L"title", L"News"}, {L"id", L"9"}}, 1), 1);
  EXPECT_EQ(tabs_->GetTitleStrip()->GetTabOrder(9), 1);
  EXPECT_EQ(tabs_->GetPageCtrl()->GetItemCount(), 3);
  EXPECT_TRUE(tabs_->SetCurSel(2));
  EXPECT_EQ(tabs_->GetPageCtrl()->GetCurSel(), 2);
  EXPECT_TRUE(tabs_->DeleteItem(2));
  Advance(500);
  EXPECT_EQ(tabs_->GetItemCount(), 2);
  EXPECT_EQ(tabs_->GetTitleStrip()->GetTabCount(), 2);
  EXPECT_EQ(tabs_->GetCurSel(), 0);  // the first title, as the strip does
  EXPECT_EQ(tabs_->GetPageCtrl()->GetCurSel(), 0);
  EXPECT_FALSE(tabs_->DeleteItem(7));
}

TEST_F(TabPageHostTest, MediateCentresTheTitleRow) {
  tabs_->SetAttribute(L"tabMediate", L"1", FALSE);
  Layout();
  const CRect row = tabs_->GetTitleStrip()->GetWindowRect();
  EXPECT_NEAR((row.left + row.right) / 2, 200, 1);
  tabs_->SetAttribute(L"tabMediate", L"0", FALSE);
  tabs_->SetAttribute(L"TabMarginX", L"30", FALSE);
  Layout();
  EXPECT_EQ(tabs_->GetTitleStrip()->GetWindowRect().left, 30);
}

}  // namespace
}  // namespace QVStandardCtrls
