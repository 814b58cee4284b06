#include "tabs/tab_variants.h"

#include <gtest/gtest.h>

#include <tuple>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "backends/cairo_render.h"
#include "display/reddots.h"
#include "library_test_base.h"
#include "testing/png_compare.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CPoint;
using SOUI::CRect;
using SOUI::SStringW;

class TabVariantsTest : public test::LibraryTestBase {
 protected:
  // One strip of the given tag with n tabs, laid out and settled.
  CQVTabCtrlBase* MakeStrip(const wchar_t* tag, int n, const wchar_t* extra = L"") {
    SStringW xml = SStringW::Format2(L"<%s name=\"strip\" pos=\"10,10,@560,@60\" %s>", tag, extra);
    for (int i = 0; i < n; ++i) xml += SStringW::Format2(L"<tabitem title=\"Tab %d\"/>", i);
    xml += SStringW::Format2(L"</%s>", tag);
    CreateHostWithChildren(xml, 600, 120);
    Layout();
    Advance(400);
    return Find<CQVTabCtrlBase>(L"strip");
  }
  static CQVVariantItemBase* Item(CQVTabCtrlBase* strip, int order) {
    return dynamic_cast<CQVVariantItemBase*>(strip->GetTabObjByOrder(order));
  }
  static SStringW TitleColor(CQVTabCtrlBase* strip, int order) {
    return Item(strip, order)->GetTitleWnd()->GetAttribute(L"colorText");
  }
  void Click(SOUI::SWindow* w) {
    gen().MoveMouseToCenterOf(w);
    gen().ClickLeftButton();
    Advance(400);
  }
};

// ---- title colour per state ----------------------------------------------------------------

struct ColorCase {
  const wchar_t* tag;
  QVItemState state;
  const wchar_t* color;
};

class TitleColorTest : public TabVariantsTest, public ::testing::WithParamInterface<ColorCase> {};

#define QV_REF(n) L"@color\\style_skin_qv_tab\\" n
const ColorCase kColorCases[] = {
    {L"qv_primarytab", kQVItemNormal, QV_REF(L"text_default")},
    {L"qv_primarytab", kQVItemHover, QV_REF(L"text_hover")},
    {L"qv_primarytab", kQVItemSelected, QV_REF(L"text_selected")},
    {L"qv_primarytab", kQVItemDisabled, QV_REF(L"text_disable")},
    {L"qv_secondarytab", kQVItemNormal, QV_REF(L"text_default")},
    {L"qv_secondarytab", kQVItemHover, QV_REF(L"text_hover")},
    {L"qv_secondarytab", kQVItemSelected, QV_REF(L"text_selected")},
    {L"qv_secondarytab", kQVItemDisabled, QV_REF(L"text_disabled")},
    {L"qv_thirdtab", kQVItemHover, QV_REF(L"text_hover")},
    {L"qv_thirdtab", kQVItemSelected, QV_REF(L"text_selected")},
    {L"qv_thirdtab", kQVItemDisabled, QV_REF(L"text_disabled")},
    {L"qv_segmenttab", kQVItemNormal, QV_REF(L"text_default")},
    {L"qv_segmenttab", kQVItemHover, QV_REF(L"text_hover")},
    {L"qv_segmenttab", kQVItemSelected, QV_REF(L"text_selected")},
    {L"qv_segmenttab", kQVItemDisabled, QV_REF(L"text_disabled")},
    {L"qv_tabview", kQVItemHover, QV_REF(L"text_hover")},
    {L"qv_tabview", kQVItemSelected, QV_REF(L"text_selected")},
    {L"qv_tabview", kQVItemDisabled, QV_REF(L"text_disabled")},
    {L"qv_filtertab", kQVItemNormal, QV_REF(L"text_default")},
    {L"qv_filtertab", kQVItemHover, QV_REF(L"text_hover")},
    {L"qv_filtertab", kQVItemSelected, QV_REF(L"text_selected_high")},
    {L"qv_filtertab", kQVItemDisabled, QV_REF(L"text_disabled")},
};
#undef QV_REF

