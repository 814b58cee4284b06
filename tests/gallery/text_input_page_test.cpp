// The gallery's text and input page driven as a user would: every control
// answers the mouse or the keyboard, and the page's status line says what
// it heard.
#include <gtest/gtest.h>

#include "soui/checkctrls.h"
#include "soui/combobox.h"
#include "soui/edit.h"
#include "gallery_page_test_base.h"

namespace {

using SOUI::SStringW;

class TextInputPageTest : public gallery::GalleryPageTest {
 protected:
  SStringW Status() { return Find(L"demo_status")->GetWindowText(); }
};

TEST_F(TextInputPageTest, MouseAndKeyboardReachEveryKindOfControl) {
  // A number edit takes digits only; Tab goes on to the next edit.
  Click(L"demo_quantity");
  gen().Type(L"12a3");
  EXPECT_EQ(Find(L"demo_quantity")->GetWindowText(), SStringW(L"123"));
  EXPECT_EQ(Status(), SStringW(L"demo_quantity: 3 characters"));
  gen().PressAndReleaseKey(VK_TAB);
  EXPECT_TRUE(Find(L"demo_wrap_edit")->IsFocused());

  // The combo box opens its list and picks with the keyboard.
  Click(L"demo_order_type");
  auto* combo = Find<SOUI::SComboBox>(L"demo_order_type");
  ASSERT_TRUE(combo->IsDropdown());
  gen().PressAndReleaseKey(VK_DOWN);
  gen().PressAndReleaseKey(VK_RETURN);
  EXPECT_FALSE(combo->IsDropdown());
  EXPECT_EQ(Status(), SStringW(L"picked Market order"));

  // Radios are exclusive; a check box toggles by click and by Space.
  Click(L"demo_radio_gtc");
  EXPECT_TRUE(Find(L"demo_radio_gtc")->IsChecked());
  EXPECT_FALSE(Find(L"demo_radio_day")->IsChecked());
  EXPECT_EQ(Status(), SStringW(L"valid till cancelled"));
  Click(L"demo_check_sound");
  EXPECT_EQ(Status(), SStringW(L"sound on fills: on"));
  gen().PressAndReleaseKey(VK_SPACE);
  EXPECT_FALSE(Find(L"demo_check_sound")->IsChecked());

  // The link and the progress step button.
  Click(L"demo_link");
  EXPECT_EQ(Status(), SStringW(L"link to https://example.com/fees"));
  Click(L"demo_progress_step");
  EXPECT_EQ(Find<SOUI::SProgress>(L"demo_progress")->GetValue(), 72);
  EXPECT_EQ(Status(), SStringW(L"progress 72%"));
}

}  // namespace
