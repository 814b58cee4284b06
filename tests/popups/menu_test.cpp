// Popup menus driven through the event generator. TrackPopupMenu runs a
// nested loop, so each story is scripted with clock timers that fire inside
// it, and the result is checked when the call returns.
#include "popups/menu.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "library_test_base.h"
#include "qvhost/qvlog.h"
#include "soui/sapp.h"
#include "testing/event_generator.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;
using SOUI::test::EventGenerator;

QVMenuAttr Disabled(UINT id, const wchar_t* text, const wchar_t* tip = L"") {
  QVMenuAttr a = QVMenuAttr::Item(id, text);
  a.enabled = false;
  a.disabled_tip = tip;
  return a;
}

QVMenuAttr WithSubmenu(UINT id, const wchar_t* text, QVMenuItems sub) {
  QVMenuAttr a = QVMenuAttr::Item(id, text);
  a.submenu = std::make_shared<QVMenuItems>(std::move(sub));
  return a;
}

// Buy · Sell (disabled) · ─── · Cancel · More ▸ (Alpha, Beta)
QVMenuItems OrderMenu() {
  return {QVMenuAttr::Item(1, L"Buy", L"F1"), Disabled(2, L"Sell", L"Market closed"), QVMenuAttr::Separator(),
          QVMenuAttr::Item(3, L"Cancel"),
          WithSubmenu(4, L"More", {QVMenuAttr::Item(11, L"Alpha"), QVMenuAttr::Item(12, L"Beta")})};
}

class MenuTest : public LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    CreateHost(L"<SOUI><root><button name='below' pos='0,0,-0,-0' text='below'/></root></SOUI>", 400, 300);
    host()->SetWindowPos(nullptr, 100, 50, 400, 300, SOUI::SWP_NOZORDER | SOUI::SWP_SHOWWINDOW);
    Find(L"below")->subscribeEvent(SOUI::EVT_CMD, [this](SOUI::EventArgs*) {
      ++clicks_below_;
      return true;
    });
  }
  // Runs fn once the menu loop has run ms.
  void At(uint32_t ms, std::function<void()> fn) { app_->GetClock().SetTimer(ms, std::move(fn), false); }
  // Keys go to the owner, as they do while a popup shows without activation.
  void Key(UINT vk) { gen().PressAndReleaseKey(vk); }
  static CQVMenuWnd* Menu(int level = -1) { return IQVMenu::GetOpenMenu(level); }
  UINT Track(const QVMenuItems& items) { return IQVMenu::TrackPopupMenu(host()->m_hWnd, items, CPoint(150, 100)); }
  // Mouse on a row of an open menu.
  static void MoveToRow(CQVMenuWnd* menu, int row) {
    EventGenerator g(menu);
    g.MoveMouseTo(menu->GetRowRect(row).CenterPoint());
  }
  static void ClickRow(CQVMenuWnd* menu, int row) {
    EventGenerator g(menu);
    g.MoveMouseTo(menu->GetRowRect(row).CenterPoint());
    g.ClickLeftButton();
  }
  int clicks_below_ = 0;
};

TEST_F(MenuTest, UpAndDownSkipDisabledRowsAndSeparatorsAndWrap) {
  std::vector<int> hot;
  At(10, [&] {
    Key(VK_DOWN);  // Buy
    hot.push_back(Menu()->GetHotRow());
    Key(VK_DOWN);  // past Sell and the rule: Cancel
    hot.push_back(Menu()->GetHotRow());
    Key(VK_DOWN);
    Key(VK_DOWN);  // wraps to Buy
    hot.push_back(Menu()->GetHotRow());
    Key(VK_UP);  // wraps back to More
    hot.push_back(Menu()->GetHotRow());
    Key(VK_UP);
    Key(VK_RETURN);
  });
  EXPECT_EQ(Track(OrderMenu()), 3u);
  EXPECT_EQ(hot, (std::vector<int>{0, 3, 0, 4}));
  EXPECT_EQ(Menu(), nullptr);  // every level is gone with the call
}