// The second tab is brought into each state the way a user or host would.
TEST_P(TitleColorTest, SecondTabShowsTheStatesColour) {
  const ColorCase& c = GetParam();
  CQVTabCtrlBase* strip = MakeStrip(c.tag, 3);
  ASSERT_NE(strip, nullptr);
  ASSERT_EQ(strip->GetTabCount(), 3);
  switch (c.state) {
    case kQVItemNormal: break;
    case kQVItemHover: gen().MoveMouseToCenterOf(Item(strip, 1)); break;
    case kQVItemSelected: Click(Item(strip, 1)); break;
    case kQVItemDisabled:
      strip->SetItemAttrByOrder(L"enable", L"0", 1);
      // Hovering and clicking a disabled tab changes nothing.
      Click(Item(strip, 1));
      break;
  }
  EXPECT_EQ(TitleColor(strip, 1), SStringW(c.color));
  EXPECT_EQ(Item(strip, 1)->IsSelected(), c.state == kQVItemSelected);
  // Leaving a hovered tab brings its resting colour back.
  gen().MoveMouseTo(5, 100);
  if (c.state == kQVItemHover) {
    EXPECT_EQ(TitleColor(strip, 1), SStringW(L"@color\\style_skin_qv_tab\\text_default"));
  }
}

INSTANTIATE_TEST_SUITE_P(Variants, TitleColorTest, ::testing::ValuesIn(kColorCases));

TEST_F(TabVariantsTest, HoveringTheSelectedTabKeepsItsSelectedLook) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_primarytab", 2);
  gen().MoveMouseToCenterOf(Item(strip, 0));
  EXPECT_EQ(Item(strip, 0)->GetShownState(), kQVItemSelected);
  EXPECT_EQ(TitleColor(strip, 0), SStringW(L"@color\\style_skin_qv_tab\\text_selected"));
}

// ---- widths ------------------------------------------------------------------------------------

TEST_F(TabVariantsTest, PrimaryTabGrowsWhenSelectedAndShrinksWhenLeft) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_primarytab", 3);
  const int normal = Item(strip, 1)->GetWindowRect().Width();
  Click(Item(strip, 1));
  const int selected = Item(strip, 1)->GetWindowRect().Width();
  EXPECT_GT(selected, normal);
  // The neighbours moved to make room.
  EXPECT_EQ(Item(strip, 2)->GetWindowRect().left, Item(strip, 1)->GetWindowRect().right);
  EXPECT_EQ(Item(strip, 0)->GetWindowRect().Width(), normal);
  Click(Item(strip, 2));
  EXPECT_EQ(Item(strip, 1)->GetWindowRect().Width(), normal);
  EXPECT_EQ(Item(strip, 2)->GetWindowRect().Width(), selected);
}

TEST_F(TabVariantsTest, ItemWidthFollowsTitleAndShownChildren) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_secondarytab", 2);
  CQVVariantItemBase* item = Item(strip, 1);
  const int before = item->GetWindowRect().Width();
  strip->SetItemAttrByOrder(L"title", L"A much longer title", 1);
  Advance(400);
  const int longer = item->GetWindowRect().Width();
  EXPECT_GT(longer, before);
  strip->SetItemAttrByOrder(L"btn_tail", L"1", 1);
  Advance(400);
  EXPECT_GT(item->GetWindowRect().Width(), longer);
  strip->SetItemAttrByOrder(L"btn_tail", L"0", 1);
  Advance(400);
  EXPECT_EQ(item->GetWindowRect().Width(), longer);
  // The title child lies inside its item.
  const CRect title = item->GetTitleWnd()->GetWindowRect();
  EXPECT_GE(title.left, item->GetWindowRect().left);
  EXPECT_LE(title.right, item->GetWindowRect().right);
}

// ---- children ------------------------------------------------------------------------------------

