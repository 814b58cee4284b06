#include "display/reddots.h"

#include <gtest/gtest.h>

#include <string>

#include "framework/control_classes.h"
#include "testing/recording_render.h"
#include "library_test_base.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CRect;
using SOUI::SStringW;

class RedDotsTest : public test::LibraryTestBase {
 protected:
  // The badge inside a 40x20 anchor at (100,50).
  SOUI::SWindow* OnAnchor(const SStringW& badge_xml) {
    CreateHostWithChildren((L"<window name=\"anchor\" pos=\"100,50,@40,@20\">" + badge_xml + L"</window>").c_str());
    return Find(L"d");
  }
  static std::string Paint(SOUI::SWindow* w) {
    SOUI::RecordingRenderTarget rt(400, 300);
    w->RedrawRegion(&rt, w->GetWindowRect());
    return rt.Dump();
  }
};

// ---- where each badge lands --------------------------------------------------------------

struct RectCase {
  const char* name;
  const wchar_t* xml;
  CRect rect;
};

class RedDotRectTest : public RedDotsTest, public ::testing::WithParamInterface<RectCase> {};

TEST_P(RedDotRectTest, BadgeSitsOnItsAnchor) {
  const RectCase& c = GetParam();
  SOUI::SWindow* d = OnAnchor(c.xml);
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(d->GetWindowRect(), c.rect) << SOUI::RectText(d->GetWindowRect());
}

INSTANTIATE_TEST_SUITE_P(
    Anchors, RedDotRectTest,
    ::testing::Values(
        // Centred on the anchor's top-right corner (140,50).
        RectCase{"rd1_default", L"<qv_reddot name=\"d\"/>", CRect(137, 47, 143, 53)},
        // Centred on (110,52).
        RectCase{"rd2_at_point", L"<qv_reddot name=\"d\" qvstyle=\"RD2\" pos=\"10dp,2dp\"/>", CRect(106, 48, 114, 56)},
        // "5" is 5 px wide plus 3 px padding each side; grows right from the corner.
        RectCase{"rd3_right", L"<qv_number_reddot name=\"d\" qvstyle=\"RD3\" number=\"5\"/>", CRect(140, 44, 151, 56)},
        // Grows left: right edge on the anchor's right edge.
        RectCase{"rd3_left", L"<qv_number_reddot name=\"d\" qvstyle=\"RD3\" number=\"100\" extend_direction=\"left\"/>",
                 CRect(119, 44, 140, 56)},
        RectCase{"rd4_label", L"<qv_lable_reddot name=\"d\" qvstyle=\"RD4\"/>", CRect(125, 44, 155, 56)},
        RectCase{"rd5_label_at_left_corner", L"<qv_lable_reddot name=\"d\" qvstyle=\"RD5\" pos=\"0,0\"/>",
                 CRect(85, 44, 115, 56)},
        // An unknown code appends no size: the page's own size stays.
        RectCase{"label_unknown_code", L"<qv_lable_reddot name=\"d\" qvstyle=\"RD9\" pos=\"0,0,@20,@10\"/>",
                 CRect(90, 45, 110, 55)}),
    [](const ::testing::TestParamInfo<RectCase>& i) { return std::string(i.param.name); });

TEST_F(RedDotsTest, StyleCodeMayBeAStringReference) {
  app_->GetResProvider().SetString(L"en", L"reddot_code", L"RD2");
  app_->GetResProvider().SetLanguage(L"en");
  SOUI::SWindow* d = OnAnchor(L"<qv_reddot name=\"d\" qvstyle=\"@string\\reddot_code\"/>");
  EXPECT_EQ(d->GetWindowRect().Width(), 8);
  EXPECT_EQ(d->GetAttribute(L"skin"), L"skin_icon_redpoint");
}

// ---- the number ------------------------------------------------------------------------------

struct NumberCase {
  const char* name;
  const wchar_t* attrs;
  const char* text;
  bool visible;
};

class NumberTextTest : public RedDotsTest, public ::testing::WithParamInterface<NumberCase> {};

TEST_P(NumberTextTest, TextAndVisibilityAfterLoading) {
  const NumberCase& c = GetParam();
  auto* d = static_cast<CQVNUmberRedDot*>(OnAnchor(SStringW(L"<qv_number_reddot name=\"d\" qvstyle=\"RD3\" ") + c.attrs + L"/>"));
  EXPECT_EQ(d->GetWindowText().ToUtf8(), c.text);
  EXPECT_EQ(d->IsVisible() != FALSE, c.visible);
}

