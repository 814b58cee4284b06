// Built-in skins declared the way a theme declares them, drawn on the
// recording target (what is asked) and on the cairo target (what shows).
#include <gtest/gtest.h>

#include <map>

#include "backends/cairo_render.h"
#include "soui/skins.h"
#include "testing/recording_render.h"

namespace SOUI {
namespace {

constexpr COLORREF kRed = RGBA(255, 0, 0, 255);
constexpr COLORREF kGreen = RGBA(0, 255, 0, 255);
constexpr COLORREF kBlue = RGBA(0, 0, 255, 255);
constexpr COLORREF kWhite = RGBA(255, 255, 255, 255);

// A strip of solid frames of the given size, one colour each.
IBitmapPtr Strip(const std::vector<COLORREF>& colors, int fw, int fh, bool vertical = false) {
  const int n = static_cast<int>(colors.size());
  const int w = vertical ? fw : fw * n, h = vertical ? fh * n : fh;
  std::vector<uint32_t> px(static_cast<size_t>(w * h));
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const COLORREF c = colors[static_cast<size_t>(vertical ? y / fh : x / fw)];
      px[static_cast<size_t>(y * w + x)] = 0xFF000000u | (GetRValue(c) << 16) | (GetGValue(c) << 8) | GetBValue(c);
    }
  return CreateBitmapFromBits(w, h, reinterpret_cast<const unsigned char*>(px.data()), w * 4);
}

class SkinsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    RegisterBuiltinSkinTypes(res_);
    res_.SetImageLoader([this](const SStringW& path) -> IBitmapPtr {
      auto it = images_.find(path);
      return it == images_.end() ? nullptr : it->second;
    });
    images_[L"/theme/three.png"] = Strip({kRed, kGreen, kBlue}, 8, 6);
    images_[L"/theme/tall.png"] = Strip({kRed, kGreen}, 5, 4, true);
  }

  // Loads one <skin> section and returns the skin called "s".
  ISkinObjPtr Declare(const std::string& decl, int scale = 100) {
    pugi::xml_document doc;
    const std::string xml = "<uidef><skin>" + decl + "</skin></uidef>";
    EXPECT_TRUE(doc.load_string(xml.c_str())) << xml;
    res_.LoadUiDef(doc.document_element(), L"/theme/");
    return res_.GetSkin(L"s", scale);
  }

  // The lines a skin records when drawn in state `state` into [0,0,40,20].
  std::string Drawn(const ISkinObjPtr& skin, int state, BYTE alpha = 255) {
    RecordingRenderTarget rt;
    const CRect rc(0, 0, 40, 20);
    skin->DrawByIndex(&rt, &rc, state, alpha);
    return rt.Dump();
  }

  SResProvider res_;
  std::map<SStringW, IBitmapPtr> images_;
};

// ---- colorrect ----

struct ColorRectCase {
  const char* name;
  const char* attrs;
  int states;
  int state;
  const char* expected;  // the recorded drawing
};

class ColorRectTest : public SkinsTest, public ::testing::WithParamInterface<ColorRectCase> {};