struct ChildrenCase {
  const wchar_t* tag;
  bool has_tail;
  bool tail_visible;
  bool has_underline;
};

class ItemChildrenTest : public TabVariantsTest, public ::testing::WithParamInterface<ChildrenCase> {};

TEST_P(ItemChildrenTest, RedDotIsBuiltHiddenAndShownOnRequest) {
  const ChildrenCase& c = GetParam();
  CQVTabCtrlBase* strip = MakeStrip(c.tag, 2);
  CQVVariantItemBase* item = Item(strip, 1);
  auto* dot = dynamic_cast<CQVRedDot*>(item->FindChildByName(L"reddot"));
  ASSERT_NE(dot, nullptr);
  EXPECT_EQ(dot->GetQVStyle(), SStringW(L"RD1"));
  EXPECT_FALSE(dot->IsVisible(FALSE));
  SOUI::SWindow* tail = item->FindChildByName(L"btn_tail");
  ASSERT_EQ(tail != nullptr, c.has_tail);
  if (tail) {
    EXPECT_EQ(!!tail->IsVisible(FALSE), c.tail_visible);
  }
  EXPECT_EQ(item->FindChildByName(L"img_bottom") != nullptr, c.has_underline);
  strip->SetItemAttrByOrder(L"reddot", L"1", 1);
  Layout();
  EXPECT_TRUE(dot->IsVisible(FALSE));
  EXPECT_FALSE(dot->GetWindowRect().IsRectEmpty());
}

INSTANTIATE_TEST_SUITE_P(Variants, ItemChildrenTest,
                         ::testing::Values(ChildrenCase{L"qv_primarytab", true, false, false},
                                           ChildrenCase{L"qv_secondarytab", true, false, true},
                                           ChildrenCase{L"qv_thirdtab", true, false, false},
                                           ChildrenCase{L"qv_segmenttab", false, false, false},
                                           ChildrenCase{L"qv_tabview", true, true, false},
                                           ChildrenCase{L"qv_filtertab", true, false, false}));

TEST_F(TabVariantsTest, SecondaryUnderlineFollowsTheSelection) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_secondarytab", 3);
  auto underline = [&](int order) { return !!Item(strip, order)->FindChildByName(L"img_bottom")->IsVisible(FALSE); };
  EXPECT_TRUE(underline(0));
  EXPECT_FALSE(underline(1));
  Click(Item(strip, 2));
  EXPECT_FALSE(underline(0));
  EXPECT_TRUE(underline(2));
}

// ---- segment skins ---------------------------------------------------------------------------------

std::string SegmentSkins(CQVTabCtrlBase* strip) {
  std::string s;
  for (CQVItemBase* it = strip->GetHead(); it; it = it->GetNext()) {
    if (!s.empty()) s += ' ';
    s += "LCR"[dynamic_cast<CQVSegmentTabItem*>(it)->GetSegmentPos()];
    // The skin set matches the recorded place.
    const SStringW skin = it->GetAttribute(L"skin");
    const SStringW names[3] = {L"skin_tab_bg_segment_tab_left", L"skin_tab_bg_segment_tab_center",
                               L"skin_tab_bg_segment_tab_right"};
    if (skin != names[dynamic_cast<CQVSegmentTabItem*>(it)->GetSegmentPos()]) s += '!';
  }
  return s;
}

TEST_F(TabVariantsTest, SegmentSkinsFollowPlacesThroughInsertAndRemove) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_segmenttab", 1);
  EXPECT_EQ(SegmentSkins(strip), "C");
  strip->InsertTab({}, -1);
  Advance(400);
  EXPECT_EQ(SegmentSkins(strip), "L R");
  strip->InsertTab({}, -1);
  Advance(400);
  EXPECT_EQ(SegmentSkins(strip), "L C R");
  strip->InsertTab({}, 0);
  Advance(400);
  EXPECT_EQ(SegmentSkins(strip), "L C C R");
  strip->RemoveTabByOrder(3);
  Advance(400);
  EXPECT_EQ(SegmentSkins(strip), "L C R");
  strip->RemoveTabByOrder(0);
  strip->RemoveTabByOrder(0);
  Advance(400);
  EXPECT_EQ(SegmentSkins(strip), "C");
}