INSTANTIATE_TEST_SUITE_P(
    Numbers, NumberTextTest,
    ::testing::Values(NumberCase{"one", L"number=\"1\"", "1", true},
                      NumberCase{"nine", L"number=\"9\"", "9", true},
                      NumberCase{"at_default_max", L"number=\"99\"", "99", true},
                      NumberCase{"above_default_max", L"number=\"100\"", "99+", true},
                      NumberCase{"hex", L"number=\"0x64\"", "99+", true},
                      NumberCase{"above_max_nine", L"number=\"12\" max_number=\"9\"", "9+", true},
                      NumberCase{"at_max_nine", L"max_number=\"9\" number=\"9\"", "9", true},
                      NumberCase{"zero_hidden", L"number=\"0\"", "0", false},
                      NumberCase{"unset_hidden", L"", "0", false},
                      NumberCase{"negative_hidden", L"number=\"-3\"", "-3", false},
                      NumberCase{"max_zero_hidden", L"number=\"5\" max_number=\"0\"", "0+", false}),
    [](const ::testing::TestParamInfo<NumberCase>& i) { return std::string(i.param.name); });

TEST_F(RedDotsTest, SetNumberHidesButNeverShowsAgain) {
  auto* d = static_cast<CQVNUmberRedDot*>(OnAnchor(L"<qv_number_reddot name=\"d\" qvstyle=\"RD3\" number=\"7\"/>"));
  ASSERT_TRUE(d->IsVisible());
  d->SetNumber(0);
  EXPECT_FALSE(d->IsVisible());
  d->SetNumber(3);
  EXPECT_EQ(d->GetWindowText(), L"3");
  EXPECT_FALSE(d->IsVisible());
  d->SetVisible(TRUE);
  d->SetMaxNumber(2);
  EXPECT_EQ(d->GetWindowText(), L"2+");
  EXPECT_TRUE(d->IsVisible());
  d->SetAttribute(L"max_number", L"0", FALSE);
  EXPECT_FALSE(d->IsVisible());
}

TEST_F(RedDotsTest, NumberWidthFollowsTheTextAfterRelayout) {
  auto* d = static_cast<CQVNUmberRedDot*>(OnAnchor(L"<qv_number_reddot name=\"d\" qvstyle=\"RD3\" number=\"5\"/>"));
  d->SetNumber(150);
  Layout();
  // "99+": 15 px plus the paddings, still growing right from the corner.
  EXPECT_EQ(d->GetWindowRect(), CRect(140, 44, 161, 56)) << SOUI::RectText(d->GetWindowRect());
}

// ---- drawing ---------------------------------------------------------------------------------

TEST_F(RedDotsTest, BadgeDrawsItsSkinThenItsTextInTheFixedFontAndColour) {
  SOUI::SWindow* d = OnAnchor(L"<qv_number_reddot name=\"d\" qvstyle=\"RD3\" number=\"100\"/>");
  const std::string dump = Paint(d);
  const size_t skin = dump.find("DrawBitmap9Patch [140,44,161,56]");
  const size_t text = dump.find("DrawText \"99+\" [143,44,158,56] fmt=0x825 color=#FFFFFFFF font=10/400");
  EXPECT_NE(skin, std::string::npos) << dump;
  EXPECT_NE(text, std::string::npos) << dump;
  EXPECT_LT(skin, text);
}

TEST_F(RedDotsTest, LabelDrawsItsWordAndPlainDotDrawsNoText) {
  EXPECT_NE(Paint(OnAnchor(L"<qv_lable_reddot name=\"d\" qvstyle=\"RD5\"/>")).find("DrawText \"NEW\""), std::string::npos);
  const std::string plain = Paint(OnAnchor(L"<qv_reddot name=\"d\" qvstyle=\"RD1\"/>"));
  EXPECT_EQ(plain.find("DrawText"), std::string::npos) << plain;
  EXPECT_NE(plain.find("DrawBitmap [137,47,143,53]"), std::string::npos) << plain;
}

TEST_F(RedDotsTest, WithoutASkinARoundedFillInTheBackgroundColour) {
  // A code with no skin of its own.
  SOUI::SWindow* d = OnAnchor(L"<qv_reddot name=\"d\" qvstyle=\"RDX\" colorBkgnd=\"#E02020\" pos=\"0,0,@10,@10\"/>");
  const std::string dump = Paint(d);
  EXPECT_NE(dump.find("FillRoundRect [95,45,105,55] r=(10,10) brush=#E02020FF"), std::string::npos) << dump;
  EXPECT_EQ(dump.find("FillSolidRect"), std::string::npos) << dump;
}

}  // namespace
}  // namespace QVStandardCtrls
