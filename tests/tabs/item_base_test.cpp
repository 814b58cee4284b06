#include "tabs/item_base.h"

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

// Records the slots the item calls, in order, and bounds drags by `bound`.
class RecordingContainer : public IQVItemContainer {
 public:
  void OnItemWidthChanged(CQVItemBase*) override { calls.push_back("width"); }
  void OnItemLButtonUp(CQVItemBase*, UINT, CPoint) override { calls.push_back("up"); }
  void OnItemLButtonDown(CQVItemBase*, UINT, CPoint) override { calls.push_back("down"); }
  void OnItemRButtonDown(CQVItemBase*, UINT, CPoint) override { calls.push_back("rdown"); }
  void OnItemRButtonUp(CQVItemBase*, UINT, CPoint) override { calls.push_back("rup"); }
  void OnItemMouseHover(CQVItemBase*, UINT, CPoint) override { calls.push_back("hover"); }
  void OnItemMouseLeave(CQVItemBase*) override { calls.push_back("leave"); }
  void OnItemDragMove(CQVItemBase*, CPoint) override { calls.push_back("drag"); }
  void OnItemMoveToComplete(CQVItemBase*) override { calls.push_back("moved"); }
  void OnItemShowComplete(CQVItemBase*) override { calls.push_back("shown"); }
  void OnItemHideComplete(CQVItemBase*) override { calls.push_back("hidden"); }
  void OnItemEnableChanged(CQVItemBase*, bool enabled) override {
    calls.push_back(enabled ? "enable:1" : "enable:0");
  }
  CRect OnItemGetContainerRect() override { return bound; }

  int Count(const std::string& what) const {
    int n = 0;
    for (const auto& c : calls) n += c == what;
    return n;
  }
  std::vector<std::string> calls;
  CRect bound{0, 0, 400, 100};
};

class ItemBaseTest : public SOUI::test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    RegisterQVStandardCtrls(app_->GetFactory());
    CreateHostWithChildren(L"<window name=\"box\" pos=\"0,0,-0,-0\"/>", 400, 300);
    item_ = new CQVItemBase(&container_);
    Find(L"box")->InsertChild(item_);
    pugi::xml_document doc;
    doc.load_string("<item name=\"it\" pos=\"100,10,@60,@30\"><window name=\"kid\" pos=\"0,0,@10,@10\"/>"
                    "<qv_reddot name=\"dot\" pos=\"20,0,@6,@6\"/></item>");
    item_->InitFromXml(doc.first_child());
    Layout();
    item_->SetAttribute(L"itemid", L"4", FALSE);
  }
  // Presses at the item's centre and drags by (dx, dy) in two steps.
  void DragBy(int dx, int dy) {
    const CPoint c = item_->GetWindowRect().CenterPoint();
    gen().MoveMouseTo(c);
    gen().PressLeftButton();
    gen().MoveMouseTo(c.x + dx / 2, c.y + dy / 2);
    gen().MoveMouseTo(c.x + dx, c.y + dy);
  }
  size_t TimelineHandlers() { return host()->GetTimeline().HandlerCount(); }

  RecordingContainer container_;
  CQVItemBase* item_ = nullptr;
};

TEST_F(ItemBaseTest, PressDragReleaseReachTheContainerInOrder) {
  item_->SetDragType(kQVDragFree);
  DragBy(20, 0);
  gen().ReleaseLeftButton();
  EXPECT_EQ(container_.calls.front(), "hover");
  std::vector<std::string> rest(container_.calls.begin() + 1, container_.calls.end());
  EXPECT_EQ(rest, (std::vector<std::string>{"down", "drag", "drag", "up"}));
  EXPECT_EQ(item_->GetWindowRect(), CRect(120, 10, 180, 40));
  EXPECT_FALSE(item_->IsDraged());
}

struct DragCase {
  QVItemDragType type;
  int dx, dy;
  CRect expected;
};

class ItemDragTest : public ItemBaseTest, public ::testing::WithParamInterface<DragCase> {};

TEST_P(ItemDragTest, MovesAlongItsAxesInsideTheContainer) {
  const DragCase& c = GetParam();
  item_->SetDragType(c.type);
  DragBy(c.dx, c.dy);
  EXPECT_EQ(item_->GetWindowRect(), c.expected);
  gen().ReleaseLeftButton();
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ItemDragTest,
    ::testing::Values(DragCase{kQVDragFree, 30, 20, CRect(130, 30, 190, 60)},
                      DragCase{kQVDragHorz, 30, 20, CRect(130, 10, 190, 40)},  // top never changes
                      DragCase{kQVDragVert, 30, 20, CRect(100, 30, 160, 60)},
                      DragCase{kQVDragNone, 30, 20, CRect(100, 10, 160, 40)},
                      DragCase{kQVDragHorz, -150, 0, CRect(0, 10, 60, 40)},     // pinned to the left
                      DragCase{kQVDragHorz, 290, 0, CRect(340, 10, 400, 40)},   // pinned to the right
                      DragCase{kQVDragFree, 0, 120, CRect(100, 70, 160, 100)}));  // and the bottom

TEST_F(ItemBaseTest, ItemWiderThanTheContainerKeepsItsRightEdgeInside) {
  container_.bound = CRect(120, 0, 150, 100);
  item_->SetDragType(kQVDragHorz);
  DragBy(2, 0);
  EXPECT_EQ(item_->GetWindowRect().right, 150);
  gen().ReleaseLeftButton();
}

