// The text family and the legend, loaded from XML and driven through the
// event generator.
#include "display/text_ctrls.h"

#include <gtest/gtest.h>

#include "display/legend.h"
#include "library_test_base.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;

class TextCtrlsTest : public LibraryTestBase {};

TEST_F(TextCtrlsTest, StaticStyleAppliesAtOnceAndLaterAttributesWin) {
  CreateHostWithChildren(
      L"<qv_text name='a' qvstyle='HB2' text='x'/>"
      L"<qv_text name='b' qvstyle='HR1' font='size:20dp' text='x'/>"
      L"<qv_text name='c' font='size:20dp' qvstyle='HR1' text='x'/>"
      L"<qv_text name='d' qvstyle='hr1' text='x'/>");
  EXPECT_EQ(Find<CQVStatic>(L"a")->GetStyle().font[0].Source(), SStringW(L"size:16dp,bold:1"));
  EXPECT_EQ(Find<CQVStatic>(L"a")->GetStyle().colorText[0].Source(),
            SStringW(L"@color\\style_skin_qv_text\\text_h1"));
  // An explicit font after the code wins; one before it is overwritten.
  EXPECT_EQ(Find<CQVStatic>(L"b")->GetStyle().font[0].Source(), SStringW(L"size:20dp"));
  EXPECT_EQ(Find<CQVStatic>(L"c")->GetStyle().font[0].Source(), SStringW(L"size:12dp"));
  // Codes are case-sensitive: nothing applied.
  EXPECT_FALSE(Find<CQVStatic>(L"d")->GetStyle().HasFont());
}

TEST_F(TextCtrlsTest, ClassTriadsAndFilteredLookAttributes) {
  EXPECT_STREQ(CQVStatic::GetClassName(), L"qv_text");
  EXPECT_STREQ(CQVStatic::BaseClassName(), L"staticmultilines");
  EXPECT_STREQ(CQVLink::BaseClassName(), L"link");
  EXPECT_STREQ(CQVMultiLink::BaseClassName(), L"qvrichtext");
  EXPECT_STREQ(CQVCheck::BaseClassName(), L"check");
  EXPECT_STREQ(CQVRadio::BaseClassName(), L"radio");
  EXPECT_STREQ(CQVLegend::BaseClassName(), L"button");
  CreateHostWithChildren(L"<qv_check name='c' colorBorder='#FF0000' text='x'/>");
  CQVCheck* c = Find<CQVCheck>(L"c");
  ASSERT_NE(c, nullptr);
  EXPECT_TRUE(c->IsClass(L"check"));
  // Not an admitted look attribute: refused as unknown.
  EXPECT_EQ(c->SetAttribute(L"colorBorder", L"#00FF00", FALSE), E_NOTIMPL);
  EXPECT_FALSE(c->GetStyle().colorBorder.IsSet());
}

TEST_F(TextCtrlsTest, LinkClickCarriesItsTextAndHoverUnderlines) {
  CreateHostWithChildren(L"<qv_link name='l' pos='10,10' qvstyle='B3' text='Open account'/>");
  CQVLink* link = Find<CQVLink>(L"l");
  ASSERT_NE(link, nullptr);
  EXPECT_EQ(link->GetStyle().font[0].Source(), SStringW(L"size:13dp"));
  EXPECT_EQ(link->GetHoverFont(), SStringW(L"underline:1,size:13dp"));
  SStringW clicked;
  link->subscribeEvent(EVT_QV_LINK_CLICK, [&clicked](SOUI::EventArgs* e) {
    clicked = static_cast<EventQVLinkClick*>(e)->text;
    return true;
  });
  Layout();
  gen().MoveMouseToCenterOf(link);
  EXPECT_EQ(host()->GetCursorName(), SStringW(L"hand"));
  gen().ClickLeftButton();
  EXPECT_EQ(clicked, SStringW(L"Open account"));
  EXPECT_EQ(CountEvents(SOUI::EVT_CMD), 1);

  // A code only the text table knows brings its colour; hover then
  // underlines the plain font.
  link->SetAttribute(L"qvstyle", L"F2", FALSE);
  EXPECT_EQ(link->GetHoverFont(), SStringW());
  EXPECT_EQ(link->GetStyle().colorText[0].Source(), SStringW(L"@color\\style_skin_qv_text\\text_sell"));
}

