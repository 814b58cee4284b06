#include "state/combobox.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "library_test_base.h"
#include "soui/dropdown.h"
#include "soui/edit.h"
#include "soui/scrollview.h"
#include "testing/recording_render.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;

const wchar_t kOrderTypes[] =
    L"<items><item text=\"Limit\"/><item text=\"Market\"/><item text=\"Stop\"/>"
    L"<item text=\"Stop limit\"/><item text=\"Trailing stop\"/></items>";

class QVComboBoxTest : public LibraryTestBase {
 protected:
  // An order-type combo inside a scrolling page taller than its view, and
  // a button to take the focus elsewhere.
  CQVComboBox* Make(const wchar_t* attrs = L"") {
    const SStringW xml = SStringW(L"<scrollview name=\"page\" pos=\"0,0,-0,-0\" viewSize=\"-1,900\">"
                                  L"<qv_combobox name=\"c\" pos=\"20,40,@160,@24\" curSel=\"0\" ") +
                         attrs + L">" + kOrderTypes +
                         L"</qv_combobox><button name=\"other\" pos=\"220,40,@60,@24\" focusable=\"1\"/></scrollview>";
    CreateHostWithChildren(xml.c_str(), 400, 300);
    Layout();
    combo_ = Find<CQVComboBox>(L"c");
    return combo_;
  }
  SOUI::SScrollView* Page() { return Find<SOUI::SScrollView>(L"page"); }
  CQVComboBox* combo_ = nullptr;
};

TEST_F(QVComboBoxTest, WheelStepsOnlyWhileFocusedOtherwiseThePageScrolls) {
  ASSERT_TRUE(Make());
  // A passing wheel: the page scrolls, the order type stays.
  gen().MoveMouseToCenterOf(combo_);
  gen().MouseWheel(-120);
  EXPECT_EQ(combo_->GetCurSel(), 0);
  EXPECT_GT(Page()->GetViewOrigin().y, 0);
  EXPECT_EQ(CountEvents(SOUI::EVT_CB_SELCHANGE), 0);
  // Focused (by a click that opens and a second one that closes the list):
  // each notch steps one item and raises the change.
  Page()->SetViewOrigin(SOUI::CPoint(0, 0));
  Layout();
  combo_->SetFocus();
  gen().MoveMouseToCenterOf(combo_);
  const int y = Page()->GetViewOrigin().y;
  gen().MouseWheel(-120);
  gen().MouseWheel(-120);
  EXPECT_EQ(combo_->GetCurSel(), 2);
  EXPECT_EQ(Page()->GetViewOrigin().y, y);
  gen().MouseWheel(120);
  EXPECT_EQ(combo_->GetCurSel(), 1);
  EXPECT_EQ(CountEvents(SOUI::EVT_CB_SELCHANGE), 3);
  // Focus elsewhere: back to scrolling.
  Find(L"other")->SetFocus();
  gen().MouseWheel(-120);
  EXPECT_EQ(combo_->GetCurSel(), 1);
}

TEST_F(QVComboBoxTest, WheelAlwaysStepsWithoutFocusAndStopsAtTheEnds) {
  ASSERT_TRUE(Make(L"wheelalways=\"1\""));
  gen().MoveMouseToCenterOf(combo_);
  for (int i = 0; i < 8; ++i) gen().MouseWheel(-120);
  EXPECT_EQ(combo_->GetCurSel(), 4);
  EXPECT_EQ(Page()->GetViewOrigin().y, 0);
  EXPECT_EQ(CountEvents(SOUI::EVT_CB_SELCHANGE), 4);
  gen().MouseWheel(120);
  EXPECT_EQ(combo_->GetWindowText(), L"Stop limit");
}

