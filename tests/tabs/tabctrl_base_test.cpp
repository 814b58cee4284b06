#include "tabs/tabctrl_base.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "framework/control_classes.h"
#include "testing/ui_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;
using Attrs = std::vector<std::pair<SStringW, SStringW>>;

// Lets a test choose the number of rows and the gaps, as the variants do.
class RowsTabCtrl : public CQVTabCtrlBase {
 public:
  void SetMaxRows(int rows) { max_rows_ = rows; }
  void SetGaps(int item_gap, int row_spacing) {
    item_gap_ = item_gap;
    row_spacing_ = row_spacing;
  }
  // What a drag must agree with: the first tab from the head that the
  // dragged centre calls for.
  CQVItemBase* FirstSwitchFromHead(CQVItemBase* dragged, CPoint centre) const {
    for (CQVItemBase* other = head_; other; other = other->GetNext()) {
      if (other != dragged && NeedSwitch(centre, dragged, other)) return other;
    }
    return nullptr;
  }
  using CQVTabCtrlBase::FindSwitchTarget;
  using CQVTabCtrlBase::UpdateAllTabRect;
};

class TabCtrlBaseTest : public SOUI::test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    RegisterQVStandardCtrls(app_->GetFactory());
    CreateHostWithChildren(
        L"<qv_tabctrlbase name=\"tabs\" pos=\"0,0,@300,@32\" dragable=\"1\">"
        L"<tab width=\"60\" height=\"32\"/></qv_tabctrlbase>",
        400, 300);
    Layout();
    tabs_ = Find<CQVTabCtrlBase>(L"tabs");
    ASSERT_NE(tabs_, nullptr);
  }
  void AddTabs(int n) {
    for (int i = 0; i < n; ++i) tabs_->InsertTab({}, -1);
    Advance(300);  // fades and glides done
  }
  // Ids in display order, e.g. "0 1 2".
  std::string Order() const { return OrderOf(tabs_); }
  static std::string OrderOf(const CQVTabCtrlBase* strip) {
    std::string s;
    for (CQVItemBase* it = strip->GetHead(); it; it = it->GetNext()) {
      if (!s.empty()) s += ' ';
      s += std::to_string(it->GetItemId());
    }
    return s;
  }
  CPoint CentreOf(int id) const { return tabs_->GetTabObjById(id)->GetWindowRect().CenterPoint(); }
  // A second strip, from xml, below the first, with up to max_rows rows.
  RowsTabCtrl* AddRowsStrip(const char* xml, int max_rows) {
    auto* strip = new RowsTabCtrl();
    host()->GetRoot()->InsertChild(strip);
    pugi::xml_document doc;
    doc.load_string(xml);
    strip->InitFromXml(doc.first_child());
    strip->SetMaxRows(max_rows);
    return strip;
  }
  void Veto(bool veto) {
    tabs_->subscribeEvent(EVT_QVTAB_SEL_CHANGING, [veto](SOUI::EventArgs* e) {
      static_cast<EventQVTabSelChanging*>(e)->bCancel = veto;
      return true;
    });
  }
  // (old, new) of each selection change the strip raised.
  std::vector<std::pair<int, int>> Changes() {
    return changes_;
  }
  void RecordChanges() {
    tabs_->subscribeEvent(EVT_QVTAB_SEL_CHANGED, [this](SOUI::EventArgs* e) {
      auto* c = static_cast<EventQVTabSelChanged*>(e);
      changes_.emplace_back(c->nOldId, c->nNewId);
      return false;
    });
  }

  CQVTabCtrlBase* tabs_ = nullptr;
  std::vector<std::pair<int, int>> changes_;
};

TEST_F(TabCtrlBaseTest, FirstInsertSelectsWithoutChangingEventAndItemsLineUp) {
  RecordChanges();
  AddTabs(3);
  EXPECT_EQ(Changes(), (std::vector<std::pair<int, int>>{{-1, 0}}));
  EXPECT_EQ(CountEvents(EVT_QVTAB_SEL_CHANGING), 0);
  EXPECT_EQ(CountEvents(EVT_QVTAB_ITEM_INSERT), 3);
  EXPECT_EQ(tabs_->GetCurSelId(), 0);
  EXPECT_EQ(tabs_->GetTabObjById(2)->GetWindowRect(), CRect(120, 0, 180, 32));
  EXPECT_EQ(tabs_->GetTabObjById(2)->GetAlpha(), 255);
}