TEST_F(TabVariantsTest, SegmentSkinIsSetOnlyWhenThePlaceChanges) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_segmenttab", 3);
  // A host restyles the middle item; a re-layout that leaves it in the
  // middle must not overwrite that.
  strip->GetTabObjByOrder(1)->SetAttribute(L"skin", L"skin_tab_bg_tabview", FALSE);
  strip->SetAttribute(L"pos", L"10,10,@500,@60", FALSE);
  Layout();
  EXPECT_EQ(strip->GetTabObjByOrder(1)->GetAttribute(L"skin"), SStringW(L"skin_tab_bg_tabview"));
}

// ---- tab view ----------------------------------------------------------------------------------------

TEST_F(TabVariantsTest, TabViewCloseButtonRaisesTailClickWithTheId) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_tabview", 3);
  std::vector<int> ids;
  strip->subscribeEvent(EVT_QVTAB_ITEM_CLICK_TAILICON, [&](SOUI::EventArgs* e) {
    ids.push_back(static_cast<EventQVTabItemClickTailicon*>(e)->nId);
    return true;
  });
  Click(Item(strip, 2)->FindChildByName(L"btn_tail"));
  Click(Item(strip, 1)->FindChildByName(L"btn_tail"));
  EXPECT_EQ(ids, (std::vector<int>{2, 1}));
  // Closing is the host's business and a click on the close button does
  // not select the tab.
  EXPECT_EQ(strip->GetCurSelId(), 0);
  EXPECT_EQ(strip->GetTabCount(), 3);
}

TEST_F(TabVariantsTest, TabViewDragOutOnlyBeyondTheThreshold) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_tabview", 3, L"dragable=\"1\"");
  std::vector<int> ids;
  strip->subscribeEvent(EVT_QVTAB_ITEM_DRAG_OUT, [&](SOUI::EventArgs* e) {
    ids.push_back(static_cast<EventQVTabItemDragOut*>(e)->nId);
    return true;
  });
  const CRect rc = strip->GetWindowRect();
  const CPoint start = Item(strip, 1)->GetWindowRect().CenterPoint();
  // Just inside the threshold below the strip: no tear-off.
  gen().MoveMouseTo(start);
  gen().PressLeftButton();
  gen().DragTo(CPoint(start.x, rc.bottom + kQVDragOutPx - 2));
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_TRUE(ids.empty());
  gen().MoveMouseTo(start);
  gen().PressLeftButton();
  gen().DragTo(CPoint(start.x + 30, rc.bottom + kQVDragOutPx + 5));
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(ids, (std::vector<int>{1}));
  EXPECT_EQ(Item(strip, 1)->GetWindowRect().top, rc.top);
}

TEST_F(TabVariantsTest, TabViewAddButtonFollowsTheLastTabAndRaisesClickAdd) {
  auto* strip = dynamic_cast<CQVTabView*>(MakeStrip(L"qv_tabview", 1));
  CQVItemBase* add = strip->GetAddButton();
  ASSERT_NE(add, nullptr);
  EXPECT_EQ(strip->GetTabCount(), 1);
  EXPECT_GT(add->GetWindowRect().left, Item(strip, 0)->GetWindowRect().right);
  Click(add);
  Click(add);
  EXPECT_EQ(CountEvents(EVT_QVTAB_CLICK_ADD), 2);
  // The host answers by adding a tab: the button moves on behind it, and
  // the selection stays where it was.
  strip->InsertTab({{L"title", L"New"}}, -1);
  Advance(400);
  EXPECT_GT(add->GetWindowRect().left, Item(strip, 1)->GetWindowRect().right);
  EXPECT_EQ(strip->GetCurSelId(), 0);
  EXPECT_EQ(strip->GetTabCount(), 2);
}

