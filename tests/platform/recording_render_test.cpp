// The recording render target: its lines and its font-free text metric.
#include <gtest/gtest.h>

#include "testing/recording_render.h"

namespace SOUI {
namespace {

TEST(RecordingRenderTest, WritesOneLinePerDrawingCallWithItsState) {
  RecordingRenderTarget rt(200, 100);
  FontDesc bold;
  bold.height = 12;
  bold.weight = 700;
  bold.underline = true;
  rt.SelectFont(rt.CreateFont(bold));
  rt.SetTextColor(RGBA(255, 0, 0, 255));
  rt.SelectPen(rt.CreatePen(PS_DASH, RGBA(0, 0, 255, 128), 2));
  rt.SelectBrush(rt.CreateSolidColorBrush(RGBA(1, 2, 3, 255)));

  CRect rc(0, 0, 100, 20);
  rt.DrawText(L"a\"b\nc", -1, &rc, DT_SINGLELINE | DT_CENTER | DT_VCENTER);
  rt.DrawText(L"measured only", -1, &rc, DT_CALCRECT);
  const POINT pts[] = {{0, 0}, {10, 5}};
  rt.DrawLines(pts, 2);
  const CRect box(1, 2, 3, 4), clip(0, 0, 50, 50);
  rt.FillRoundRect(&box, POINT{4, 4});
  rt.PushClipRect(&clip);
  rt.PushLayer(128);
  rt.FillSolidRect(&box, RGBA(0, 0, 0, 0));
  rt.PopClip();  // does not match the layer: not recorded
  rt.PopLayer();
  rt.PopClip();

  EXPECT_EQ(rt.Dump(),
            "DrawText \"a\\\"b\\nc\" [0,0,100,20] fmt=0x25 color=#FF0000FF font=12/700+underline\n"
            "DrawLines (0,0)-(10,5) pen=#0000FF80/2/dash\n"
            "FillRoundRect [1,2,3,4] r=(4,4) brush=#010203FF\n"
            "PushClipRect [0,0,50,50]\n"
            "PushLayer 128\n"
            "FillSolidRect [1,2,3,4] #00000000\n"
            "PopLayer\n"
            "PopClip\n");
  EXPECT_TRUE(rt.Contains("PushLayer"));
  EXPECT_EQ(rt.Count("Pop"), 2);
  rt.Clear();
  EXPECT_FALSE(rt.Contains("Pop"));
}

TEST(RecordingRenderTest, BitmapsShowSizeSourceAndMode) {
  RecordingRenderTarget rt;
  const unsigned char px[4 * 4 * 2] = {};
  const IBitmapPtr bmp = CreateBitmapFromBits(4, 2, px, 16);
  const CRect dst(0, 0, 40, 20), src(2, 0, 4, 2), margins(1, 1, 1, 1);
  rt.DrawBitmap(&dst, bmp.get(), nullptr, ExpandMode::Tile, 255);
  rt.DrawBitmap9Patch(&dst, bmp.get(), &src, &margins, ExpandMode::Stretch, 77);
  EXPECT_EQ(rt.Dump(),
            "DrawBitmap [0,0,40,20] bmp=4x2 src=[0,0,4,2] mode=tile alpha=255\n"
            "DrawBitmap9Patch [0,0,40,20] bmp=4x2 src=[2,0,4,2] margins=[1,1,1,1] mode=stretch alpha=77\n");
}

TEST(RecordingRenderTest, ClipBoxFollowsTheStack) {
  RecordingRenderTarget rt(100, 100);
  const CRect a(10, 10, 60, 60), b(40, 40, 90, 90);
  rt.PushClipRect(&a);
  rt.PushClipRect(&b);
  EXPECT_EQ(rt.GetClipBox(), CRect(40, 40, 60, 60));
  rt.PopClip();
  EXPECT_EQ(rt.GetClipBox(), a);
  rt.PopClip();
  EXPECT_EQ(rt.GetClipBox(), CRect(0, 0, 100, 100));
}

struct MetricCase {
  const char* name;
  const wchar_t* text;
  int font_height;
  int width;  // of the rectangle handed to DT_CALCRECT
  UINT format;
  SIZE expected;
};

class RecordingMetricTest : public ::testing::TestWithParam<MetricCase> {};

TEST_P(RecordingMetricTest, CalcRectFollowsTheDocumentedMetric) {
  const MetricCase& c = GetParam();
  RecordingRenderTarget rt;
  FontDesc d;
  d.height = c.font_height;
  rt.SelectFont(rt.CreateFont(d));
  CRect rc(5, 7, 5 + c.width, 8);
  rt.DrawText(c.text, -1, &rc, c.format | DT_CALCRECT);
  EXPECT_EQ(rc.TopLeft(), CPoint(5, 7));
  EXPECT_EQ(rc.Size(), CSize(c.expected));
  EXPECT_TRUE(rt.Calls().empty());
}

INSTANTIATE_TEST_SUITE_P(
    Metric, RecordingMetricTest,
    ::testing::Values(
        MetricCase{"SingleLine", L"abcd", 12, 0, DT_SINGLELINE, {24, 12}},
        MetricCase{"PrefixRemoved", L"&Save", 12, 0, DT_SINGLELINE, {24, 12}},
        MetricCase{"NoPrefixCountsAll", L"&Save", 12, 0, DT_SINGLELINE | DT_NOPREFIX, {30, 12}},
        MetricCase{"LineBreakIsASpaceOnOneLine", L"ab\r\ncd", 10, 0, DT_SINGLELINE, {25, 10}},
        MetricCase{"LineBreaksStack", L"ab\ncde", 10, 0, 0, {15, 20}},
        MetricCase{"WrapsAtSpaces", L"aaa bbb ccc", 10, 30, DT_WORDBREAK, {15, 30}},
        MetricCase{"KeepsWordsThatFit", L"aa bb cc", 10, 25, DT_WORDBREAK, {25, 20}},
        MetricCase{"CutsLongWords", L"abcdefghij", 10, 20, DT_WORDBREAK, {20, 30}},
        MetricCase{"ZeroWidthDoesNotWrap", L"aa bb", 10, 0, DT_WORDBREAK, {25, 10}},
        MetricCase{"DefaultHeightForUnsetFont", L"ab", 0, 0, DT_SINGLELINE, {12, 12}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(RecordingRenderTest, MeasureTextIsOneLineOfTheMetric) {
  RecordingRenderTarget rt;
  FontDesc d;
  d.height = 16;
  rt.SelectFont(rt.CreateFont(d));
  SIZE sz{};
  rt.MeasureText(L"新建窗口", -1, &sz);
  EXPECT_EQ(sz.cx, 32);
  EXPECT_EQ(sz.cy, 16);
  EXPECT_TRUE(rt.Calls().empty());
}

}  // namespace
}  // namespace SOUI
