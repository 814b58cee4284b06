// SScrollView driven through the host's input path: a 200x200 view with a
// 10 px bar over ten focusable 90 px windows stacked 100 px apart (content
// 1000 px), each painted in its own colour.
#include <gtest/gtest.h>

#include <climits>

#include "soui/edit.h"
#include "soui/scrollview.h"
#include "testing/recording_render.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

class ScrollViewTest : public test::UiTestBase {
 protected:
  SScrollView* Make(const wchar_t* extra_children = L"", const wchar_t* attrs = L"viewSize='-1,1000'") {
    SStringW xml = SStringW(L"<scrollview name='sv' pos='0,0,200,200' sbWid='10' ") + attrs + L">";
    for (int i = 0; i < 10; ++i) {
      xml += SStringW().Format2(L"<window name='b%d' pos='10,%d,@80,@90' focusable='1' colorBkgnd='#0000%02dFF'/>", i,
                                i * 100, i + 10);
    }
    xml += extra_children;
    xml += L"</scrollview>";
    CreateHostWithChildren(xml, 300, 250);
    Layout();
    return Find<SScrollView>(L"sv");
  }
  int OriginY(SScrollView* sv) { return sv->GetViewOrigin().y; }
  // Which buttons paint when the whole host is repainted.
  std::string Painted() {
    RecordingRenderTarget rt(300, 250);
    host()->GetRoot()->RedrawRegion(&rt, CRect(0, 0, 300, 250));
    std::string out;
    for (int i = 0; i < 10; ++i) {
      if (rt.Contains(SStringW().Format2(L"#0000%02dFF", i + 10).ToUtf8())) out += std::to_string(i);
    }
    return out;
  }
};

TEST_F(ScrollViewTest, WheelOnAChildScrollsAndClampsAtTheEnds) {
  SScrollView* sv = Make();
  EXPECT_EQ(sv->GetViewSize(), CSize(190, 1000));
  EXPECT_EQ(sv->GetViewRect(), CRect(0, 0, 190, 200));
  // A notch down over a child (which takes no wheel) is three 16 px lines.
  gen().MoveMouseTo(50, 60);
  gen().MouseWheel(-120);
  EXPECT_EQ(OriginY(sv), 48);
  EXPECT_EQ(Find(L"b1")->GetWindowRect(), CRect(10, 52, 90, 142));
  EXPECT_EQ(CountEvents(EVT_SCROLLVIEW_ORIGINCHANGED), 1);
  // The mouse did not move, but it is over b1 now and no longer over b0.
  EXPECT_EQ(host()->GetHover(), Find(L"b1"));
  EXPECT_FALSE(Find(L"b0")->GetState() & WndState_Hover);
  // Far past either end it stops there and says nothing more.
  for (int i = 0; i < 40; ++i) gen().MouseWheel(-120);
  EXPECT_EQ(OriginY(sv), 800);
  ClearEvents();
  gen().MouseWheel(-120);
  EXPECT_EQ(CountEvents(EVT_SCROLLVIEW_ORIGINCHANGED), 0);
  gen().MouseWheel(32767);
  EXPECT_EQ(OriginY(sv), 0);
  // Shift turns the wheel sideways; this content is no wider than the view.
  gen().PressKey(VK_SHIFT);
  gen().MouseWheel(-120);
  gen().ReleaseKey(VK_SHIFT);
  EXPECT_EQ(sv->GetViewOrigin(), CPoint(0, 0));
}

TEST_F(ScrollViewTest, ThumbDragAndTrackPress) {
  SScrollView* sv = Make();
  // Track 200 px, thumb 200*200/1000 = 40 px: 160 px of travel for 800 of content.
  gen().MoveMouseTo(195, 20);
  gen().DragTo(CPoint(195, 100));
  EXPECT_EQ(OriginY(sv), 400);
  // The child now under the view's top left is where it paints and what a click hits.
  EXPECT_EQ(Find(L"b4")->GetWindowRect(), CRect(10, 0, 90, 90));
  // Dragging far past the end clamps; back above the start returns to 0.
  gen().MoveMouseTo(195, 100);
  gen().DragTo(CPoint(195, 5000));
  EXPECT_EQ(OriginY(sv), 800);
  gen().MoveMouseTo(195, 190);
  gen().DragTo(CPoint(195, -5000));
  EXPECT_EQ(OriginY(sv), 0);
  // A press on the track below the thumb pages down: the view less a line.
  gen().MoveMouseTo(195, 150);
  gen().ClickLeftButton();
  EXPECT_EQ(OriginY(sv), 184);
  gen().MoveMouseTo(195, 2);
  gen().ClickLeftButton();
  EXPECT_EQ(OriginY(sv), 0);
  // Held, the track pages on until the thumb is under the mouse, then stops.
  gen().MoveMouseTo(195, 150);
  gen().PressLeftButton();
  Advance(SScrollView::kRepeatDelayMs);
  EXPECT_EQ(OriginY(sv), 368);
  Advance(10 * SScrollView::kRepeatMs);
  const int stopped = OriginY(sv);
  gen().ReleaseLeftButton();
  Advance(1000);
  EXPECT_EQ(OriginY(sv), stopped);
  const CRect thumb(190, 160 * stopped / 800, 200, 160 * stopped / 800 + 40);
  EXPECT_TRUE(thumb.PtInRect(CPoint(195, 150))) << stopped;
}