TEST_P(ColorRectTest, DrawsTheStateColour) {
  res_.SetColor(L"accent", RGBA(1, 2, 3, 255));
  const ISkinObjPtr skin = Declare(std::string("<colorrect name=\"s\" ") + GetParam().attrs + "/>");
  ASSERT_TRUE(skin);
  EXPECT_EQ(skin->GetStates(), GetParam().states);
  EXPECT_EQ(CSize(skin->GetSkinSize()), CSize(0, 0));
  EXPECT_EQ(Drawn(skin, GetParam().state), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    States, ColorRectTest,
    ::testing::Values(
        ColorRectCase{"Normal", "normal=\"#102030\"", 1, 0, "FillSolidRect [0,0,40,20] #102030FF\n"},
        ColorRectCase{"PushedSetsThreeStates", "normal=\"#102030\" pushdown=\"#405060\"", 3, 2,
                      "FillSolidRect [0,0,40,20] #405060FF\n"},
        ColorRectCase{"MissingStateUsesNormal", "normal=\"#102030\" pushdown=\"#405060\"", 3, 1,
                      "FillSolidRect [0,0,40,20] #102030FF\n"},
        ColorRectCase{"StatePastTheLastDrawsNormal", "normal=\"#102030\" hover=\"#405060\"", 2, 3,
                      "FillSolidRect [0,0,40,20] #102030FF\n"},
        ColorRectCase{"DisabledWithAlpha", "normal=\"#102030\" disable=\"#40506080\"", 4, 3,
                      "FillSolidRect [0,0,40,20] #40506080\n"},
        ColorRectCase{"ColourReference", "normal=\"@color/accent\"", 1, 0,
                      "FillSolidRect [0,0,40,20] #010203FF\n"},
        ColorRectCase{"BorderOnly", "normalBorder=\"#FF0000\" borderWidth=\"2\"", 1, 0,
                      "DrawRectangle [0,0,40,20] pen=#FF0000FF/2/solid\n"},
        ColorRectCase{"HoverBorderCountsAsAState", "normal=\"#000000\" hoverBorder=\"#FF0000\"", 2, 1,
                      "FillSolidRect [0,0,40,20] #000000FF\n"
                      "DrawRectangle [0,0,40,20] pen=#FF0000FF/1/solid\n"},
        ColorRectCase{"RoundCorners", "normal=\"#102030\" cornerRadius=\"4\"", 1, 0,
                      "FillRoundRect [0,0,40,20] r=(4,4) brush=#102030FF\n"},
        ColorRectCase{"EllipticalCorners", "normal=\"#102030\" cornerRadius=\"6,3\"", 1, 0,
                      "FillRoundRect [0,0,40,20] r=(6,3) brush=#102030FF\n"},
        ColorRectCase{"CornerPercentOfShortSide", "normal=\"#102030\" cornerPercent=\"50\"", 1, 0,
                      "FillRoundRect [0,0,40,20] r=(10,10) brush=#102030FF\n"},
        ColorRectCase{"SkinAlphaScalesColours", "normal=\"#102030\" alpha=\"128\"", 1, 0,
                      "FillSolidRect [0,0,40,20] #10203080\n"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SkinsTest, ColorRectRejectsBadValues) {
  SSkinColorRect skin;
  EXPECT_EQ(skin.SetAttribute(L"hover", L"not a colour", FALSE), E_FAIL);
  EXPECT_EQ(skin.SetAttribute(L"cornerRadius", L"x", FALSE), E_FAIL);
  EXPECT_EQ(skin.SetAttribute(L"noSuchAttribute", L"1", FALSE), E_FAIL);
  EXPECT_EQ(skin.GetStates(), 1);  // the rejected hover colour did not count
  EXPECT_EQ(skin.SetAttribute(L"HOVER", L"#ffffff", FALSE), S_OK);
  EXPECT_EQ(skin.GetStates(), 2);
}

TEST_F(SkinsTest, ScaledColorRectWidensBorderAndCorners) {
  const ISkinObjPtr skin = Declare("<colorrect name=\"s\" normalBorder=\"#000000\" cornerRadius=\"3\"/>", 200);
  ASSERT_TRUE(skin);
  EXPECT_EQ(skin->GetScale(), 200);
  EXPECT_EQ(Drawn(skin, 0), "DrawRoundRect [0,0,40,20] r=(6,6) pen=#000000FF/2/solid\n");
}

// ---- imglist ----

struct ImgListCase {
  const char* name;
  const char* attrs;
  int states;
  SIZE size;
  int state;
  const char* expected;
};

class ImgListTest : public SkinsTest, public ::testing::WithParamInterface<ImgListCase> {};

TEST_P(ImgListTest, DrawsTheStateFrame) {
  const ISkinObjPtr skin = Declare(std::string("<imglist name=\"s\" ") + GetParam().attrs + "/>");
  ASSERT_TRUE(skin);
  EXPECT_EQ(skin->GetStates(), GetParam().states);
  EXPECT_EQ(CSize(skin->GetSkinSize()), CSize(GetParam().size));
  EXPECT_EQ(Drawn(skin, GetParam().state), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Frames, ImgListTest,
    ::testing::Values(
        ImgListCase{"OneFrame", "src=\"three.png\"", 1, {24, 6}, 0,
                    "DrawBitmap [0,0,40,20] bmp=24x6 src=[0,0,24,6] mode=stretch alpha=255\n"},
        ImgListCase{"ThirdOfThree", "src=\"three.png\" states=\"3\"", 3, {8, 6}, 2,
                    "DrawBitmap [0,0,40,20] bmp=24x6 src=[16,0,24,6] mode=stretch alpha=255\n"},
        ImgListCase{"PastTheLastDrawsFirst", "src=\"three.png\" states=\"3\"", 3, {8, 6}, 3,
                    "DrawBitmap [0,0,40,20] bmp=24x6 src=[0,0,8,6] mode=stretch alpha=255\n"},
        ImgListCase{"Vertical", "src=\"tall.png\" states=\"2\" vertical=\"1\"", 2, {5, 4}, 1,
                    "DrawBitmap [0,0,40,20] bmp=5x8 src=[0,4,5,8] mode=stretch alpha=255\n"},
        ImgListCase{"StateMapPicksFrames", "src=\"three.png\" states=\"3\" stateMap=\"0-2-2-1\"", 4, {8, 6}, 3,
                    "DrawBitmap [0,0,40,20] bmp=24x6 src=[8,0,16,6] mode=stretch alpha=255\n"},
        ImgListCase{"StateMapToMissingFrame", "src=\"three.png\" states=\"3\" stateMap=\"0-7\"", 2, {8, 6}, 1,
                    "DrawBitmap [0,0,40,20] bmp=24x6 src=[0,0,8,6] mode=stretch alpha=255\n"},
        ImgListCase{"Tiled", "src=\"three.png\" states=\"3\" tile=\"1\"", 3, {8, 6}, 1,
                    "DrawBitmap [0,0,40,20] bmp=24x6 src=[8,0,16,6] mode=tile alpha=255\n"},
        ImgListCase{"NaturalSize", "src=\"three.png\" states=\"3\" autoFit=\"0\"", 3, {8, 6}, 0,
                    "DrawBitmap [0,0,40,20] bmp=24x6 src=[0,0,8,6] mode=none alpha=255\n"},
        ImgListCase{"MissingImageDrawsNothing", "src=\"nope.png\" states=\"2\"", 2, {0, 0}, 0, ""}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SkinsTest, SkinAndDrawAlphaMultiply) {
  const ISkinObjPtr skin = Declare("<imglist name=\"s\" src=\"three.png\" states=\"3\" alpha=\"128\"/>");
  ASSERT_TRUE(skin);
  EXPECT_EQ(Drawn(skin, 0, 128), "DrawBitmap [0,0,40,20] bmp=24x6 src=[0,0,8,6] mode=stretch alpha=64\n");
}

TEST_F(SkinsTest, ImgCenterDrawsNaturalSizeInTheMiddle) {
  const ISkinObjPtr skin = Declare("<imgCenter name=\"s\" src=\"three.png\" states=\"3\"/>");
  ASSERT_TRUE(skin);
  EXPECT_TRUE(skin->IsClass(L"imglist"));
  EXPECT_EQ(Drawn(skin, 1), "DrawBitmap [16,7,24,13] bmp=24x6 src=[8,0,16,6] mode=none alpha=255\n");
}

// ---- imgframe ----

struct MarginCase {
  const char* name;
  const char* attrs;
  CRect margins;
};

class ImgFrameMarginTest : public SkinsTest, public ::testing::WithParamInterface<MarginCase> {};

TEST_P(ImgFrameMarginTest, MarginAttributesFillEdges) {
  const ISkinObjPtr skin = Declare(std::string("<imgframe name=\"s\" src=\"three.png\" ") + GetParam().attrs + "/>");
  ASSERT_TRUE(skin);
  ASSERT_TRUE(skin->IsClass(L"imgframe"));
  EXPECT_EQ(static_cast<SSkinImgFrame*>(skin.get())->GetMargins(), GetParam().margins);
}

INSTANTIATE_TEST_SUITE_P(
    Margins, ImgFrameMarginTest,
    ::testing::Values(MarginCase{"FourValues", "margin=\"1,2,3,4\"", CRect(1, 2, 3, 4)},
                      MarginCase{"OneValueSetsOnlyLeft", "margin=\"3\"", CRect(3, 0, 0, 0)},
                      MarginCase{"TwoValues", "margin=\"3,5\"", CRect(3, 5, 0, 0)},
                      MarginCase{"Edges", "left=\"1\" top=\"2\" right=\"3\" bottom=\"4\"", CRect(1, 2, 3, 4)},
                      MarginCase{"Axes", "margin-x=\"2\" margin-y=\"5\"", CRect(2, 5, 2, 5)},
                      MarginCase{"LaterWins", "margin=\"1,1,1,1\" right=\"6\"", CRect(1, 1, 6, 1)}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(SkinsTest, ImgFrameDrawsANinePatchOfTheStateFrame) {
  const ISkinObjPtr skin = Declare("<imgframe name=\"s\" src=\"three.png\" states=\"3\" margin=\"2,2,2,2\" tile=\"1\"/>");
  ASSERT_TRUE(skin);
  EXPECT_EQ(Drawn(skin, 2),
            "DrawBitmap9Patch [0,0,40,20] bmp=24x6 src=[16,0,24,6] margins=[2,2,2,2] mode=tile alpha=255\n");
}

// ---- scaling ----

TEST_F(SkinsTest, ScaledImgListResizesEveryFrame) {
  const ISkinObjPtr skin = Declare("<imglist name=\"s\" src=\"three.png\" states=\"3\"/>", 150);
  ASSERT_TRUE(skin);
  EXPECT_EQ(skin->GetScale(), 150);
  EXPECT_EQ(CSize(skin->GetSkinSize()), CSize(12, 9));
  // Each scaled frame is still one solid colour up to its edges.
  CairoRenderFactory factory;
  auto rt = factory.CreateCairoTarget(12, 9);
  const CRect rc(0, 0, 12, 9);
  const COLORREF expected[] = {kRed, kGreen, kBlue};
  for (int state = 0; state < 3; ++state) {
    rt->Clear(kWhite);
    skin->DrawByIndex(rt.get(), &rc, state);
    for (const CPoint& p : {CPoint(0, 0), CPoint(11, 8), CPoint(6, 4)})
      EXPECT_EQ(rt->GetPixel(p.x, p.y), expected[state]) << "state " << state << " at " << p.x << "," << p.y;
  }
}

TEST_F(SkinsTest, SkinMadeForDoubleScaleHalvesAtNormalScale) {
  const ISkinObjPtr skin = Declare("<imglist name=\"s\" src=\"three.png\" states=\"3\" scale=\"200\"/>", 100);
  ASSERT_TRUE(skin);
  EXPECT_EQ(CSize(skin->GetSkinSize()), CSize(4, 3));
}

TEST_F(SkinsTest, ScaledImgFrameScalesItsMargins) {
  const ISkinObjPtr skin = Declare("<imgframe name=\"s\" src=\"three.png\" states=\"3\" margin=\"1,2,3,0\"/>", 200);
  ASSERT_TRUE(skin);
  EXPECT_EQ(static_cast<SSkinImgFrame*>(skin.get())->GetMargins(), CRect(2, 4, 6, 0));
  EXPECT_EQ(CSize(skin->GetSkinSize()), CSize(16, 12));
}

// ---- on screen ----

TEST_F(SkinsTest, SkinsPaintOnTheCairoTarget) {
  // A 9x9 frame: 3px red border around white; the middle stretches.
  std::vector<uint32_t> px(81, 0xFFFF0000u);
  for (int y = 3; y < 6; ++y)
    for (int x = 3; x < 6; ++x) px[static_cast<size_t>(y * 9 + x)] = 0xFFFFFFFFu;
  images_[L"/theme/frame.png"] = CreateBitmapFromBits(9, 9, reinterpret_cast<const unsigned char*>(px.data()), 36);
  const ISkinObjPtr frame = Declare("<imgframe name=\"s\" src=\"frame.png\" margin=\"3,3,3,3\"/>");
  ASSERT_TRUE(frame);
  Declare("<colorrect name=\"pill\" normal=\"#2080E0\" hover=\"#E08020\" cornerRadius=\"8\"/>");
  const ISkinObjPtr pill = res_.GetSkin(L"pill", 100);
  ASSERT_TRUE(pill);

  CairoRenderFactory factory;
  auto rt = factory.CreateCairoTarget(80, 40);
  rt->Clear(RGBA(0, 0, 0, 255));
  const CRect left(0, 0, 40, 40), right(44, 10, 80, 30);
  frame->DrawByIndex(rt.get(), &left, 0);
  pill->DrawByIndex(rt.get(), &right, 1);
  if (const char* dir = std::getenv("QV_TEST_OUTPUT_DIR")) rt->SavePng(std::string(dir) + "/skins.png");
  // Frame: 3px border, white inside.
  EXPECT_EQ(rt->GetPixel(2, 20), kRed);
  EXPECT_EQ(rt->GetPixel(3, 20), kWhite);
  EXPECT_EQ(rt->GetPixel(36, 36), kWhite);
  EXPECT_EQ(rt->GetPixel(37, 37), kRed);
  // Pill in its hover colour with transparent corners.
  EXPECT_EQ(rt->GetPixel(62, 20), RGBA(0xE0, 0x80, 0x20, 255));
  EXPECT_EQ(rt->GetPixel(44, 10), RGBA(0, 0, 0, 255));
}

}  // namespace
}  // namespace SOUI
