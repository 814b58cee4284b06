// check, radio, link, progress and the wrapping multi-line static, driven
// through the real input path; a picture of them through cairo.
#include <gtest/gtest.h>

#include "backends/cairo_render.h"
#include "soui/checkctrls.h"
#include "soui/qvrichtext.h"
#include "testing/png_compare.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

class CheckCtrlsTest : public test::UiTestBase {};

TEST_F(CheckCtrlsTest, CheckTogglesOnClickAndSpaceWithEightStateIndex) {
  CreateHostWithChildren(L"<check name='c' pos='10,10,@120,@20'>Remember</check>");
  Layout();
  auto* c = Find<SCheckBox>(L"c");
  ASSERT_NE(c, nullptr);
  EXPECT_EQ(c->GetDrawState(), 0);

  // Hover, then press: 1, 2 while unchecked.
  gen().MoveMouseToCenterOf(c);
  EXPECT_EQ(c->GetDrawState(), 1);
  gen().PressLeftButton();
  EXPECT_EQ(c->GetDrawState(), 2);
  // Release inside: checked and hovered, one command.
  gen().ReleaseLeftButton();
  EXPECT_TRUE(c->IsChecked());
  EXPECT_EQ(c->GetDrawState(), 5);
  EXPECT_EQ(CountEvents(EVT_CMD), 1);

  // A press released outside does not toggle.
  gen().PressLeftButton();
  gen().MoveMouseTo(300, 200);
  gen().ReleaseLeftButton();
  EXPECT_TRUE(c->IsChecked());
  EXPECT_EQ(c->GetDrawState(), 4);

  // Space toggles once per key press, the char is swallowed.
  LRESULT r = 0;
  c->ProcessSwndMessage(WM_KEYDOWN, VK_SPACE, 0, r);
  c->ProcessSwndMessage(WM_CHAR, L' ', 0, r);
  EXPECT_FALSE(c->IsChecked());
  EXPECT_EQ(CountEvents(EVT_CMD), 2);

  // Disabled: state 3 or 7, clicks ignored.
  c->SetAttribute(L"checked", L"1", FALSE);
  c->SetAttribute(L"enable", L"0", FALSE);
  EXPECT_EQ(c->GetDrawState(), 7);
  gen().MoveMouseToCenterOf(c);
  gen().ClickLeftButton();
  EXPECT_TRUE(c->IsChecked());
}

TEST_F(CheckCtrlsTest, RadiosAreExclusivePerParentAndGroup) {
  CreateHostWithChildren(
      L"<window name='p1' pos='0,0,200,100'>"
      L"  <radio name='a' pos='0,0,@80,@20' checked='1'>A</radio>"
      L"  <radio name='b' pos='0,30,@80,@20'>B</radio>"
      L"  <radio name='g1' pos='100,0,@80,@20' group='other' checked='1'>G1</radio>"
      L"  <radio name='g2' pos='100,30,@80,@20' group='other'>G2</radio>"
      L"</window>"
      L"<window name='p2' pos='0,120,200,200'>"
      L"  <radio name='c' pos='0,0,@80,@20' checked='1'>C</radio>"
      L"</window>");
  Layout();
  auto* a = Find<SRadioBox>(L"a");
  auto* b = Find<SRadioBox>(L"b");
  auto* g1 = Find<SRadioBox>(L"g1");
  auto* g2 = Find<SRadioBox>(L"g2");
  auto* c = Find<SRadioBox>(L"c");
  ASSERT_TRUE(a && b && g1 && g2 && c);
  // Clicking b moves the check within the ungrouped radios of p1 only.
  gen().MoveMouseToCenterOf(b);
  gen().ClickLeftButton();
  EXPECT_TRUE(b->IsChecked());
  EXPECT_FALSE(a->IsChecked());
  EXPECT_TRUE(g1->IsChecked());
  EXPECT_TRUE(c->IsChecked());
  // Clicking a checked radio keeps it checked.
  gen().ClickLeftButton();
  EXPECT_TRUE(b->IsChecked());
  // The named group is exclusive on its own.
  gen().MoveMouseToCenterOf(g2);
  gen().ClickLeftButton();
  EXPECT_TRUE(g2->IsChecked());
  EXPECT_FALSE(g1->IsChecked());
  EXPECT_TRUE(b->IsChecked());
}

