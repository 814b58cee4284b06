#include "framework/control_classes.h"

#include <cwchar>

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "soui/sapp.h"
#include "display/buttons.h"
#include "display/market_values.h"
#include "display/reddots.h"
#include "display/tags.h"
#include "tabs/tab_page_host.h"
#include "tabs/tab_variants.h"
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

// The library's published class table: each class's tag and the tag of its
// base. The chain of bases is not symmetric on purpose (the third-level tab
// stands on the second, the second on the primary).
struct TableRow {
  const wchar_t* tag;
  const wchar_t* base;
  const wchar_t* (*class_name)();
  const wchar_t* (*base_class_name)();
};
#define QV_ROW(Class, tag, base) TableRow{tag, base, &Class::GetClassName, &Class::BaseClassName}

TEST(ControlClassTable, StaticNamesAndIsClassFollowTheTable) {
  const TableRow kTable[] = {
      QV_ROW(CQVButton, L"qv_button", L"button"),
      QV_ROW(QVIconButton, L"qv_icon_button", L"button"),
      QV_ROW(QVSwitchButton, L"qv_switch_button", L"button"),
      QV_ROW(CQVRedGreenStatic, L"qv_redgreen", L"text"),
      QV_ROW(CQVRiseFallPrice, L"qv_risefallprice", L"window"),
      QV_ROW(CQVTag, L"qv_tag", L"window"),
      QV_ROW(CQVMarketTag, L"qv_markettag", L"qv_tag"),
      QV_ROW(CQVRedDot, L"qv_reddot", L"window"),
      QV_ROW(CQVNUmberRedDot, L"qv_number_reddot", L"qv_reddot"),
      QV_ROW(CQVLableRedDot, L"qv_lable_reddot", L"qv_reddot"),
      QV_ROW(CQVItemBase, L"qv_itembase", L"window"),
      QV_ROW(CQVTabCtrl, L"qv_tabctrl", L"window"),
      QV_ROW(CQVTabCtrlBase, L"qv_tabctrlbase", L"window"),
      QV_ROW(CQVPrimaryTab, L"qv_primarytab", L"qv_tabctrlbase"),
      QV_ROW(CQVSecondaryTab, L"qv_secondarytab", L"qv_primarytab"),
      QV_ROW(CQVThirdTab, L"qv_thirdtab", L"qv_secondarytab"),
      QV_ROW(CQVSegmentTab, L"qv_segmenttab", L"qv_tabctrlbase"),
      QV_ROW(CQVFilterTab, L"qv_filtertab", L"qv_tabctrlbase"),
      QV_ROW(CQVTabView, L"qv_tabview", L"qv_tabctrlbase"),
  };
  SOUI::SApplication app;
  RegisterQVStandardCtrls(app.GetFactory());
  for (const TableRow& row : kTable) {
    const std::string tag = SOUI::SStringW(row.tag).ToUtf8();
    EXPECT_STREQ(row.class_name(), row.tag) << tag;
    EXPECT_STREQ(row.base_class_name(), row.base) << tag;
    std::unique_ptr<SWindow> w(app.GetFactory().CreateWindowByName(row.tag));
    ASSERT_NE(w, nullptr) << tag << " not registered";
    // IsClass answers for the whole chain of bases, up to the window.
    for (const TableRow* r = &row; r;) {
      EXPECT_TRUE(w->IsClass(r->tag)) << tag << " is a " << SOUI::SStringW(r->tag).ToUtf8();
      const wchar_t* base = r->base;
      EXPECT_TRUE(w->IsClass(base)) << tag << " is a " << SOUI::SStringW(base).ToUtf8();
      r = nullptr;
      for (const TableRow& up : kTable) {
        if (std::wcscmp(up.tag, base) == 0) r = &up;
      }
    }
    EXPECT_TRUE(w->IsClass(L"window")) << tag;
  }
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