TEST_F(ScrollViewTest, FlatBarsAreDarkOnLightAndLightOnDark) {
  SScrollView* sv = Make();
  RecordingRenderTarget light(300, 250);
  host()->GetRoot()->RedrawRegion(&light, CRect(0, 0, 300, 250));
  EXPECT_TRUE(light.Contains("FillRoundRect [192,1,198,39] r=(3,3) brush=#00000058")) << light.Dump();
  sv->SetAttribute(L"colorBkgnd", L"#1F2329", FALSE);
  RecordingRenderTarget dark(300, 250);
  host()->GetRoot()->RedrawRegion(&dark, CRect(0, 0, 300, 250));
  EXPECT_TRUE(dark.Contains("brush=#FFFFFF58")) << dark.Dump();
  // Hovering the thumb darkens it; an explicit colour wins.
  gen().MoveMouseTo(195, 20);
  sv->SetAttribute(L"colorSbTrack", L"#FF0000", FALSE);
  RecordingRenderTarget hot(300, 250);
  host()->GetRoot()->RedrawRegion(&hot, CRect(0, 0, 300, 250));
  EXPECT_TRUE(hot.Contains("brush=#FFFFFF90"));
  EXPECT_TRUE(hot.Contains("FillSolidRect [190,0,200,200] #FF0000FF"));
}

TEST_F(ScrollViewTest, ClicksAndHoverFollowTheScrolledChildren) {
  SScrollView* sv = Make();
  sv->SetViewOrigin(CPoint(0, 300));
  // b3 (content 300..390) now sits at the top of the view.
  gen().MoveMouseTo(50, 50);
  ClearEvents();
  gen().ClickLeftButton();
  ASSERT_EQ(CountEvents(EVT_CMD), 1);
  EXPECT_EQ(events().back().nameFrom, L"b3");
  // The last row of the view still hits the child under it (b4 at 100..190
  // ends at 190: the gap below it is the view's own).
  gen().MoveMouseTo(50, 189);
  EXPECT_EQ(host()->GetHover(), Find(L"b4"));
  gen().MoveMouseTo(50, 199);
  EXPECT_EQ(host()->GetHover(), sv);
  // The part of b5 that would be under the view's bottom edge is not hit.
  gen().MoveMouseTo(50, 205);
  EXPECT_NE(host()->GetHover(), Find(L"b5"));
  // Over the bar the view is hovered, and the button left.
  gen().MoveMouseTo(50, 120);
  EXPECT_TRUE(Find(L"b4")->GetState() & WndState_Hover);
  gen().MoveMouseTo(195, 120);
  EXPECT_EQ(host()->GetHover(), sv);
  EXPECT_FALSE(Find(L"b4")->GetState() & WndState_Hover);
}

TEST_F(ScrollViewTest, OnlyChildrenInViewArePainted) {
  SScrollView* sv = Make();
  EXPECT_EQ(Painted(), "01");
  sv->SetViewOrigin(CPoint(0, 450));  // 450..650: b4 (400..490), b5, b6 (600..690)
  EXPECT_EQ(Painted(), "456");
  sv->SetViewOrigin(CPoint(0, 100000));
  EXPECT_EQ(OriginY(sv), 800);
  EXPECT_EQ(Painted(), "89");
  // What can be seen of a child follows the view; out of view is nothing.
  EXPECT_TRUE(Find(L"b0")->GetVisibleRect().IsRectEmpty());
  EXPECT_EQ(Find(L"b9")->GetVisibleRect(), Find(L"b9")->GetWindowRect());
  sv->SetViewOrigin(CPoint(0, 450));
  EXPECT_EQ(Find(L"b4")->GetVisibleRect(), CRect(10, 0, 90, 40));  // its lower 40 px show
}