TEST_F(MenuTest, HomeEndAndTheFirstLetterJump) {
  std::vector<int> hot;
  At(10, [&] {
    Key(VK_END);
    hot.push_back(Menu()->GetHotRow());
    Key(VK_HOME);
    hot.push_back(Menu()->GetHotRow());
    gen().Char(L'c');  // Cancel
    hot.push_back(Menu()->GetHotRow());
    gen().Char(L's');  // only the disabled Sell starts with s: stays
    hot.push_back(Menu()->GetHotRow());
    gen().Char(L'B');
    hot.push_back(Menu()->GetHotRow());
    Key(VK_SPACE);
  });
  EXPECT_EQ(Track(OrderMenu()), 1u);
  EXPECT_EQ(hot, (std::vector<int>{4, 0, 3, 3, 0}));
}

TEST_F(MenuTest, RightOpensTheSubmenuAndLeftOrEscCloseOnlyIt) {
  std::vector<int> levels;
  At(10, [&] {
    Key(VK_END);    // More
    Key(VK_RIGHT);  // opens it, Alpha lit
    levels.push_back(Menu()->GetLevel());
    levels.push_back(Menu()->GetHotRow());
    Key(VK_LEFT);
    levels.push_back(Menu()->GetLevel());
    Key(VK_RETURN);  // Enter opens a submenu too
    Key(VK_ESCAPE);
    levels.push_back(Menu()->GetLevel());
    Key(VK_RIGHT);
    Key(VK_DOWN);
    Key(VK_RETURN);
  });
  EXPECT_EQ(Track(OrderMenu()), 12u);
  EXPECT_EQ(levels, (std::vector<int>{1, 0, 0, 0}));
}

TEST_F(MenuTest, HoverOpensTheSubmenuAfterTheDelayAndAClickChooses) {
  bool open_early = true, open_late = false;
  At(10, [&] {
    MoveToRow(Menu(), 0);
    EXPECT_EQ(Menu()->GetHotRow(), 0);  // hover highlights
    MoveToRow(Menu(), 4);
  });
  // Just before and just after the delay has run out.
  At(10 + IQVMenu::kSubmenuDelayMs - 1, [&] { open_early = Menu()->GetLevel() == 1; });
  At(10 + IQVMenu::kSubmenuDelayMs + 1, [&] { open_late = Menu()->GetLevel() == 1; });
  At(400, [&] {
    // The submenu sits beside its row, on the right.
    EXPECT_EQ(Menu(1)->GetWindowRect().left, Menu(0)->GetWindowRect().right);
    ClickRow(Menu(1), 1);
  });
  EXPECT_EQ(Track(OrderMenu()), 12u);
  EXPECT_FALSE(open_early);
  EXPECT_TRUE(open_late);
}

TEST_F(MenuTest, HoveringAnotherRowClosesTheSubmenuAfterTheDelay) {
  int level_after = -1;
  At(10, [&] {
    MoveToRow(Menu(), 4);
    EventGenerator g(Menu(0));
    g.MoveMouseTo(Menu(0)->GetRowRect(4).CenterPoint());
    g.PressLeftButton();  // a press opens it at once
    EXPECT_EQ(Menu()->GetLevel(), 1);
    g.ReleaseLeftButton();
    MoveToRow(Menu(0), 0);
  });
  At(10 + IQVMenu::kSubmenuDelayMs + 5, [&] {
    level_after = Menu()->GetLevel();
    Key(VK_ESCAPE);
  });
  EXPECT_EQ(Track(OrderMenu()), 0u);
  EXPECT_EQ(level_after, 0);
}