// The primary tab grows when pressed (bold), which re-lays the strip under
// the pressed tab.
TEST_F(TabVariantsTest, NudgingTheLastTabKeepsTheOrder) {
  CQVTabCtrlBase* strip = MakeStrip(L"qv_primarytab", 2, L"dragable=\"1\"");
  const CPoint c = Item(strip, 1)->GetWindowRect().CenterPoint();
  gen().MoveMouseTo(c);
  gen().PressLeftButton();
  gen().DragTo(CPoint(c.x + 2, c.y));
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(strip->GetTabId(0), 0);
  // Dragged onto the first tab, it does swap.
  gen().MoveMouseTo(c);
  gen().PressLeftButton();
  gen().DragTo(Item(strip, 0)->GetWindowRect().CenterPoint());
  gen().ReleaseLeftButton();
  Advance(400);
  EXPECT_EQ(strip->GetTabId(0), 1);
}

// ---- filter -------------------------------------------------------------------------------------------

class FilterTabTest : public TabVariantsTest {
 protected:
  void SetUp() override {
    TabVariantsTest::SetUp();
    strip_ = dynamic_cast<CQVFilterTab*>(MakeStrip(L"qv_filtertab", 4, L"single=\"0\""));
    ASSERT_NE(strip_, nullptr);
    strip_->subscribeEvent(EVT_QVTAB_ITEM_CANCLE_SELING, [this](SOUI::EventArgs* e) {
      auto* a = static_cast<EventQVTabItemCanclSeling*>(e);
      log_ += "seling" + std::to_string(a->nId) + ' ';
      a->bCancel = a->nId == veto_id_;
      return true;
    });
    strip_->subscribeEvent(EVT_QVTAB_ITEM_CANCLE_SEL, [this](SOUI::EventArgs* e) {
      auto* a = static_cast<EventQVTabItemCancleSel*>(e);
      log_ += std::string(a->bByMode ? "mode" : "click") + std::to_string(a->nId) + ' ';
      return true;
    });
  }
  void ClickOrder(int order) { Click(strip_->GetTabObjByOrder(order)); }

  CQVFilterTab* strip_ = nullptr;
  std::string log_;
  int veto_id_ = -100;
};

TEST_F(FilterTabTest, MultiModeSelectsSeveralAndAClickTakesOneOut) {
  EXPECT_FALSE(strip_->IsSingle());
  EXPECT_TRUE(strip_->GetSelectedIds().empty());
  ClickOrder(2);
  ClickOrder(0);
  ClickOrder(3);
  EXPECT_EQ(strip_->GetSelectedIds(), (std::vector<int>{2, 0, 3}));
  EXPECT_EQ(CountEvents(EVT_QVTAB_SEL_CHANGED), 3);
  ClickOrder(0);
  EXPECT_EQ(strip_->GetSelectedIds(), (std::vector<int>{2, 3}));
  EXPECT_FALSE(strip_->GetTabObjByOrder(0)->IsSelected());
  EXPECT_EQ(log_, "seling0 click0 ");
  // A vetoed take-out keeps the chip.
  veto_id_ = 3;
  ClickOrder(3);
  EXPECT_EQ(strip_->GetSelectedIds(), (std::vector<int>{2, 3}));
  EXPECT_TRUE(strip_->GetTabObjByOrder(3)->IsSelected());
}

TEST_F(FilterTabTest, SwitchingToSingleOffersEveryChipBackAndHonoursTheVeto) {
  ClickOrder(0);
  ClickOrder(1);
  ClickOrder(2);
  veto_id_ = 1;
  strip_->SetAttribute(L"single", L"1", FALSE);
  EXPECT_TRUE(strip_->IsSingle());
  EXPECT_EQ(log_, "seling0 mode0 seling1 seling2 mode2 ");
  EXPECT_FALSE(strip_->GetTabObjByOrder(0)->IsSelected());
  EXPECT_TRUE(strip_->GetTabObjByOrder(1)->IsSelected());
  EXPECT_EQ(strip_->GetCurSelId(), 1);
  // Single mode again: a click moves the one selection.
  ClickOrder(3);
  EXPECT_EQ(strip_->GetSelectedIds(), (std::vector<int>{3}));
  EXPECT_FALSE(strip_->GetTabObjByOrder(1)->IsSelected());
}