TEST_F(QVComboBoxTest, KeyboardSelectsOnTheClosedBoxAndInTheList) {
  ASSERT_TRUE(Make());
  combo_->SetFocus();
  gen().PressAndReleaseKey(VK_DOWN);
  EXPECT_EQ(combo_->GetWindowText(), L"Market");
  gen().PressAndReleaseKey(VK_END);
  EXPECT_EQ(combo_->GetWindowText(), L"Trailing stop");
  gen().PressAndReleaseKey(VK_HOME);
  EXPECT_EQ(combo_->GetWindowText(), L"Limit");
  gen().Char(L's');
  EXPECT_EQ(combo_->GetWindowText(), L"Stop");
  EXPECT_EQ(CountEvents(SOUI::EVT_CB_SELCHANGE), 4);
  // Open with F4, move in the list, pick with Enter.
  gen().PressAndReleaseKey(VK_F4);
  ASSERT_TRUE(combo_->IsDropdown());
  gen().PressAndReleaseKey(VK_DOWN);
  gen().PressAndReleaseKey(VK_RETURN);
  EXPECT_FALSE(combo_->IsDropdown());
  EXPECT_EQ(combo_->GetWindowText(), L"Stop limit");
}

TEST_F(QVComboBoxTest, MousePicksFromTheThemedList) {
  ASSERT_TRUE(Make());
  gen().MoveMouseToCenterOf(combo_);
  gen().ClickLeftButton();
  ASSERT_TRUE(combo_->IsDropdown());
  SOUI::SComboListBox* list = combo_->GetListBox();
  ASSERT_TRUE(list);
  // The list takes the theme's list colours: the selected row is list_sel.
  combo_->GetDropDownWnd()->UpdateLayout();
  SOUI::RecordingRenderTarget rt(400, 400);
  list->RedrawRegion(&rt, list->GetWindowRect());
  EXPECT_TRUE(rt.Contains("#E8F0FFFF")) << rt.Dump();
  EXPECT_TRUE(rt.Contains("FillSolidRect [0,0,160,")) << rt.Dump();
  // A click on the third row picks it and closes the list.
  SOUI::test::EventGenerator list_gen(combo_->GetDropDownWnd());
  const SOUI::CRect row = list->GetItemRect(2);
  list_gen.MoveMouseTo(row.CenterPoint());
  list_gen.ClickLeftButton();
  EXPECT_FALSE(combo_->IsDropdown());
  EXPECT_EQ(combo_->GetWindowText(), L"Stop");
  EXPECT_EQ(CountEvents(SOUI::EVT_CB_SELCHANGE), 1);
}

TEST_F(QVComboBoxTest, EditStyleCodesFrameTheBoxAndItsEditPart) {
  ASSERT_TRUE(Make(L"qvstyle=\"NI3\" dropDown=\"0\""));
  // Applied at once, after pos: the style's 30dp height wins.
  EXPECT_EQ(combo_->GetWindowRect().Height(), 30);
  EXPECT_EQ(combo_->GetStyle().GetFont(0).Source(), L"size:12dp");
  ASSERT_TRUE(combo_->GetEdit());
  // Unfocused: the normal frame; focused in its edit: the accent frame.
  SOUI::RecordingRenderTarget rt(400, 300);
  combo_->RedrawRegion(&rt, combo_->GetWindowRect());
  EXPECT_FALSE(rt.Contains("#2F6BFFFF")) << rt.Dump();
  combo_->GetEdit()->SetFocus();
  EXPECT_TRUE(combo_->HasFocusInside());
  rt.Clear();
  combo_->RedrawRegion(&rt, combo_->GetWindowRect());
  EXPECT_TRUE(rt.Contains("#2F6BFFFF")) << rt.Dump();
  // An unknown code: logged, the look stays.
  combo_->SetAttribute(L"qvstyle", L"HR1", FALSE);
  EXPECT_EQ(combo_->GetQVStyle(), L"NI3");
  EXPECT_TRUE(LogContains(L"qvstyle=\"HR1\""));
  // The page cannot restyle it through toolkit looks.
  combo_->SetAttribute(L"skin", L"skin_com_btn_bg_buy", FALSE);
  EXPECT_EQ(combo_->GetBkgndSkin(), app_->GetResProvider().GetSkin(L"skin_edit_std_input_normal", 100).get());
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
