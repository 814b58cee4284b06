#include "edits/qv_editcom.h"

#include <gtest/gtest.h>

#include "library_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CRect;
using SOUI::SStringW;

class QVEditComTest : public test::LibraryTestBase {};

TEST_F(QVEditComTest, ClassesKeepTheirAsymmetricBases) {
  EXPECT_STREQ(CQVEditCom::BaseClassName(), L"window");
  EXPECT_STREQ(CQVEditMultiCom::BaseClassName(), L"qv_editcom");
  EXPECT_STREQ(CQVEditMulti::BaseClassName(), L"qv_editmcom");
  CQVEditMulti m;
  EXPECT_TRUE(m.IsClass(L"qv_editcom"));
  EXPECT_FALSE(m.IsClass(L"qv_edit"));
}

TEST_F(QVEditComTest, FrameTakesTheStyleAndLaysOutIconEditUnitAndClear) {
  CreateHostWithChildren(
      L"<qv_editcom name=\"c\" pos=\"0,0\" width=\"200\" qvstyle=\"NIC2\" icon=\"skin_toast_icon_tip\" unit=\"CNY\""
      L" clearbtn=\"1\" filter=\"number\" text=\"12\"/>");
  Layout();
  auto* c = Find<CQVEditCom>(L"c");
  ASSERT_NE(c, nullptr);
  CQVEdit* e = c->GetEdit();
  ASSERT_NE(e, nullptr);
  EXPECT_EQ(c->GetWindowRect().Height(), 24);
  EXPECT_EQ(c->GetAttribute(L"skin"), L"skin_edit_std_input_normal");
  EXPECT_EQ(e->GetWindowText(), L"12");
  // Left to right inside the 4dp padding: icon, edit, unit, clear button.
  const CRect icon = Find(L"qv_editcom_icon")->GetWindowRect();
  const CRect unit = Find(L"qv_editcom_unit")->GetWindowRect();
  const CRect clear = c->GetClearButton()->GetWindowRect();
  EXPECT_EQ(icon, CRect(4, 2, 24, 22));  // the icon's own size, centred
  EXPECT_EQ(e->GetWindowRect().left, 28);
  EXPECT_LT(e->GetWindowRect().right, unit.left);
  EXPECT_LT(unit.right, clear.left);
  EXPECT_EQ(clear.right, 196);
}

TEST_F(QVEditComTest, FilterAndErrorEventBelongToTheComposite) {
  CreateHostWithChildren(L"<qv_editcom name=\"c\" pos=\"0,0,@200,@24\" filter=\"integer\" clearbtn=\"1\"/>");
  auto* c = Find<CQVEditCom>(L"c");
  c->GetEdit()->SetFocus();
  // The frame shows the focus of its edit.
  EXPECT_EQ(c->GetStateIndex(), 2);
  gen().Type(L"-1a2");
  EXPECT_EQ(c->GetWindowText(), L"-12");
  // One error, raised by the composite (the inner edit's stops there).
  ASSERT_EQ(CountEvents(EVT_QVEDIT_INPUT_ERROR), 1);
  for (const auto& ev : events()) {
    if (ev.id == EVT_QVEDIT_INPUT_ERROR) {
      EXPECT_EQ(ev.nameFrom, L"c");
    }
  }
  // A host filter replaces the built-in one.
  c->SetFilter([](const SStringW&, SStringW& inserted, int, int) { return inserted != L"7"; });
  gen().Type(L"37");
  EXPECT_EQ(c->GetWindowText(), L"-127");
  // The clear button empties the text as one undo step and hides itself.
  Layout();
  ASSERT_TRUE(c->GetClearButton()->IsVisible());
  gen().MoveMouseToCenterOf(c->GetClearButton());
  gen().ClickLeftButton();
  EXPECT_EQ(c->GetWindowText(), L"");
  EXPECT_FALSE(c->GetClearButton()->IsVisible());
  EXPECT_TRUE(c->GetEdit()->IsFocused());
  c->GetEdit()->Undo();
  EXPECT_EQ(c->GetWindowText(), L"-127");
}

TEST_F(QVEditComTest, MultiLineEditTakesReturnAndCountsCharacters) {
  CreateHostWithChildren(L"<qv_editm name=\"m\" pos=\"0,0,@200,@80\" qvstyle=\"NIMC\" maxBuf=\"50\"/>");
  auto* m = Find<CQVEditMulti>(L"m");
  ASSERT_NE(m, nullptr);
  m->GetEdit()->SetFocus();
  gen().Type(L"ab\rc");
  EXPECT_EQ(m->GetWindowText(), L"ab\nc");
  EXPECT_EQ(Find(L"qv_editcom_count")->GetWindowText(), L"4/50");
  EXPECT_EQ(m->GetAttribute(L"skin"), L"skin_edit_std_input_normal");
  // A single-line code is not a multi-line one.
  m->SetAttribute(L"qvstyle", L"NIC1", FALSE);
  EXPECT_EQ(m->GetAttribute(L"skin"), L"skin_edit_std_input_normal");
  Layout();
  EXPECT_EQ(m->GetWindowRect().Height(), 80);
}

}  // namespace
}  // namespace QVStandardCtrls
