#include "state/progress.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "library_test_base.h"
#include "testing/recording_render.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::CRect;

class ProgressTest : public LibraryTestBase {
 protected:
  CQVProgress* Make(const wchar_t* attrs) {
    CreateHostWithChildren((SOUI::SStringW(L"<qv_progress name=\"p\" pos=\"0,0,@200,@20\" ") + attrs + L"/>").c_str(),
                           400, 300);
    return Find<CQVProgress>(L"p");
  }
  std::string Paint(CQVProgress* p) {
    SOUI::RecordingRenderTarget rt(400, 300);
    p->RedrawRegion(&rt, p->GetWindowRect());
    return rt.Dump();
  }
};

struct ClampRow {
  const char* name;
  const wchar_t* attrs;
  int min, max, value, percent;
};

class ProgressClampTest : public ProgressTest, public ::testing::WithParamInterface<ClampRow> {};

TEST_P(ProgressClampTest, ValuesAreClampedIntoTheRange) {
  const ClampRow& r = GetParam();
  CQVProgress* p = Make(r.attrs);
  ASSERT_TRUE(p);
  EXPECT_EQ(p->GetMin(), r.min);
  EXPECT_EQ(p->GetMax(), r.max);
  EXPECT_EQ(p->GetValue(), r.value);
  EXPECT_EQ(p->GetPercent(), r.percent);
}

INSTANTIATE_TEST_SUITE_P(
    Rows, ProgressClampTest,
    ::testing::Values(ClampRow{"in_range", L"value=\"42\"", 0, 100, 42, 42},
                      ClampRow{"above", L"value=\"250\"", 0, 100, 100, 100},
                      ClampRow{"below", L"value=\"-5\"", 0, 100, 0, 0},
                      ClampRow{"hex", L"max=\"0x200\" value=\"0x100\"", 0, 512, 256, 50},
                      ClampRow{"max_below_min", L"min=\"50\" max=\"10\" value=\"70\"", 50, 50, 50, 0},
                      ClampRow{"range_shrinks_value", L"value=\"90\" max=\"60\"", 0, 60, 60, 100},
                      ClampRow{"extremes", L"min=\"-2147483648\" max=\"2147483647\" value=\"0\"", INT_MIN, INT_MAX, 0,
                               50},
                      ClampRow{"garbage", L"value=\"lots\"", 0, 100, 0, 0}),
    [](const ::testing::TestParamInfo<ClampRow>& info) { return std::string(info.param.name); });

TEST_F(ProgressTest, DeterminateFillAndText) {
  CQVProgress* p = Make(L"value=\"25\" showtext=\"1\"");
  // "100%" is 4 characters of 6 px: the track stops 24 + 8 px short.
  EXPECT_EQ(p->GetTrackRect(), CRect(0, 8, 168, 12));
  EXPECT_EQ(p->GetFilledRect(), CRect(0, 8, 42, 12));
  const std::string dump = Paint(p);
  EXPECT_NE(dump.find("FillRoundRect [0,8,168,12] r=(2,2) brush=#E5E6EBFF"), std::string::npos) << dump;
  EXPECT_NE(dump.find("FillRoundRect [0,8,42,12] r=(2,2) brush=#2F6BFFFF"), std::string::npos) << dump;
  EXPECT_NE(dump.find("DrawText \"25%\""), std::string::npos) << dump;
  // Styles by code: thicker, other colours; an unknown one changes nothing.
  p->SetAttribute(L"qvstyle", L"PG4", FALSE);
  EXPECT_NE(Paint(p).find("brush=#F23B3BFF"), std::string::npos);
  p->SetAttribute(L"qvstyle", L"PG2", FALSE);
  EXPECT_EQ(p->GetTrackRect().Height(), 8);
  p->SetAttribute(L"qvstyle", L"XX", FALSE);
  EXPECT_EQ(p->GetQVStyle(), L"PG2");
  EXPECT_TRUE(LogContains(L"qvstyle=\"XX\""));
}

TEST_F(ProgressTest, IndeterminateSweepsOnlyWhileSeen) {
  CQVProgress* p = Make(L"indeterminate=\"1\"");
  // Nothing ticks before the bar was first painted.
  EXPECT_FALSE(p->IsAnimating());
  host()->Render();
  EXPECT_TRUE(p->IsAnimating());
  EXPECT_EQ(host()->GetTimeline().HandlerCount(), 1u);
  const CRect first = p->GetFilledRect();
  Advance(400);
  EXPECT_NE(p->GetFilledRect(), first);
  EXPECT_LE(p->GetFilledRect().Width(), 60);
  // Hidden host: the next frame lets go; a paint after showing resumes.
  host()->ShowWindow(SOUI::SW_HIDE);
  Advance(50);
  EXPECT_FALSE(p->IsAnimating());
  host()->ShowWindow(SOUI::SW_SHOW);
  host()->Render();
  EXPECT_TRUE(p->IsAnimating());
  // Back to a value: nothing ticks.
  p->SetAttribute(L"indeterminate", L"0", FALSE);
  EXPECT_FALSE(p->IsAnimating());
  EXPECT_EQ(host()->GetTimeline().HandlerCount(), 0u);
}

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