// Tabs written in the layout are there on the first frame; a tab the host
// adds later fades in.
TEST_F(TabCtrlBaseTest, LayoutTabsShowAtOnceAndLaterTabsFadeIn) {
  CreateHostWithChildren(
      L"<qv_primarytab name=\"strip\" pos=\"0,0,@300,@32\"><tabitem title=\"A\"/><tabitem title=\"B\"/>"
      L"</qv_primarytab>",
      400, 300);
  Layout();
  auto* strip = Find<CQVTabCtrlBase>(L"strip");
  ASSERT_NE(strip, nullptr);
  for (CQVItemBase* it = strip->GetHead(); it; it = it->GetNext()) EXPECT_EQ(it->GetAlpha(), 255);
  const int added = strip->InsertTab({}, -1);
  EXPECT_LT(strip->GetTabObjById(added)->GetAlpha(), 255);
  Advance(300);
  EXPECT_EQ(strip->GetTabObjById(added)->GetAlpha(), 255);
}

// Items keep the XML they were built from, but a strip's items share one
// copy of its template (a copy each cost tens of kilobytes per tab).
TEST_F(TabCtrlBaseTest, ItemsShareTheStripTemplateAndKeepIt) {
  AddTabs(2);
  const pugi::xml_document& first = tabs_->GetTabObjById(0)->GetItemXml();
  EXPECT_EQ(&first, &tabs_->GetTabObjById(1)->GetItemXml());
  EXPECT_STREQ(first.first_child().name(), "tab");
  EXPECT_STREQ(first.first_child().attribute("width").value(), "60");

  // An item built from a passing node keeps a copy of its own.
  auto* loose = new CQVItemBase(tabs_);
  tabs_->InsertChild(loose);
  {
    pugi::xml_document doc;
    doc.load_string("<item title='x' width='50'/>");
    loose->InitFromXml(doc.first_child());
  }
  EXPECT_STREQ(loose->GetItemXml().first_child().attribute("width").value(), "50");
  EXPECT_NE(&loose->GetItemXml(), &first);
  tabs_->DestroyChild(loose);
}

TEST_F(TabCtrlBaseTest, PressSelectsAndAVetoKeepsTheOldSelection) {
  AddTabs(3);
  RecordChanges();
  gen().MoveMouseTo(CentreOf(2));
  gen().ClickLeftButton();
  EXPECT_EQ(tabs_->GetCurSelId(), 2);
  EXPECT_EQ(Changes(), (std::vector<std::pair<int, int>>{{0, 2}}));
  EXPECT_TRUE(tabs_->GetTabObjById(2)->IsSelected());
  EXPECT_FALSE(tabs_->GetTabObjById(0)->IsSelected());

  Veto(true);
  gen().MoveMouseTo(CentreOf(1));
  gen().PressLeftButton();  // selection changes on press, not on release
  EXPECT_EQ(tabs_->GetCurSelId(), 2);
  gen().ReleaseLeftButton();
  EXPECT_EQ(Changes().size(), 1u);
  EXPECT_EQ(CountEvents(EVT_QVTAB_SEL_CHANGING), 2);
}

TEST_F(TabCtrlBaseTest, SelectionRulesWithoutNotifyDisabledAndSelected) {
  AddTabs(3);
  RecordChanges();
  EXPECT_TRUE(tabs_->SetCurSelByOrder(1, false));
  EXPECT_EQ(tabs_->GetCurSelOrder(), 1);
  EXPECT_TRUE(Changes().empty());
  tabs_->SetCurSelById(1, true);  // already selected
  tabs_->SetItemAttrById(L"enable", L"0", 2);
  tabs_->SetCurSelById(2, true);
  EXPECT_EQ(tabs_->GetCurSelId(), 1);
  gen().MoveMouseTo(CentreOf(2));
  gen().ClickLeftButton();
  EXPECT_EQ(tabs_->GetCurSelId(), 1);
  EXPECT_TRUE(Changes().empty());
  EXPECT_FALSE(tabs_->SetCurSelById(42, true));
}

