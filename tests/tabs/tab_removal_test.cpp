// A tab that leaves its strip while the user still holds it: a host removes
// the pressed or dragged tab (a shortcut, a server push), or the user grabs
// a tab that is already fading out. Every strip class goes through the same
// sequences; the list must stay consistent and nothing may touch a freed
// item (the sanitizer build runs these too).
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "framework/control_classes.h"
#include "tabs/tabctrl_base.h"
#include "testing/ui_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;
using List = QVItemListNodeBase<CQVItemBase>;

class TabRemovalTest : public SOUI::test::UiTestBase, public ::testing::WithParamInterface<const wchar_t*> {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    RegisterQVStandardCtrls(app_->GetFactory());
    SStringW xml;
    xml.Format(L"<%s name=\"tabs\" pos=\"10,10,@460,@40\" dragable=\"1\"/>", GetParam());
    CreateHostWithChildren(xml.c_str(), 500, 200);
    Layout();
    tabs_ = Find<CQVTabCtrlBase>(L"tabs");
    ASSERT_NE(tabs_, nullptr);
    for (int i = 0; i < 4; ++i) {
      SStringW title;
      title.Format(L"Tab %d", i);
      tabs_->InsertTab({{L"title", title}}, -1);
    }
    Advance(400);
    Layout();
  }

  // The list is well linked, every node is a live child of the strip, and
  // the selection (if any) is one of them.
  void ExpectConsistent() {
    std::set<CQVItemBase*> seen;
    CQVItemBase* prev = nullptr;
    for (CQVItemBase* it = tabs_->GetHead(); it; it = it->GetNext()) {
      ASSERT_TRUE(seen.insert(it).second) << "cycle in the tab list";
      EXPECT_EQ(it->GetPrev(), prev);
      EXPECT_EQ(it->GetParent(), tabs_);
      EXPECT_FALSE(it->IsRemoved());
      prev = it;
    }
    EXPECT_EQ(static_cast<int>(seen.size()), tabs_->GetTabCount());
    if (CQVItemBase* sel = tabs_->GetCurSel()) {
      EXPECT_EQ(seen.count(sel), 1u);
    }
  }

  CPoint CentreOf(int order) { return tabs_->GetTabObjByOrder(order)->GetWindowRect().CenterPoint(); }

  CQVTabCtrlBase* tabs_ = nullptr;
};

TEST_P(TabRemovalTest, RemovingTheDraggedTabEndsTheDragAndKeepsTheStripSound) {
  const int id = tabs_->GetTabId(1);
  gen().MoveMouseTo(CentreOf(1));
  gen().PressLeftButton();
  gen().MoveMouseTo(CentreOf(1) + CPoint(15, 0));
  CQVItemBase* dragged = tabs_->GetTabObjById(id);
  ASSERT_TRUE(dragged->IsDraged());

  ASSERT_TRUE(tabs_->RemoveTabById(id));
  EXPECT_FALSE(dragged->IsDraged());
  EXPECT_EQ(host()->GetCapture(), nullptr);
  ExpectConsistent();

  // Further drag steps with the button still down, across the whole strip,
  // must not bring the removed tab back.
  for (int x = 20; x < 470; x += 30) gen().MoveMouseTo(x, 25);
  EXPECT_EQ(tabs_->GetTabOrder(id), -1);
  ExpectConsistent();

  Advance(400);  // the fade ends and the removed tab is destroyed
  for (int x = 470; x > 20; x -= 30) gen().MoveMouseTo(x, 25);
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(tabs_->GetTabCount(), 3);
  ExpectConsistent();

  // The strip still reorders by dragging.
  const int first = tabs_->GetTabId(0);
  gen().MoveMouseTo(CentreOf(0));
  gen().DragTo(CentreOf(2) + CPoint(10, 0), 8);
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_NE(tabs_->GetTabOrder(first), 0);
  ExpectConsistent();
}

TEST_P(TabRemovalTest, RemovingThePressedTabBeforeAnyMoveIsSafe) {
  const int id = tabs_->GetTabId(0);
  gen().MoveMouseTo(CentreOf(0));
  gen().PressLeftButton();
  ASSERT_TRUE(tabs_->RemoveTabByOrder(0));
  EXPECT_FALSE(tabs_->RemoveTabById(id));  // a second removal finds nothing
  for (int i = 0; i < 5; ++i) {
    gen().MoveMouseTo(CentreOf(0) + CPoint(10 * i, 0));
    Advance(60);
  }
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(tabs_->GetTabCount(), 3);
  ExpectConsistent();
}

TEST_P(TabRemovalTest, AFadingTabIsNoTarget) {
  const CPoint where = CentreOf(1);
  const int id = tabs_->GetTabId(1);
  ASSERT_TRUE(tabs_->RemoveTabById(id));
  Advance(80);  // still fading, still drawn where it stood
  const int selected = tabs_->GetCurSelId();
  ClearEvents();
  gen().MoveMouseTo(where);
  gen().PressLeftButton();
  gen().DragTo(where + CPoint(120, 0), 6);
  EXPECT_EQ(tabs_->GetTabOrder(id), -1);
  // The press fell through to the strip: nothing was selected by it.
  EXPECT_EQ(CountEvents(EVT_QVTAB_SEL_CHANGING), 0);
  EXPECT_EQ(tabs_->GetCurSelId(), selected);
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(tabs_->GetTabCount(), 3);
  ExpectConsistent();
}

TEST_P(TabRemovalTest, RemovingEveryTabMidDragLeavesAnEmptyUsableStrip) {
  gen().MoveMouseTo(CentreOf(2));
  gen().PressLeftButton();
  gen().MoveMouseTo(CentreOf(2) + CPoint(20, 0));
  while (tabs_->GetTabCount() > 0) {
    ASSERT_TRUE(tabs_->RemoveTabByOrder(tabs_->GetTabCount() - 1));
    gen().MoveMouseTo(60 + 40 * tabs_->GetTabCount(), 25);
    Advance(50);
  }
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(tabs_->GetHead(), nullptr);
  EXPECT_EQ(tabs_->GetCurSel(), nullptr);
  // Only non-tab items (an add button) may remain as children.
  for (SOUI::SWindow* c = tabs_->GetWindow(SOUI::GSW_FIRSTCHILD); c; c = c->GetWindow(SOUI::GSW_NEXTSIBLING)) {
    auto* item = dynamic_cast<CQVItemBase*>(c);
    if (item) {
      EXPECT_NE(item->GetItemType(), kQVTabItemType);
    }
  }
  tabs_->InsertTab({{L"title", L"again"}}, -1);
  Advance(400);
  EXPECT_EQ(tabs_->GetTabCount(), 1);
  ExpectConsistent();
}

INSTANTIATE_TEST_SUITE_P(Strips, TabRemovalTest,
                         ::testing::Values(L"qv_tabctrlbase", L"qv_primarytab", L"qv_secondarytab", L"qv_thirdtab",
                                           L"qv_segmenttab", L"qv_filtertab", L"qv_tabview"),
                         [](const ::testing::TestParamInfo<const wchar_t*>& info) {
                           return SStringW(info.param).ToUtf8();
                         });

}  // namespace
}  // namespace QVStandardCtrls