TEST_F(CheckCtrlsTest, LinkClickRaisesCommandAndWantsHandCursor) {
  CreateHostWithChildren(L"<link name='l' pos='10,10' href='https://example.com/q'>Open quote</link>");
  Layout();
  auto* l = Find<SLink>(L"l");
  ASSERT_NE(l, nullptr);
  EXPECT_EQ(l->GetHref(), SStringW(L"https://example.com/q"));
  EXPECT_EQ(l->GetCursorWish(), SStringW(L"hand"));
  gen().MoveMouseToCenterOf(l);
  gen().ClickLeftButton();
  ASSERT_EQ(CountEvents(EVT_CMD), 1);
  EXPECT_EQ(events().back().nameFrom, SStringW(L"l"));
}

struct ProgressCase {
  const char* name;
  const wchar_t* attrs;
  int value, min, max, filled_of_200;
};

class ProgressTest : public test::UiTestBase, public ::testing::WithParamInterface<ProgressCase> {};

TEST_P(ProgressTest, ClampsValueIntoRange) {
  SStringW xml = L"<progress name='p' pos='0,0,@200,@10' ";
  xml += GetParam().attrs;
  xml += L"/>";
  CreateHostWithChildren(xml);
  auto* p = Find<SProgress>(L"p");
  ASSERT_NE(p, nullptr);
  EXPECT_EQ(p->GetValue(), GetParam().value);
  EXPECT_EQ(p->GetMin(), GetParam().min);
  EXPECT_EQ(p->GetMax(), GetParam().max);
  EXPECT_EQ(p->FilledWidth(200), GetParam().filled_of_200);
}

INSTANTIATE_TEST_SUITE_P(
    Values, ProgressTest,
    ::testing::Values(ProgressCase{"InRange", L"min='0' max='100' value='25'", 25, 0, 100, 50},
                      ProgressCase{"AboveMax", L"max='50' value='80'", 50, 0, 50, 200},
                      ProgressCase{"BelowMin", L"min='10' max='20' value='-5'", 10, 10, 20, 0},
                      ProgressCase{"ValueBeforeNarrowerRange", L"value='90' max='60'", 60, 0, 60, 200},
                      ProgressCase{"MaxBelowMin", L"min='30' max='10' value='5'", 30, 30, 30, 0}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(CheckCtrlsTest, MultiLineStaticWrapsWithLineSpacing) {
  CreateHostWithChildren(
      L"<staticmultilines name='s' pos='0,0,@90,@-1' font='size:14' lineSpacing='4'>"
      L"上证指数今日收涨百分之一点二五 and more words here</staticmultilines>"
      L"<window name='below' pos='0,[0,@10,@10'/>");
  Layout();
  auto* s = Find<SStaticMultiLines>(L"s");
  ASSERT_NE(s, nullptr);
  const int one = s->GetDesiredHeight(-1);
  const int wrapped = s->GetDesiredHeight(90);
  // Several lines, each step one line plus the spacing.
  EXPECT_GE(wrapped, 3 * one);
  EXPECT_EQ(s->GetWindowRect().Height(), wrapped);
  EXPECT_EQ(Find(L"below")->GetWindowRect().top, wrapped);
}

TEST_F(CheckCtrlsTest, PaintsControlsThroughCairo) {
  CreateHost(
      L"<SOUI width='240' height='110'><root colorBkgnd='#FFFFFF' font='size:13' colorText='#333333'>"
      L"<check pos='8,8,@100,@20' checked='1'>Checked</check>"
      L"<check pos='120,8,@100,@20'>Unchecked</check>"
      L"<radio pos='8,34,@100,@20' checked='1'>Radio on</radio>"
      L"<radio pos='120,34,@100,@20'>Radio off</radio>"
      L"<link pos='8,60' colorText='#4F9BFF'>A link</link>"
      L"<progress pos='8,84,-8,@16' value='40' colorBkgnd='#E0E0E0' colorPos='#4F9BFF' showPercent='1'/>"
      L"</root></SOUI>");
  ASSERT_NE(host()->Render(), nullptr);
  auto* frame = dynamic_cast<CairoRenderTarget*>(host()->GetFrame());
  ASSERT_NE(frame, nullptr);
  EXPECT_TRUE(MatchesReferencePng(*frame, QV_SOURCE_DIR "/tests/data/check_ctrls.png", 64, 0.03));
}

}  // namespace
}  // namespace SOUI