TEST_F(MenuTest, DisabledRowsAreNotChosenAndShowWhy) {
  SStringW tip_early = L"?", tip;
  At(10, [&] {
    ClickRow(Menu(), 1);  // Sell: disabled, the menu stays
    EXPECT_EQ(Menu()->GetHotRow(), -1);
  });
  At(10 + IQVMenu::kTipDelayMs - 1, [&] { tip_early = IQVMenu::GetShownTip(); });
  At(10 + IQVMenu::kTipDelayMs + 1, [&] { tip = IQVMenu::GetShownTip(); });
  At(600, [&] {
    MoveToRow(Menu(), 0);  // the bubble goes with the mouse
    EXPECT_TRUE(IQVMenu::GetShownTip().IsEmpty());
    Key(VK_ESCAPE);
  });
  EXPECT_EQ(Track(OrderMenu()), 0u);
  EXPECT_TRUE(tip_early.IsEmpty());
  EXPECT_EQ(tip, L"Market closed");
}

TEST_F(MenuTest, AClickOutsideDismissesWithoutClickingWhatIsBelow) {
  At(10, [&] {
    gen().MoveMouseTo(380, 280);  // the owner's button, away from the menu
    gen().ClickLeftButton();
  });
  EXPECT_EQ(Track(OrderMenu()), 0u);
  EXPECT_EQ(clicks_below_, 0);
  gen().ClickLeftButton();  // with the menu gone, clicks arrive again
  EXPECT_EQ(clicks_below_, 1);
}

TEST_F(MenuTest, AnotherWindowTakingActivationDismisses) {
  SOUI::SHostWnd other;
  other.InitFromXmlText(L"<SOUI width='100' height='80'><root/></SOUI>");
  other.Create(nullptr, 600, 400);
  other.ShowWindow(SOUI::SW_SHOWNOACTIVATE);
  At(10, [&] { SOUI::SetActiveWindow(other.m_hWnd); });
  EXPECT_EQ(Track(OrderMenu()), 0u);
  EXPECT_FALSE(LogContains(L"nothing left"));
}

TEST_F(MenuTest, EscDismissesWithZero) {
  At(10, [&] {
    Key(VK_DOWN);
    Key(VK_ESCAPE);
  });
  EXPECT_EQ(Track(OrderMenu()), 0u);
}

// ---- placement -------------------------------------------------------------------

TEST_F(MenuTest, FlipsToStayOnTheWorkArea) {
  app_->SetScreenRect(CRect(0, 0, 800, 600));
  CRect at_point, under, above, sub;
  At(10, [&] {
    at_point = Menu()->GetWindowRect();
    Key(VK_ESCAPE);
  });
  EXPECT_EQ(IQVMenu::TrackPopupMenu(host()->m_hWnd, OrderMenu(), CPoint(790, 590)), 0u);
  // Left of and above the point.
  EXPECT_EQ(at_point.right, 790);
  EXPECT_EQ(at_point.bottom, 590);

  At(10, [&] {
    under = Menu()->GetWindowRect();
    Key(VK_ESCAPE);
  });
  IQVMenu::TrackPopupMenu(host()->m_hWnd, OrderMenu(), CRect(100, 100, 180, 124));
  EXPECT_EQ(under.TopLeft(), CPoint(100, 124));

  At(10, [&] {
    above = Menu()->GetWindowRect();
    Key(VK_END);
    Key(VK_RIGHT);
    sub = Menu()->GetWindowRect();
    Key(VK_ESCAPE);
    Key(VK_ESCAPE);
  });
  IQVMenu::TrackPopupMenu(host()->m_hWnd, OrderMenu(), CRect(700, 560, 780, 584));
  EXPECT_EQ(above.bottom, 560);  // no room below: above the anchor
  EXPECT_LE(above.right, 800);
  EXPECT_EQ(sub.right, above.left);  // no room on the right: on the left
}