TEST_F(TabCtrlBaseTest, DraggingAcrossANeighbourSwapsOnceWithHysteresis) {
  AddTabs(3);
  gen().MoveMouseTo(30, 16);  // centre of tab 0
  gen().PressLeftButton();
  // (mouse x, expected order): the dragged centre follows the mouse.
  const std::vector<std::pair<int, std::string>> steps = {
      {45, "0 1 2"}, {62, "1 0 2"},  // across tab 1's edge: one swap
      {64, "1 0 2"}, {58, "1 0 2"},  // resting within the band: nothing more
      {66, "1 0 2"}, {50, "0 1 2"},  // back past the band: swapped back
      {54, "0 1 2"},
  };
  for (const auto& [x, order] : steps) {
    gen().MoveMouseTo(x, 16);
    Advance(16);
    EXPECT_EQ(Order(), order) << "at x " << x;
  }
  gen().ReleaseLeftButton();
  Advance(300);
  EXPECT_EQ(tabs_->GetTabObjById(0)->GetWindowRect(), CRect(0, 0, 60, 32));
  EXPECT_EQ(tabs_->GetTabObjById(1)->GetWindowRect(), CRect(60, 0, 120, 32));
}

TEST_F(TabCtrlBaseTest, DragToTheEndGlidesTheOthersAndReleaseSettles) {
  AddTabs(3);
  gen().MoveMouseTo(30, 16);
  gen().DragTo(CPoint(170, 16), 10);
  EXPECT_EQ(Order(), "1 2 0");
  Advance(300);
  EXPECT_EQ(tabs_->GetTabObjById(0)->GetWindowRect(), CRect(120, 0, 180, 32));
  EXPECT_EQ(tabs_->GetTabObjById(1)->GetWindowRect(), CRect(0, 0, 60, 32));
  EXPECT_EQ(tabs_->GetTabObjById(0)->GetWindowRect().top, 0);
}

TEST_F(TabCtrlBaseTest, AppendingFollowsTheTailThroughRemovalsAndDrags) {
  AddTabs(3);
  tabs_->RemoveTabById(2);  // the tail leaves, and is destroyed once faded
  Advance(300);
  tabs_->InsertTab({}, -1);
  EXPECT_EQ(Order(), "0 1 3");
  gen().MoveMouseTo(CentreOf(3));
  gen().DragTo(CPoint(10, 16), 10);  // the tail goes to the front
  Advance(300);
  ASSERT_EQ(Order(), "3 0 1");
  tabs_->InsertTab({}, -1);
  tabs_->InsertTab({}, 1);
  tabs_->InsertTab({}, -1);
  EXPECT_EQ(Order(), "3 5 0 1 4 6");
}

TEST_F(TabCtrlBaseTest, NotDragableStripKeepsItsOrder) {
  AddTabs(2);
  tabs_->SetAttribute(L"dragable", L"false", FALSE);
  gen().MoveMouseTo(30, 16);
  gen().DragTo(CPoint(100, 16), 4);
  EXPECT_EQ(Order(), "0 1");
  EXPECT_EQ(tabs_->GetTabObjById(0)->GetWindowRect(), CRect(0, 0, 60, 32));
}