TEST_F(FilterTabTest, SwitchingToMultiUnselectsTheSingleSelection) {
  strip_->SetAttribute(L"single", L"1", FALSE);
  ClickOrder(2);
  log_.clear();
  strip_->SetAttribute(L"single", L"0", FALSE);
  EXPECT_EQ(log_, "seling2 mode2 ");
  EXPECT_TRUE(strip_->GetSelectedIds().empty());
  EXPECT_FALSE(strip_->GetTabObjByOrder(2)->IsSelected());
  // Setting the same mode again raises nothing.
  log_.clear();
  strip_->SetAttribute(L"single", L"false", FALSE);
  EXPECT_EQ(log_, "");
}

TEST_F(FilterTabTest, RemovingASelectedChipLeavesTheOthersAlone) {
  ClickOrder(1);
  ClickOrder(3);
  strip_->RemoveTabById(1);
  Advance(400);
  EXPECT_EQ(strip_->GetSelectedIds(), (std::vector<int>{3}));
  EXPECT_FALSE(strip_->GetTabObjByOrder(0)->IsSelected());
}

TEST_F(TabVariantsTest, FilterMaxRowCountWrapsIntoThatManyRows) {
  SStringW xml = L"<qv_filtertab name=\"strip\" pos=\"0,0,@200,@80\" MaxRowCount=\"0x2\">";
  for (int i = 0; i < 12; ++i) xml += L"<tabitem title=\"Chip\"/>";
  xml += L"</qv_filtertab>";
  CreateHostWithChildren(xml, 400, 120);
  Layout();
  Advance(400);
  auto* strip = Find<CQVFilterTab>(L"strip");
  EXPECT_EQ(strip->GetRowCount(), 2);
  strip->SetAttribute(L"MaxRowCount", L"3", FALSE);
  EXPECT_EQ(strip->GetRowCount(), 3);
}

// ---- comm item -----------------------------------------------------------------------------------------

TEST_F(TabVariantsTest, CommTabItemRoutesItsAttributes) {
  CreateHostWithChildren(
      L"<qv_commtab_item name=\"c\" pos=\"0,0\" title=\"Quotes\" show_tailicon=\"false\" reddot=\"1\" "
      L"icon_skin=\"skin_live_list_expand\"/>");
  Layout();
  SOUI::SWindow* c = Find(L"c");
  EXPECT_EQ(c->FindChildByName(L"title")->GetWindowText(), SStringW(L"Quotes"));
  EXPECT_FALSE(c->FindChildByName(L"btn_tail")->IsVisible(FALSE));
  EXPECT_TRUE(c->FindChildByName(L"reddot")->IsVisible(FALSE));
  EXPECT_TRUE(c->FindChildByName(L"img_head")->IsVisible(FALSE));
}

// ---- the rendered look ---------------------------------------------------------------------------------

// Every strip in every state: tab 0 carrying a red dot, tab 1 hovered,
// tab 2 selected, tab 3 disabled; at 100 % and 150 %.
struct StripLook {
  const wchar_t* tag;
  int height_dp;
  int width_dp = 440;  // room for four tabs
};

class StripLookTest : public TabVariantsTest,
                      public ::testing::WithParamInterface<std::tuple<StripLook, int>> {};