TEST_F(MenuTest, ALongMenuIsCutToTheWorkAreaAndScrolls) {
  app_->SetScreenRect(CRect(0, 0, 800, 600));
  QVMenuItems many;
  for (UINT i = 1; i <= 60; ++i) many.push_back(QVMenuAttr::Item(i, SStringW::Format2(L"Row %u", i)));
  int height = 0, top_at_end = 0, top_after_wheel = -1;
  CRect last;
  At(10, [&] {
    height = Menu()->GetWindowRect().Height();
    Key(VK_END);
    top_at_end = Menu()->GetTopRow();
    last = Menu()->GetRowRect(59);
    EventGenerator g(Menu());
    g.MoveMouseTo(50, 50);
    g.MouseWheel(120 * 100);
    top_after_wheel = Menu()->GetTopRow();
    Key(VK_RETURN);  // the row now under the mouse is the lit one
  });
  EXPECT_EQ(IQVMenu::TrackPopupMenu(host()->m_hWnd, many, CPoint(10, 10)), 2u);
  EXPECT_EQ(height, 600);
  EXPECT_GT(top_at_end, 0);
  EXPECT_FALSE(last.IsRectEmpty());
  EXPECT_LE(last.bottom, 600);
  EXPECT_EQ(top_after_wheel, 0);
}

// ---- bad input -------------------------------------------------------------------

TEST_F(MenuTest, AnEmptyListOrADeadOwnerReturnsZeroAtOnceWithALogLine) {
  EXPECT_EQ(Track({}), 0u);
  EXPECT_TRUE(LogContains(L"empty item list"));
  EXPECT_EQ(IQVMenu::TrackPopupMenu(nullptr, OrderMenu(), CPoint(0, 0)), 0u);
  EXPECT_EQ(IQVMenu::TrackPopupMenu(reinterpret_cast<HWND>(0x7), OrderMenu(), CPoint(0, 0)), 0u);
  EXPECT_TRUE(LogContains(L"hWnd Not Valid"));
  EXPECT_EQ(app_->GetClock().Now(), 0u);  // no loop ran
}

TEST_F(MenuTest, ASubmenuThatContainsItselfIsCutAndLogged) {
  auto loop = std::make_shared<QVMenuItems>();
  QVMenuAttr again = QVMenuAttr::Item(5, L"Again");
  again.submenu = loop;
  loop->push_back(QVMenuAttr::Item(21, L"Leaf"));
  loop->push_back(again);
  QVMenuAttr top = QVMenuAttr::Item(4, L"Loop");
  top.submenu = loop;
  bool again_has_sub = true;
  At(10, [&] {
    Key(VK_DOWN);
    Key(VK_RIGHT);
    again_has_sub = Menu()->GetRow(1)->submenu != nullptr;
    Key(VK_DOWN);
    Key(VK_RIGHT);  // nothing to open
    EXPECT_EQ(Menu()->GetLevel(), 1);
    Key(VK_UP);
    Key(VK_RETURN);
  });
  EXPECT_EQ(Track({top}), 21u);
  EXPECT_FALSE(again_has_sub);
  EXPECT_TRUE(LogContains(L"contains itself"));
  loop->back().submenu.reset();  // the records' own cycle, not the menu's
}

TEST_F(MenuTest, NestingIsBoundedInDepth) {
  QVMenuItems items = {QVMenuAttr::Item(99, L"Deepest")};
  for (int i = 0; i < IQVMenu::kMaxDepth + 3; ++i) items = {WithSubmenu(0, L"Down", items)};
  int deepest = 0;
  At(10, [&] {
    for (int i = 0; i < IQVMenu::kMaxDepth + 5; ++i) {
      Key(VK_DOWN);
      Key(VK_RIGHT);
    }
    deepest = Menu()->GetLevel();
    Key(VK_ESCAPE);
  });
  for (int i = 0; i <= IQVMenu::kMaxDepth; ++i) At(20, [&] { Key(VK_ESCAPE); });
  EXPECT_EQ(Track(items), 0u);
  EXPECT_EQ(deepest, IQVMenu::kMaxDepth - 1);
  EXPECT_TRUE(LogContains(L"nested deeper than"));
}

TEST_F(MenuTest, TheOwnerClosedWhileOpenEndsWithZero) {
  At(10, [&] {
    Key(VK_END);
    Key(VK_RIGHT);  // two levels open
    host()->DestroyWindow();
  });
  EXPECT_EQ(IQVMenu::TrackPopupMenu(host()->m_hWnd, OrderMenu(), CPoint(150, 100)), 0u);
  EXPECT_EQ(Menu(), nullptr);
  EXPECT_EQ(app_->GetHosts().size(), 1u);  // only the fixture's host object is left
}