TEST_F(ScrollViewTest, KeysScrollUnlessTheFocusUsesThem) {
  SScrollView* sv = Make(L"<edit name='ed' pos='100,0,@80,@40' multiLines='1'/>");
  Find(L"b0")->SetFocus();
  gen().PressAndReleaseKey(VK_DOWN);
  EXPECT_EQ(OriginY(sv), 16);
  gen().PressAndReleaseKey(VK_NEXT);
  EXPECT_EQ(OriginY(sv), 200);
  gen().PressAndReleaseKey(VK_END);
  EXPECT_EQ(OriginY(sv), 800);
  gen().PressAndReleaseKey(VK_PRIOR);
  EXPECT_EQ(OriginY(sv), 616);
  gen().PressAndReleaseKey(VK_HOME);
  EXPECT_EQ(OriginY(sv), 0);
  // A focused edit keeps its keys.
  Find(L"ed")->SetFocus();
  for (UINT vk : {VK_DOWN, VK_UP, VK_HOME, VK_END, VK_NEXT}) gen().PressAndReleaseKey(vk);
  EXPECT_EQ(OriginY(sv), 0);
  // With no focus at all, the view under the mouse scrolls.
  host()->SetFocus(nullptr);
  gen().MoveMouseTo(50, 50);
  gen().PressAndReleaseKey(VK_DOWN);
  EXPECT_EQ(OriginY(sv), 16);
}

TEST_F(ScrollViewTest, TabScrollsTheFocusIntoView) {
  SScrollView* sv = Make();
  Find(L"b0")->SetFocus();
  for (int i = 0; i < 5; ++i) gen().PressAndReleaseKey(VK_TAB);
  ASSERT_EQ(host()->GetFocus(), Find(L"b5"));
  // b5 (500..590) is brought just into view at the bottom.
  EXPECT_EQ(OriginY(sv), 390);
  EXPECT_EQ(Find(L"b5")->GetWindowRect(), CRect(10, 110, 90, 200));
  // Shift+Tab back to b1 brings it in at the top.
  gen().PressKey(VK_SHIFT);
  for (int i = 0; i < 4; ++i) gen().PressAndReleaseKey(VK_TAB);
  gen().ReleaseKey(VK_SHIFT);
  EXPECT_EQ(OriginY(sv), 100);
  EXPECT_EQ(Find(L"b1")->GetWindowRect().top, 0);
}

TEST_F(ScrollViewTest, WrapContentTakesTheChildrenAndShowsNoBar) {
  CreateHostWithChildren(
      L"<scrollview name='sv' pos='0,0,-0,@-1' viewSize='-1,wrap'>"
      L"<window pos='0,0,-0,@120'/><window pos='0,[10,-0,@200'/></scrollview>",
      300, 500);
  Layout();
  SScrollView* sv = Find<SScrollView>(L"sv");
  EXPECT_EQ(sv->GetWindowRect(), CRect(0, 0, 300, 330));
  EXPECT_EQ(sv->GetViewRect(), sv->GetWindowRect());
  EXPECT_EQ(sv->GetViewSize(), CSize(300, 330));
}

TEST_F(ScrollViewTest, HostileSizesAndPositions) {
  SScrollView* sv = Make();
  // Unparsable or negative (other than -1) view sizes are refused and logged.
  for (const wchar_t* bad : {L"abc", L"10", L"-5,100", L"100,-2", L"1e9,1e9", L",", L"nan,nan"}) {
    EXPECT_EQ(sv->SetAttribute(L"viewSize", bad, FALSE), E_FAIL) << SStringW(bad).ToUtf8();
  }
  EXPECT_TRUE(LogContains(L"bad viewSize='abc'"));
  Layout();
  EXPECT_EQ(sv->GetViewSize(), CSize(190, 1000));
  // The largest sizes are kept below the content limit, and positions clamp.
  EXPECT_EQ(sv->SetAttribute(L"viewSize", L"1000000dp,1000000dp", FALSE), S_OK);
  host()->SetScale(200);
  Layout();
  EXPECT_EQ(sv->GetViewSize(), CSize(2000000, 2000000));
  sv->SetViewOrigin(CPoint(INT_MAX, INT_MIN));
  EXPECT_EQ(sv->GetViewOrigin(), CPoint(2000000 - sv->GetViewRect().Width(), 0));
  gen().MoveMouseTo(50, 50);
  gen().MouseWheel(-32768);
  sv->ScrollToRect(CRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX));
  sv->ScrollToRect(CRect(INT_MAX - 1, INT_MAX - 1, INT_MAX, INT_MAX));
  EXPECT_EQ(sv->GetViewOrigin().y, 2000000 - sv->GetViewRect().Height());
  sv->EnsureVisible(nullptr);
  sv->EnsureVisible(host()->GetRoot());  // not inside: nothing happens
  sv->SetViewSize(CSize(-7, INT_MAX));
  Layout();
  EXPECT_EQ(sv->GetViewOrigin().x, 0);
  EXPECT_EQ(sv->GetViewSize().cy, SScrollView::kMaxContentSide);
  host()->Render();
  // An empty view drags and scrolls to nothing.
  sv->Move(0, 0, 0, 0);
  gen().MoveMouseTo(0, 0);
  gen().DragTo(CPoint(10, 10));
  gen().MouseWheel(-120);
  host()->Render();
}

}  // namespace
}  // namespace SOUI