TEST_F(TabCtrlBaseTest, RemovingTheSelectedMiddleTabSelectsTheHeadAndTheItemGoes) {
  AddTabs(3);
  tabs_->SetCurSelById(1, false);
  RecordChanges();
  const UINT children = tabs_->GetChildrenCount();
  EXPECT_TRUE(tabs_->RemoveTabById(1));
  EXPECT_EQ(CountEvents(EVT_QVTAB_ITEM_REMOVED), 1);
  EXPECT_EQ(Changes(), (std::vector<std::pair<int, int>>{{1, 0}}));
  EXPECT_EQ(CountEvents(EVT_QVTAB_SEL_CHANGING), 0);
  EXPECT_EQ(Order(), "0 2");
  EXPECT_EQ(tabs_->GetChildrenCount(), children);  // still fading
  Advance(250);
  EXPECT_EQ(tabs_->GetChildrenCount(), children - 1);
  Advance(250);
  EXPECT_EQ(tabs_->GetTabObjById(2)->GetWindowRect(), CRect(60, 0, 120, 32));
  EXPECT_EQ(host()->GetTimeline().HandlerCount(), 0u);
}

TEST_F(TabCtrlBaseTest, RemovingTheLastTabLeavesNoSelection) {
  AddTabs(1);
  RecordChanges();
  EXPECT_TRUE(tabs_->RemoveTabByOrder(0));
  EXPECT_FALSE(tabs_->RemoveTabByOrder(0));
  EXPECT_EQ(tabs_->GetCurSelId(), -1);
  EXPECT_TRUE(Changes().empty());
  Advance(300);
  EXPECT_EQ(tabs_->GetChildrenCount(), 0u);
}

TEST_F(TabCtrlBaseTest, GivenIdsAreNeverHandedOutAgain) {
  AddTabs(3);
  EXPECT_EQ(tabs_->InsertTab({{L"itemid", L"7"}}, 1), 7);
  EXPECT_EQ(tabs_->InsertTab({}, -1), 8);
  EXPECT_EQ(tabs_->InsertTab({{L"itemid", L"0x2"}}, -1), 2);  // a smaller id leaves the counter alone
  EXPECT_EQ(tabs_->InsertTab({}, 0), 9);
  EXPECT_EQ(Order(), "9 0 7 1 2 8 2");
  EXPECT_EQ(tabs_->GetTabOrder(7), 2);
  EXPECT_EQ(tabs_->GetTabId(5), 8);
  EXPECT_EQ(tabs_->GetItemAttrByOrder(L"itemid", 0), L"9");
  EXPECT_EQ(tabs_->GetItemAttrByOrder(L"itemid", 42), L"");
}

TEST_F(TabCtrlBaseTest, RightClickReportsPointAndId) {
  AddTabs(2);
  int id = -1, x = -1;
  tabs_->subscribeEvent(EVT_QVTAB_ITEM_CLICK_RBUTTON, [&](SOUI::EventArgs* e) {
    auto* r = static_cast<EventQVTabItemClickRButton*>(e);
    id = r->nId;
    x = r->x;
    return true;
  });
  gen().MoveMouseTo(70, 10);
  gen().ClickRightButton();
  EXPECT_EQ(id, 1);
  EXPECT_EQ(x, 70);
  EXPECT_EQ(CountEvents(EVT_QVTAB_ITEM_HOVER), 1);
}

class MultiRowTest : public TabCtrlBaseTest {
 protected:
  void SetUp() override {
    TabCtrlBaseTest::SetUp();
    rows_ = AddRowsStrip("<qv_tabctrlbase pos=\"0,100,@200,@70\"><tab width=\"60\" height=\"32\"/></qv_tabctrlbase>", 2);
    Layout();
    for (int i = 0; i < 7; ++i) rows_->InsertTab({}, -1);
    Advance(400);
  }
  CRect RectOf(int id) { return rows_->GetTabObjById(id)->GetWindowRect(); }
  RowsTabCtrl* rows_ = nullptr;
};

TEST_F(MultiRowTest, WrapsIntoTheRowsAndOverflowsTheLast) {
  EXPECT_EQ(rows_->GetRowCount(), 2);
  EXPECT_EQ(RectOf(2), CRect(120, 100, 180, 132));
  EXPECT_EQ(RectOf(3), CRect(0, 132, 60, 164));
  EXPECT_EQ(RectOf(5), CRect(120, 132, 180, 164));
  EXPECT_EQ(RectOf(6), CRect(180, 132, 240, 164));  // beyond the right edge
}

