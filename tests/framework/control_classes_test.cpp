#include "framework/control_classes.h"

#include <cwchar>

#include <gtest/gtest.h>

#include <memory>

#include "soui/sapp.h"
#include "display/buttons.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {
namespace {

using SOUI::SWindow;

struct ClassRow {
  const wchar_t* tag;
  std::vector<const wchar_t*> chain;  // every tag IsClass must accept
};

class ControlClassesTest : public ::testing::TestWithParam<ClassRow> {
 protected:
  SOUI::SApplication app_;
};

TEST_P(ControlClassesTest, TagCreatesItsClassWithTheRightIdentity) {
  const ClassRow& row = GetParam();
  RegisterQVStandardCtrls(app_.GetFactory());
  std::unique_ptr<SWindow> w(app_.GetFactory().CreateWindowByName(row.tag));
  ASSERT_NE(w, nullptr) << "not registered";
  EXPECT_STREQ(w->GetObjectClass(), row.tag);
  for (const wchar_t* t : row.chain) EXPECT_TRUE(w->IsClass(t)) << SOUI::SStringW(t).ToUtf8();
  // Not a sibling class, nor the tag in another case.
  for (const wchar_t* other : {L"qv_button", L"qv_icon_button", L"qv_switch_button", L"text"}) {
    if (std::wcscmp(other, row.tag) != 0) {
      EXPECT_FALSE(w->IsClass(other)) << SOUI::SStringW(other).ToUtf8();
    }
  }
  EXPECT_FALSE(w->IsClass(SOUI::SStringW(row.tag).MakeUpper()));
}

TEST(ControlClassNames, StaticNamesGiveTagAndBaseTag) {
  EXPECT_STREQ(CQVButton::GetClassName(), L"qv_button");
  EXPECT_STREQ(CQVButton::BaseClassName(), L"button");
  EXPECT_STREQ(QVIconButton::GetClassName(), L"qv_icon_button");
  EXPECT_STREQ(QVIconButton::BaseClassName(), L"button");
  EXPECT_STREQ(QVSwitchButton::GetClassName(), L"qv_switch_button");
  EXPECT_STREQ(QVSwitchButton::BaseClassName(), L"button");
}

INSTANTIATE_TEST_SUITE_P(
    Buttons, ControlClassesTest,
    ::testing::Values(ClassRow{L"qv_button", {L"qv_button", L"button", L"window", L"object"}},
                      ClassRow{L"qv_icon_button", {L"qv_icon_button", L"button", L"window"}},
                      ClassRow{L"qv_switch_button", {L"qv_switch_button", L"button", L"window"}}),
    [](const ::testing::TestParamInfo<ClassRow>& info) {
      return SOUI::SStringW(info.param.tag).ToUtf8();
    });

INSTANTIATE_TEST_SUITE_P(
    Tabs, ControlClassesTest,
    ::testing::Values(ClassRow{L"qv_itembase", {L"qv_itembase", L"window", L"object"}},
                      ClassRow{L"qv_tabctrlbase", {L"qv_tabctrlbase", L"window"}},
                      ClassRow{L"qv_tabctrl", {L"qv_tabctrl", L"window"}}),
    [](const ::testing::TestParamInfo<ClassRow>& info) {
      return SOUI::SStringW(info.param.tag).ToUtf8();
    });

}  // namespace
}  // namespace QVStandardCtrls
