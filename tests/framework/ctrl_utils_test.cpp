#include "framework/ctrl_utils.h"

#include <gtest/gtest.h>

#include "qvhost/qvlog.h"
#include "testing/ui_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CSize;

class MeasureTextTest : public SOUI::test::UiTestBase {};

TEST_F(MeasureTextTest, FollowsTheFontDescription) {
  const CSize small = IQVStandardCtrlUtils::MeasureText(L"Buy 600519", L"size:12dp");
  const CSize large = IQVStandardCtrlUtils::MeasureText(L"Buy 600519", L"size:24dp");
  const CSize bold = IQVStandardCtrlUtils::MeasureText(L"Buy 600519", L"size:12dp,bold:1");
  ASSERT_GT(small.cx, 0);
  // Twice the size is about twice as wide and tall.
  EXPECT_NEAR(static_cast<double>(large.cx) / small.cx, 2.0, 0.25);
  EXPECT_GT(large.cy, small.cy);
  EXPECT_GE(bold.cx, small.cx);
  EXPECT_EQ(IQVStandardCtrlUtils::MeasureText(L"", L"size:12dp").cx, 0);
}

TEST_F(MeasureTextTest, ScalesWithTheApplicationZoom) {
  const CSize at100 = IQVStandardCtrlUtils::MeasureText(L"Sell", L"size:12dp");
  app_->SetZoom(200);
  const CSize at200 = IQVStandardCtrlUtils::MeasureText(L"Sell", L"size:12dp");
  EXPECT_NEAR(static_cast<double>(at200.cx) / at100.cx, 2.0, 0.25);
}

TEST_F(MeasureTextTest, WindowOverloadUsesTheInheritedPaintFont) {
  CreateHostWithChildren(L"<window name=\"outer\" font=\"size:20dp\"><text name=\"inner\"/></window>");
  // The inner label sets no font: its parent's 20dp is what it paints with.
  const CSize via_window = IQVStandardCtrlUtils::MeasureText(L"Quote", Find(L"inner"));
  EXPECT_EQ(via_window, IQVStandardCtrlUtils::MeasureText(L"Quote", L"size:20dp"));
  EXPECT_NE(via_window, IQVStandardCtrlUtils::MeasureText(L"Quote", L"size:12dp"));
}

TEST_F(MeasureTextTest, DebugPrintLogsTheXml) {
  pugi::xml_document doc;
  ASSERT_TRUE(doc.load_string("<qv_button qvstyle=\"MB1_B\"/>"));
  IQVStandardCtrlUtils::DebugPrint(doc.first_child());
  EXPECT_TRUE(LogContains(L"qvstyle=\"MB1_B\""));
}

}  // namespace
}  // namespace QVStandardCtrls