TEST_F(TextCtrlsTest, MultiLinkAppendsParagraphsAndRaisesRdtClick) {
  CreateHostWithChildren(L"<qv_multilink name='m' pos='0,0,-0,-0' multiLines='1' text='a &lt;b&gt;'/>");
  CQVMultiLink* m = Find<CQVMultiLink>(L"m");
  ASSERT_NE(m, nullptr);
  // Markup in "text" is shown, not parsed.
  EXPECT_EQ(m->GetPlainText(), SStringW(L"a <b>"));
  m->SetPlainText(L"");
  EXPECT_EQ(m->GetParagraphCount(), 0);
  ASSERT_TRUE(m->AppendParagraph(
      L"<RichEditContent><qv_text cursor=\"hand\" qvstyle=\"B2\" link-data=\"k\">go</qv_text></RichEditContent>"));
  EXPECT_FALSE(m->AppendParagraph(L"<RichEditContent><qv_text>broken</RichEditContent>"));
  EXPECT_EQ(m->GetParagraphCount(), 1);
  SStringW data;
  m->subscribeEvent(L"on_rdt_click", [&data](SOUI::EventArgs* e) {
    data = static_cast<SOUI::EventRdtClick*>(e)->linkData;
    return true;
  });
  Layout();
  const auto& frags = m->LayoutFragments(m->GetClientRect().Width());
  ASSERT_FALSE(frags.empty());
  gen().MoveMouseTo(m->GetClientRect().left + frags[0].rc.CenterPoint().x,
                    m->GetClientRect().top + frags[0].rc.CenterPoint().y);
  gen().ClickLeftButton();
  EXPECT_EQ(data, SStringW(L"k"));
}

TEST_F(TextCtrlsTest, CheckAndRadioKeepReadableStates) {
  CreateHostWithChildren(
      L"<qv_check name='c' pos='0,0' qvstyle='CB1' text='Do not ask again'/>"
      L"<qv_radio name='r1' pos='0,30' qvstyle='CB1' text='Limit' checked='1'/>"
      L"<qv_radio name='r2' pos='0,60' qvstyle='CB1' text='Market'/>");
  CQVCheck* c = Find<CQVCheck>(L"c");
  EXPECT_EQ(c->GetStyle().colorText[0].Source(), SStringW(L"@color\\style_skin_qv_text\\text_h2"));
  Layout();
  gen().MoveMouseToCenterOf(c);
  gen().ClickLeftButton();
  EXPECT_TRUE(c->IsChecked());
  gen().ClickLeftButton();
  EXPECT_FALSE(c->IsChecked());
  gen().MoveMouseToCenterOf(Find(L"r2"));
  gen().ClickLeftButton();
  EXPECT_TRUE(Find(L"r2")->IsChecked());
  EXPECT_FALSE(Find(L"r1")->IsChecked());
}

TEST_F(TextCtrlsTest, LegendTogglesOnClickAndMutesWhileOff) {
  CreateHostWithChildren(
      L"<qv_legend name='g' pos='0,0' color='#FF0000' mark='line' text='MA5'/>"
      L"<qv_legend name='h' pos='0,30' checked='0' text='MA10'/>");
  CQVLegend* g = Find<CQVLegend>(L"g");
  ASSERT_NE(g, nullptr);
  EXPECT_TRUE(g->IsLegendChecked());
  EXPECT_EQ(g->GetMarkShape(), CQVLegend::kMarkLine);
  EXPECT_EQ(g->GetMarkPaintColor(), RGBA(0xFF, 0, 0, 0xFF));
  EXPECT_FALSE(Find<CQVLegend>(L"h")->IsLegendChecked());
  std::vector<bool> seen;
  g->subscribeEvent(EVT_QV_LEGEND_CHANGED, [&seen](SOUI::EventArgs* e) {
    seen.push_back(static_cast<EventQVLegendChanged*>(e)->checked);
    return true;
  });
  Layout();
  EXPECT_GT(g->GetWindowRect().Width(), g->GetWindowRect().Height());
  gen().MoveMouseToCenterOf(g);
  gen().ClickLeftButton();
  EXPECT_FALSE(g->IsLegendChecked());
  EXPECT_NE(g->GetMarkPaintColor(), RGBA(0xFF, 0, 0, 0xFF));
  // Space on the focused entry toggles it back.
  gen().PressAndReleaseKey(VK_SPACE);
  EXPECT_TRUE(g->IsLegendChecked());
  g->SetLegendChecked(true);  // unchanged: no event
  EXPECT_EQ(seen, (std::vector<bool>{false, true}));
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