TEST_P(StripLookTest, LooksAsItsReference) {
  const StripLook look = std::get<0>(GetParam());
  const int zoom = std::get<1>(GetParam());
  app_->SetZoom(zoom);
  // Real text metrics, so that the picture shows what a user sees.
  app_->SetMeasureTarget(nullptr);
  const int host_w = (look.width_dp + 20) * zoom / 100, host_h = (look.height_dp + 16) * zoom / 100;
  SStringW xml = SStringW::Format2(L"<SOUI><root colorBkgnd=\"#FFFFFF\">"
                                   L"<%s name=\"strip\" pos=\"8dp,8dp,@%ddp,@%ddp\">",
                                   look.tag, look.width_dp, look.height_dp);
  for (int i = 0; i < 4; ++i) xml += L"<tabitem title=\"Tab\"/>";
  xml += SStringW::Format2(L"</%s></root></SOUI>", look.tag);
  CreateHost(xml, host_w, host_h);
  Layout();
  Advance(400);
  auto* strip = Find<CQVTabCtrlBase>(L"strip");
  ASSERT_NE(strip, nullptr);
  strip->SetItemAttrByOrder(L"reddot", L"1", 0);
  strip->SetItemAttrByOrder(L"enable", L"0", 3);
  Click(strip->GetTabObjByOrder(2));
  gen().MoveMouseToCenterOf(strip->GetTabObjByOrder(1));
  Advance(400);
  host()->Render();
  const std::string ref = std::string(QV_SOURCE_DIR "/tests/data/") + SStringW(look.tag).ToUtf8() + "_" +
                          std::to_string(zoom) + ".png";
  EXPECT_TRUE(SOUI::MatchesReferencePng(*dynamic_cast<SOUI::CairoRenderTarget*>(host()->GetFrame()), ref, 16, 0.01));
}

INSTANTIATE_TEST_SUITE_P(
    Strips, StripLookTest,
    ::testing::Combine(::testing::Values(StripLook{L"qv_primarytab", 32}, StripLook{L"qv_secondarytab", 32},
                                         StripLook{L"qv_thirdtab", 32}, StripLook{L"qv_segmenttab", 20},
                                         StripLook{L"qv_tabview", 28, 760}, StripLook{L"qv_filtertab", 20}),
                       ::testing::Values(100, 150)),
    [](const ::testing::TestParamInfo<std::tuple<StripLook, int>>& info) {
      return SStringW(std::get<0>(info.param).tag).ToUtf8() + "_" + std::to_string(std::get<1>(info.param));
    });

// The gallery's tabs page builds with nothing left out.
TEST_F(TabVariantsTest, GalleryPageCreatesEveryStrip) {
  std::ifstream in(QV_SOURCE_DIR "/apps/gallery/pages/04_tabs.xml");
  const std::string page((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  ASSERT_FALSE(page.empty());
  app_->SetMeasureTarget(nullptr);
  CreateHostWithChildren(SStringW::FromUtf8(page), 1000, 600);
  Layout();
  Advance(1000);
  EXPECT_FALSE(LogContains(L"qv_"));
  for (const wchar_t* name : {L"tabs_primary", L"tabs_secondary", L"tabs_third", L"tabs_segment", L"tabs_view",
                              L"tabs_filter_single", L"tabs_filter_multi"}) {
    auto* strip = Find<CQVTabCtrlBase>(name);
    ASSERT_NE(strip, nullptr) << SStringW(name).ToUtf8();
    EXPECT_GE(strip->GetTabCount(), 5) << SStringW(name).ToUtf8();
  }
  EXPECT_FALSE(Find<CQVFilterTab>(L"tabs_filter_multi")->IsSingle());
  // Initial tabs marked selected are picked, several in multi mode.
  EXPECT_EQ(Find<CQVFilterTab>(L"tabs_filter_multi")->GetSelectedIds(), (std::vector<int>{1, 4, 8}));
  EXPECT_EQ(Find<CQVTabCtrlBase>(L"tabs_secondary")->GetCurSelId(), 2);
  if (const char* out = std::getenv("QV_GALLERY_PNG")) host()->SaveFramePng(SStringW::FromUtf8(out));
}

}  // namespace
}  // namespace QVStandardCtrls
