// The toolkit's page host: selection with veto, page geometry, the sliding
// switch on the test clock, insertion and removal.
#include <gtest/gtest.h>

#include "soui/tabctrl.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

class TabCtrlTest : public test::UiTestBase {
 protected:
  STabCtrl* Build(const wchar_t* attrs) {
    const SStringW xml = SStringW(L"<tabctrl name='tabs' pos='0,0,300,200' tabHeight='30' tabWidth='80' ") + attrs +
                         L"><page title='One' name='p1'/><page title='Two' name='p2'/>"
                         L"<page title='Three' name='p3'/><window name='not_a_page'/></tabctrl>";
    CreateHostWithChildren(xml, 400, 300);
    return Find<STabCtrl>(L"tabs");
  }
};

TEST_F(TabCtrlTest, OnlyPagesCountAndTheyFillThePageArea) {
  STabCtrl* tabs = Build(L"curSel='1' padding='5'");
  ASSERT_NE(tabs, nullptr);
  EXPECT_EQ(tabs->GetItemCount(), 3);
  EXPECT_EQ(Find(L"not_a_page"), nullptr);
  EXPECT_TRUE(LogContains(L"only page children are pages"));
  EXPECT_EQ(tabs->GetCurSel(), 1);
  Layout();
  EXPECT_EQ(tabs->GetPageArea(), CRect(5, 35, 295, 195));
  EXPECT_EQ(Find(L"p2")->GetWindowRect(), tabs->GetPageArea());
  EXPECT_TRUE(Find(L"p2")->IsVisible());
  EXPECT_FALSE(Find(L"p1")->IsVisible());
  EXPECT_EQ(tabs->GetHeaderRect(2), CRect(165, 5, 245, 35));
}

TEST_F(TabCtrlTest, AHandlerCanVetoAndClicksOnHeadersSelect) {
  STabCtrl* tabs = Build(L"");
  bool veto = true;
  tabs->subscribeEvent(EVT_TAB_SELCHANGING, [&](EventArgs* e) {
    static_cast<EventTabSelChanging*>(e)->bCancel = veto;
    return true;
  });
  EXPECT_FALSE(tabs->SetCurSel(2));
  EXPECT_EQ(tabs->GetCurSel(), 0);
  EXPECT_EQ(CountEvents(EVT_TAB_SELCHANGED), 0);
  veto = false;
  gen().MoveMouseTo(tabs->GetHeaderRect(2).CenterPoint());
  gen().ClickLeftButton();
  EXPECT_EQ(tabs->GetCurSel(), 2);
  ASSERT_EQ(CountEvents(EVT_TAB_SELCHANGED), 1);
  EXPECT_FALSE(tabs->SetCurSel(2));  // unchanged
  EXPECT_FALSE(tabs->SetCurSel(7));  // out of range
  // Keys wrap around.
  gen().PressKey(VK_RIGHT);
  EXPECT_EQ(tabs->GetCurSel(), 0);
  gen().PressKey(VK_END);
  EXPECT_EQ(tabs->GetCurSel(), 2);
}

TEST_F(TabCtrlTest, SwitchSlidesOnlyWhileTheClockRuns) {
  STabCtrl* tabs = Build(L"animateSteps='10' interpolator='Decelerate'");
  Layout();
  const CRect area = tabs->GetPageArea();
  ASSERT_TRUE(tabs->SetCurSel(1));
  Layout();
  EXPECT_TRUE(tabs->IsAnimating());
  EXPECT_EQ(Find(L"p2")->GetWindowRect().left, area.right);  // starts just outside
  Advance(16 * 3);
  Layout();
  const int mid = Find(L"p2")->GetWindowRect().left;
  EXPECT_GT(mid, area.left);
  EXPECT_LT(mid, area.left + area.Width() / 2);  // decelerating: most of the way early
  EXPECT_EQ(Find(L"p1")->GetWindowRect().right, mid);  // the old page leaves alongside
  Advance(16 * 10);
  Layout();
  EXPECT_FALSE(tabs->IsAnimating());
  EXPECT_EQ(Find(L"p2")->GetWindowRect(), area);
  EXPECT_FALSE(Find(L"p1")->IsVisible());
  EXPECT_FALSE(host()->GetTimeline().IsTicking());  // nothing animates, nothing ticks
}

TEST_F(TabCtrlTest, InsertAndRemoveKeepTheSelectionOnItsPage) {
  STabCtrl* tabs = Build(L"curSel='1'");
  EXPECT_EQ(tabs->InsertItem(L"<page title='Zero' name='p0'/>", 0), 0);
  EXPECT_EQ(tabs->GetCurSel(), 2);  // still "Two"
  EXPECT_EQ(tabs->GetItem(2)->GetTitle(), L"Two");
  EXPECT_EQ(tabs->InsertItem(L"<window/>"), -1);
  EXPECT_EQ(tabs->InsertItem(L"<page"), -1);
  EXPECT_TRUE(tabs->RemoveItem(0));
  EXPECT_EQ(tabs->GetCurSel(), 1);
  EXPECT_TRUE(tabs->RemoveItem(1));  // the selected page goes: the next one takes over
  EXPECT_EQ(tabs->GetCurSel(), 1);
  EXPECT_EQ(tabs->GetItem(1)->GetTitle(), L"Three");
  EXPECT_TRUE(tabs->GetItem(1)->IsVisible());
  EXPECT_TRUE(tabs->RemoveItem(1));  // the last one goes: the one before takes over
  EXPECT_EQ(tabs->GetCurSel(), 0);
  EXPECT_FALSE(tabs->RemoveItem(5));
  EXPECT_TRUE(tabs->RemoveItem(0));
  EXPECT_EQ(tabs->GetCurSel(), -1);
  EXPECT_FALSE(tabs->SetCurSel(0));
}

}  // namespace
}  // namespace SOUI