TEST_F(MultiRowTest, ATabChangingRowLeavesItsRowBeforeEnteringTheNext) {
  rows_->InsertTab({}, 0);
  Advance(48);
  // Tab 2 is on its way out of the first row, to the right.
  EXPECT_EQ(RectOf(2).top, 100);
  EXPECT_GT(RectOf(2).left, 120);
  Advance(400);
  EXPECT_EQ(RectOf(2), CRect(0, 132, 60, 164));
}

// Tabs of mixed widths in three rows with gaps, the last row running past
// the edge: the drag's nearby search against a walk from the head.
class MixedRowsTest : public TabCtrlBaseTest {
 protected:
  void SetUp() override {
    TabCtrlBaseTest::SetUp();
    rows_ = AddRowsStrip("<qv_tabctrlbase pos=\"0,100,@200,@110\" dragable=\"1\" animation=\"0\">"
                         "<tab width=\"60\" height=\"32\"/></qv_tabctrlbase>",
                         3);
    rows_->SetGaps(6, 4);
    Layout();
    const wchar_t* widths[] = {L"40", L"70", L"55", L"90", L"35"};
    for (int i = 0; i < 14; ++i) rows_->InsertTab({{L"width", widths[i % 5]}}, -1);
    Advance(400);
  }
  std::vector<CRect> Places() const {
    std::vector<CRect> places;
    for (CQVItemBase* it = rows_->GetHead(); it; it = it->GetNext()) places.push_back(it->GetFinalRect());
    return places;
  }
  RowsTabCtrl* rows_ = nullptr;
};

TEST_F(MixedRowsTest, TheNearbySearchFindsTheTabAWalkFromTheHeadFinds) {
  ASSERT_EQ(rows_->GetRowCount(), 3);
  for (const bool more : {false, true}) {
    rows_->SetAttribute(L"moreButton", more ? L"1" : L"0", FALSE);
    int matches = 0;
    for (CQVItemBase* dragged = rows_->GetHead(); dragged; dragged = dragged->GetNext()) {
      for (int y = 90; y < 230; y += 3) {
        for (int x = -50; x < 320; x += 4) {
          bool in_front = false;
          CQVItemBase* found = rows_->FindSwitchTarget(dragged, CPoint(x, y), &in_front);
          ASSERT_EQ(found, rows_->FirstSwitchFromHead(dragged, CPoint(x, y)))
              << "tab " << dragged->GetItemId() << " at " << x << "," << y << (more ? " with more" : "");
          if (!found) continue;
          ++matches;
          bool before = false;
          for (CQVItemBase* it = dragged->GetPrev(); it; it = it->GetPrev()) before |= it == found;
          EXPECT_EQ(in_front, before);
        }
      }
    }
    EXPECT_GT(matches, 1000);  // the grid reaches every tab's slot and gaps
  }
}

TEST_F(MixedRowsTest, DraggingAcrossRowsMovesOnlyWhatAFullLayoutWould) {
  const CPoint start = rows_->GetTabObjById(1)->GetWindowRect().CenterPoint();
  gen().MoveMouseTo(start);
  gen().PressLeftButton();
  // Long jumps in both directions, across rows and into the overflow.
  const CPoint stops[] = {{180, 150}, {20, 190}, {260, 190}, {10, 110}, {120, 115}, {100, 150}};
  std::string order = OrderOf(rows_);
  for (const CPoint& to : stops) {
    gen().MoveMouseTo(to);
    Advance(16);
    EXPECT_NE(OrderOf(rows_), order) << "no move at " << to.x << "," << to.y;
    order = OrderOf(rows_);
    const std::vector<CRect> placed = Places();
    rows_->UpdateAllTabRect();
    EXPECT_EQ(Places(), placed) << "after moving to " << to.x << "," << to.y;
  }
  EXPECT_EQ(order, "0 2 3 4 1 5 6 7 8 9 10 11 12 13");
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(rows_->GetRowCount(), 3);
}

}  // namespace
}  // namespace QVStandardCtrls
