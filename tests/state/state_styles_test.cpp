// The state controls' style records name theme colours: every one must exist
// in both variants of the default theme, or a control paints nothing there.
#include <gtest/gtest.h>

#include <vector>

#include "framework/style_tables.h"
#include "library_test_base.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;

std::vector<SStringW> AllStateColors() {
  std::vector<SStringW> out;
  for (const auto& kv : QVLoadingBarStyles()) {
    const auto& r = *kv.second;
    out.insert(out.end(), {r.line_color, r.track_color, r.remind_bkgnd, r.fail_bkgnd, r.text_color, r.link_color});
  }
  for (const auto& kv : QVPageLoadingCtrlStyles()) {
    const auto& r = *kv.second;
    out.insert(out.end(), {r.bkgnd, r.spinner_color, r.picture_color, r.picture_fill, r.fail_color, r.text_color});
  }
  for (const auto& kv : QVPictureUploadCtrlStyles()) {
    const auto& r = *kv.second;
    out.insert(out.end(), {r.bkgnd, r.border, r.border_hover, r.text_color, r.accent, r.track, r.error});
  }
  return out;
}

class StateStylesTest : public LibraryTestBase, public ::testing::WithParamInterface<bool> {};

TEST_P(StateStylesTest, EveryColourResolvesInTheTheme) {
  if (GetParam()) {
    ASSERT_TRUE(app_->GetResProvider().LoadUiDefFile(
        SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/dark/uires.xml")));
  }
  const std::vector<SStringW> colors = AllStateColors();
  ASSERT_EQ(colors.size(), 2u * 6 + 2u * 6 + 2u * 7);
  EXPECT_EQ(ResolveQVStyleColor(L"@color\\style_qv_state\\nope"), CR_INVALID);
  for (const SStringW& c : colors) EXPECT_NE(ResolveQVStyleColor(c), CR_INVALID) << c.ToUtf8();
  // The page-loading records name real button codes for their refresh button.
  for (const auto& kv : QVPageLoadingCtrlStyles()) EXPECT_TRUE(FindQVButtonStyle(kv.second->button_style));
}

INSTANTIATE_TEST_SUITE_P(Themes, StateStylesTest, ::testing::Bool(),
                         [](const ::testing::TestParamInfo<bool>& info) { return info.param ? "dark" : "light"; });

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