TEST_F(MenuTest, ASecondMenuWhileOneIsOpenIsRefused) {
  UINT inner = 77;
  At(10, [&] {
    inner = Track(OrderMenu());
    Key(VK_DOWN);
    Key(VK_RETURN);
  });
  EXPECT_EQ(Track(OrderMenu()), 1u);
  EXPECT_EQ(inner, 0u);
  EXPECT_TRUE(LogContains(L"already open"));
}

TEST_F(MenuTest, ALoopNothingCanEndReturnsZeroWithALogLine) {
  EXPECT_EQ(Track(OrderMenu()), 0u);
  EXPECT_TRUE(LogContains(L"nothing left that could end the menu"));
}

// ---- multi-selection ---------------------------------------------------------------

QVMenuItems Columns() {
  return {QVMenuAttr::Item(1, L"Price"), QVMenuAttr::Item(2, L"Change"), Disabled(3, L"Code"),
          QVMenuAttr::Item(4, L"Volume")};
}

class MultiSelMenuTest : public MenuTest {
 protected:
  std::set<UINT> TrackMulti(const std::set<UINT>& chosen, bool* accepted) {
    return IQVMultiSelMenu::TrackPopupMenu(host()->m_hWnd, Columns(), chosen, CRect(20, 20, 100, 44), accepted);
  }
  // Rows: Select all, Clear, ───, Price, Change, Code, Volume, ───, OK.
  static constexpr int kPrice = 3, kChange = 4, kVolume = 6, kOk = 8;
};

TEST_F(MultiSelMenuTest, TicksStayOpenAndOkReturnsTheSet) {
  bool accepted = false;
  At(10, [&] {
    ClickRow(Menu(), kPrice);  // untick
    ClickRow(Menu(), kVolume);  // tick
    EXPECT_NE(Menu(), nullptr);
    EXPECT_FALSE(Menu()->GetRow(kPrice)->checked);
    EXPECT_TRUE(Menu()->GetRow(kVolume)->checked);
    ClickRow(Menu(), kOk);
  });
  EXPECT_EQ(TrackMulti({1, 3, 99}, &accepted), (std::set<UINT>{3, 4, 99}));
  EXPECT_TRUE(accepted);
}

TEST_F(MultiSelMenuTest, SelectAllAndClearLeaveDisabledRowsAlone) {
  At(10, [&] {
    ClickRow(Menu(), 0);  // select all
    EXPECT_TRUE(Menu()->GetRow(kChange)->checked);
    EXPECT_FALSE(Menu()->GetRow(5)->checked);  // Code is disabled
    Key(VK_END);
    Key(VK_RETURN);
  });
  EXPECT_EQ(TrackMulti({}, nullptr), (std::set<UINT>{1, 2, 4}));
  At(10, [&] {
    ClickRow(Menu(), 1);  // clear
    Key(VK_END);
    Key(VK_RETURN);
  });
  EXPECT_EQ(TrackMulti({1, 3}, nullptr), (std::set<UINT>{3}));
}

TEST_F(MultiSelMenuTest, EscAndAnOutsideClickReturnTheOriginalSet) {
  bool accepted = true;
  At(10, [&] {
    Key(VK_HOME);
    Key(VK_RETURN);  // select all, then changed our mind
    Key(VK_ESCAPE);
  });
  EXPECT_EQ(TrackMulti({2}, &accepted), (std::set<UINT>{2}));
  EXPECT_FALSE(accepted);
  At(10, [&] {
    ClickRow(Menu(), kPrice);
    gen().MoveMouseTo(380, 280);
    gen().ClickLeftButton();
  });
  EXPECT_EQ(TrackMulti({2}, nullptr), (std::set<UINT>{2}));
  EXPECT_EQ(clicks_below_, 0);
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