TEST_F(ItemBaseTest, GlideReportsTargetAsFinalAndEndsThere) {
  const CRect target(200, 50, 260, 80);
  item_->MoveTo(target, 200);
  EXPECT_TRUE(item_->IsMoving());
  EXPECT_EQ(item_->GetFinalRect(), target);
  Advance(100);
  const CRect mid = item_->GetWindowRect();
  EXPECT_GT(mid.left, 100);
  EXPECT_LT(mid.left, 200);
  EXPECT_EQ(mid.Width(), 60);
  Advance(120);
  EXPECT_EQ(item_->GetWindowRect(), target);
  EXPECT_EQ(container_.Count("moved"), 1);
  EXPECT_FALSE(item_->IsMoving());
  // Nothing ticks once the glide is over.
  EXPECT_EQ(TimelineHandlers(), 0u);
}

TEST_F(ItemBaseTest, PressDuringGlideIsIgnoredEntirely) {
  item_->SetDragType(kQVDragFree);
  item_->MoveTo(CRect(102, 10, 162, 40), 300);
  Advance(20);
  gen().MoveMouseTo(130, 25);
  gen().PressLeftButton();
  gen().MoveMouseTo(150, 25);
  gen().ReleaseLeftButton();
  EXPECT_EQ(container_.Count("down"), 0);
  EXPECT_EQ(container_.Count("drag"), 0);
  Advance(400);
  EXPECT_EQ(item_->GetWindowRect(), CRect(102, 10, 162, 40));
}

TEST_F(ItemBaseTest, PathRunsItsLegsInOrderAndReportsOnceAtTheEnd) {
  std::vector<MoveNode> path = {{CRect(), CRect(300, 10, 360, 40), 0}, {CRect(0, 60, 60, 90), CRect(20, 60, 80, 90), 0}};
  item_->MoveTo(path, 200);
  EXPECT_EQ(item_->GetFinalRect(), CRect(20, 60, 80, 90));
  Advance(120);  // frames come every 16 ms: the first leg is done, the second has begun
  EXPECT_EQ(item_->GetWindowRect().top, 60);
  EXPECT_EQ(container_.Count("moved"), 0);
  Advance(120);
  EXPECT_EQ(item_->GetWindowRect(), CRect(20, 60, 80, 90));
  EXPECT_EQ(container_.Count("moved"), 1);
}

TEST_F(ItemBaseTest, NewGlideReplacesTheRunningOneAndStopLeavesTheItemWhereItStands) {
  item_->MoveTo(CRect(300, 10, 360, 40), 200);
  Advance(50);
  item_->MoveTo(CRect(0, 10, 60, 40), 200);  // starts from where it stands
  EXPECT_EQ(container_.Count("moved"), 0);
  Advance(50);
  item_->StopMove();
  const CRect stopped = item_->GetWindowRect();
  EXPECT_FALSE(item_->IsMoving());
  EXPECT_EQ(item_->GetFinalRect(), stopped);
  Advance(500);
  EXPECT_EQ(item_->GetWindowRect(), stopped);
  EXPECT_EQ(container_.Count("moved"), 0);
  EXPECT_EQ(TimelineHandlers(), 0u);
}

TEST_F(ItemBaseTest, FadesSetAlphaOnTheItemAndItsChildren) {
  SOUI::SWindow* kid = item_->FindChildByName(L"kid");
  item_->HideWithAnimator(100);
  EXPECT_TRUE(item_->IsHiding());
  Advance(50);
  EXPECT_GT(kid->GetAlpha(), 0);
  EXPECT_LT(kid->GetAlpha(), 255);
  EXPECT_EQ(kid->GetAlpha(), item_->GetAlpha());
  // A library control inside fades too, though a page may not set its alpha.
  EXPECT_EQ(item_->FindChildByName(L"dot")->GetAlpha(), item_->GetAlpha());
  EXPECT_FALSE(LogContains(L"alpha"));
  Advance(70);
  EXPECT_EQ(kid->GetAlpha(), 0);
  EXPECT_FALSE(item_->IsVisible());
  EXPECT_EQ(container_.Count("hidden"), 1);

  item_->ShowWithAnimator(100);
  EXPECT_TRUE(item_->IsVisible());
  EXPECT_TRUE(item_->IsShowing());
  Advance(130);
  EXPECT_EQ(kid->GetAlpha(), 255);
  EXPECT_EQ(container_.Count("shown"), 1);
  EXPECT_EQ(container_.Count("hidden"), 1);
}

TEST_F(ItemBaseTest, AttributesGoThroughTheDispatch) {
  EXPECT_EQ(item_->SetAttribute(L"ItemId", L"0x1F", FALSE), S_OK);
  EXPECT_EQ(item_->GetItemId(), 31);
  EXPECT_EQ(item_->SetAttribute(L"itemid", L"seven", FALSE), E_FAIL);
  EXPECT_EQ(item_->GetItemId(), 31);
  item_->SetAttribute(L"createAnimator", L"FALSE", FALSE);
  EXPECT_FALSE(item_->IsCreateAnimator());

  item_->SetAttribute(L"enable", L"0", FALSE);
  item_->SetAttribute(L"enable", L"false", FALSE);  // no change, no report
  EXPECT_FALSE(item_->IsEnable());
  item_->SetAttribute(L"enable", L"yes", FALSE);
  EXPECT_TRUE(item_->IsEnable());
  EXPECT_EQ(container_.calls, (std::vector<std::string>{"enable:0", "enable:1"}));
  // Toolkit names reach the window.
  item_->SetAttribute(L"text", L"abc", FALSE);
  EXPECT_EQ(item_->GetWindowText(), L"abc");
}

TEST_F(ItemBaseTest, RightButtonHoverAndLeaveAreReported) {
  gen().MoveMouseTo(120, 20);
  gen().ClickRightButton();
  gen().MoveMouseTo(5, 200);
  EXPECT_EQ(container_.calls, (std::vector<std::string>{"hover", "rdown", "rup", "leave"}));
}

}  // namespace
}  // namespace QVStandardCtrls
