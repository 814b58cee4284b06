// The cairo render target: colours, shapes on the pixel grid, text layout,
// images, clips and layers, checked on pixels of small scenes.
// Sections: colours · shapes · text · images · clips and layers · reference scene.
#include <gtest/gtest.h>
#include <unistd.h>

#include <sys/stat.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

#include "backends/cairo_render.h"
#include "testing/png_compare.h"

namespace SOUI {
namespace {

constexpr COLORREF kRed = RGBA(255, 0, 0, 255);
constexpr COLORREF kGreen = RGBA(0, 255, 0, 255);
constexpr COLORREF kBlue = RGBA(0, 0, 255, 255);
constexpr COLORREF kBlack = RGBA(0, 0, 0, 255);
constexpr COLORREF kWhite = RGBA(255, 255, 255, 255);
constexpr COLORREF kNone = 0;  // fully transparent pixel

std::string DataPath(const std::string& name) { return std::string(QV_SOURCE_DIR) + "/tests/data/" + name; }

class RenderTest : public ::testing::Test {
 protected:
  void SetUp() override { Reset(100, 60); }

  void Reset(int w, int h) {
    rt_ = factory_.CreateCairoTarget(w, h);
    rt_->Clear(kWhite);
  }

  // Saves the scene for a human to look at when QV_TEST_OUTPUT_DIR is set.
  void Keep(const std::string& name) {
    if (const char* dir = std::getenv("QV_TEST_OUTPUT_DIR")) rt_->SavePng(std::string(dir) + "/" + name + ".png");
  }

  // Bounding box of pixels that are not white inside `area` (empty if none).
  CRect Ink(const CRect& area) const {
    CRect box;
    for (int y = area.top; y < area.bottom; ++y)
      for (int x = area.left; x < area.right; ++x)
        if (rt_->GetPixel(x, y) != kWhite) box = box | CRect(x, y, x + 1, y + 1);
    return box;
  }
  CRect Ink() const { return Ink(CRect(CPoint(), rt_->GetSize())); }

  void UseFont(int height, int weight = 400) {
    FontDesc d;
    d.height = height;
    d.weight = weight;
    rt_->SelectFont(rt_->CreateFont(d));
  }

  SIZE Measure(const wchar_t* text) {
    SIZE sz{};
    rt_->MeasureText(text, -1, &sz);
    return sz;
  }

  CRect CalcRect(const wchar_t* text, CRect rc, UINT fmt) {
    rt_->DrawText(text, -1, &rc, fmt | DT_CALCRECT);
    return rc;
  }

  CairoRenderFactory factory_;
  std::unique_ptr<CairoRenderTarget> rt_;
};

// A bitmap of solid colour blocks, one row of `cols` colours per entry of rows.
IBitmapPtr Blocks(const std::vector<std::vector<COLORREF>>& rows, int block) {
  const int h = static_cast<int>(rows.size()) * block, w = static_cast<int>(rows[0].size()) * block;
  std::vector<uint32_t> px(static_cast<size_t>(w * h));
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      const COLORREF c = rows[static_cast<size_t>(y / block)][static_cast<size_t>(x / block)];
      px[static_cast<size_t>(y * w + x)] = 0xFF000000u | (GetRValue(c) << 16) | (GetGValue(c) << 8) | GetBValue(c);
    }
  return CreateBitmapFromBits(w, h, reinterpret_cast<const unsigned char*>(px.data()), w * 4);
}

// ---- colours ----

struct ColorCase {
  const char* name;
  COLORREF fill;
  COLORREF expected;
};

class ColorConventionTest : public RenderTest, public ::testing::WithParamInterface<ColorCase> {};

TEST_P(ColorConventionTest, AlphaByteDecides) {
  const CRect rc(10, 10, 20, 20);
  rt_->Clear(kNone);
  rt_->FillSolidRect(&rc, GetParam().fill);
  const COLORREF got = rt_->GetPixel(15, 15);
  EXPECT_NEAR(GetAValue(got), GetAValue(GetParam().expected), 1);
  if (GetAValue(got) == 255) {
    EXPECT_EQ(got, GetParam().expected);
  }
}

INSTANTIATE_TEST_SUITE_P(
    Colors, ColorConventionTest,
    ::testing::Values(ColorCase{"OpaqueThemeColour", RGBA(10, 20, 30, 255), RGBA(10, 20, 30, 255)},
                      ColorCase{"Win32RgbIsTransparent", RGB(10, 20, 30), kNone},
                      ColorCase{"Win32RgbMadeOpaque", OpaqueIfNoAlpha(RGB(10, 20, 30)), RGBA(10, 20, 30, 255)},
                      ColorCase{"InvalidNeverPaints", OpaqueIfNoAlpha(CR_INVALID), kNone},
                      ColorCase{"HalfAlpha", RGBA(255, 0, 0, 128), RGBA(255, 0, 0, 128)}),
    [](const auto& info) { return std::string(info.param.name); });

// ---- shapes on the pixel grid ----

TEST_F(RenderTest, OnePixelRectangleCoversOutermostPixelsOnly) {
  rt_->SelectPen(rt_->CreatePen(PS_SOLID, kBlack, 1));
  const CRect rc(10, 10, 30, 20);
  rt_->DrawRectangle(&rc);
  // Corners of the outline are solid: no half-covered rows from a stroke on the edge.
  for (const CPoint& p : {CPoint(10, 10), CPoint(29, 10), CPoint(10, 19), CPoint(29, 19), CPoint(20, 10)})
    EXPECT_EQ(rt_->GetPixel(p.x, p.y), kBlack) << p.x << "," << p.y;
  // Right and bottom are exclusive; the inside stays empty.
  for (const CPoint& p : {CPoint(30, 15), CPoint(20, 20), CPoint(11, 11), CPoint(20, 15), CPoint(9, 15)})
    EXPECT_EQ(rt_->GetPixel(p.x, p.y), kWhite) << p.x << "," << p.y;
}

TEST_F(RenderTest, WidePenStaysInsideRectangle) {
  rt_->SelectPen(rt_->CreatePen(PS_SOLID, kBlack, 3));
  const CRect rc(10, 10, 40, 40);
  rt_->DrawRectangle(&rc);
  EXPECT_EQ(Ink(), rc);
  EXPECT_EQ(rt_->GetPixel(12, 20), kBlack);
  EXPECT_EQ(rt_->GetPixel(13, 20), kWhite);
}

TEST_F(RenderTest, OnePixelLineFillsOneRow) {
  rt_->SelectPen(rt_->CreatePen(PS_SOLID, kBlack, 1));
  const POINT pts[] = {{5, 8}, {25, 8}, {25, 30}};
  rt_->DrawLines(pts, 3);
  EXPECT_EQ(rt_->GetPixel(5, 8), kBlack);
  EXPECT_EQ(rt_->GetPixel(15, 8), kBlack);
  EXPECT_EQ(rt_->GetPixel(15, 7), kWhite);
  EXPECT_EQ(rt_->GetPixel(15, 9), kWhite);
  EXPECT_EQ(rt_->GetPixel(25, 20), kBlack);
  EXPECT_EQ(rt_->GetPixel(26, 20), kWhite);
  // Both end points are whole pixels.
  EXPECT_EQ(Ink(), CRect(5, 8, 26, 31));
}

TEST_F(RenderTest, RoundedRectangleAndEllipseLeaveCornersEmpty) {
  rt_->SelectBrush(rt_->CreateSolidColorBrush(kBlue));
  const CRect rr(0, 0, 40, 30), el(50, 0, 90, 30);
  rt_->FillRoundRect(&rr, POINT{8, 8});
  rt_->FillEllipse(&el);
  // Round rect: corner empty, straight edges full.
  EXPECT_EQ(rt_->GetPixel(0, 0), kWhite);
  EXPECT_EQ(rt_->GetPixel(20, 0), kBlue);
  EXPECT_EQ(rt_->GetPixel(0, 15), kBlue);
  EXPECT_EQ(rt_->GetPixel(39, 29), kWhite);
  // Ellipse: touches the middle of each side, not the corners' diagonals.
  EXPECT_EQ(rt_->GetPixel(70, 15), kBlue);
  EXPECT_EQ(rt_->GetPixel(70, 1), kBlue);
  EXPECT_EQ(rt_->GetPixel(54, 3), kWhite);
  EXPECT_EQ(Ink(CRect(50, 0, 100, 60)), el);
}

TEST_F(RenderTest, RoundedOutlineIsHollow) {
  rt_->SelectPen(rt_->CreatePen(PS_SOLID, kRed, 2));
  const CRect rc(10, 10, 60, 50);
  rt_->DrawRoundRect(&rc, POINT{10, 10});
  EXPECT_EQ(rt_->GetPixel(35, 10), kRed);
  EXPECT_EQ(rt_->GetPixel(35, 11), kRed);
  EXPECT_EQ(rt_->GetPixel(35, 30), kWhite);
  EXPECT_EQ(rt_->GetPixel(10, 10), kWhite);
  EXPECT_EQ(Ink(), rc);
}

// ---- text ----

TEST_F(RenderTest, LatinAndChineseMeasureToTheirScripts) {
  UseFont(20);
  const SIZE latin = Measure(L"Hello");
  const SIZE chinese = Measure(L"新建窗口");
  // Line height near the em size, Latin narrower than an em per letter,
  // ideographs one em each (tofu boxes would be narrower).
  EXPECT_GE(latin.cy, 20);
  EXPECT_LE(latin.cy, 30);
  EXPECT_GT(latin.cx, 5 * 20 / 4);
  EXPECT_LT(latin.cx, 5 * 20);
  EXPECT_GE(chinese.cx, 4 * 20 - 2);
  EXPECT_LE(chinese.cx, 4 * 20 + 4);
}

// What a shaping made: its layout or its run, whichever it is.
const void* ShapeOf(const TextEngine::Shaped& shaped) {
  return shaped.layout ? static_cast<const void*>(shaped.layout) : static_cast<const void*>(shaped.run);
}

// The layout cache: full, it lets go of what was not used lately and keeps
// what is used between insertions, however many come.
TEST(TextEngineTest, CacheKeepsWhatIsInUseAndStaysBounded) {
  TextEngine engine;
  FontDesc desc;
  desc.height = 12;
  const TextEngine::Font* font = engine.GetFont(desc);
  const TextEngine::Box box;
  const void* kept = ShapeOf(engine.Layout(font, L"kept", false, box));
  ASSERT_NE(kept, nullptr);
  for (size_t i = 0; i < 3 * TextEngine::kCacheCapacity; ++i) {
    engine.Layout(font, L"text " + std::to_wstring(i), false, box);
    const size_t shaped = engine.ShapeCount();
    ASSERT_EQ(ShapeOf(engine.Layout(font, L"kept", false, box)), kept) << "re-shaped after " << i << " others";
    ASSERT_EQ(engine.ShapeCount(), shaped) << "re-shaped after " << i << " others";
  }
  EXPECT_EQ(engine.CachedLayouts(), TextEngine::kCacheCapacity);
  // The same text in another box is another layout, measured to that box.
  TextEngine::Box narrow;
  narrow.width = 1;
  narrow.wrap = true;
  const TextEngine::Shaped& wrapped = engine.Layout(font, L"two words", false, narrow);
  EXPECT_NE(ShapeOf(wrapped), ShapeOf(engine.Layout(font, L"two words", false, box)));
  EXPECT_GT(engine.Layout(font, L"two words", false, narrow).logical.height, engine.Layout(font, L"two words", false, box).logical.height);
  // Dropped, the layouts are made anew on the next call.
  engine.DropLayouts();
  EXPECT_EQ(engine.CachedLayouts(), 0u);
  EXPECT_GT(engine.Layout(font, L"kept", false, box).logical.width, 0);
  EXPECT_EQ(engine.CachedLayouts(), 1u);
  // Line breaks read as spaces make another layout of the same text.
  EXPECT_GT(engine.Layout(font, L"two\nlines", false, box).logical.height,
            engine.Layout(font, L"two\nlines", true, box).logical.height);
}

// A view showing more texts than the cache holds: after a few paints every
// text is found, none shaped again, and the cache stays within its limit.
TEST(TextEngineTest, CacheGrowsToHoldWhatEveryPaintShows) {
  TextEngine engine;
  FontDesc desc;
  desc.height = 12;
  const TextEngine::Font* font = engine.GetFont(desc);
  const size_t shown = TextEngine::kCacheCapacity * 3 / 2;
  const auto paint = [&] {
    std::vector<const void*> layouts;
    for (size_t i = 0; i < shown; ++i) {
      layouts.push_back(ShapeOf(engine.Layout(font, L"row " + std::to_wstring(i), false, TextEngine::Box())));
    }
    return layouts;
  };
  for (int i = 0; i < 3; ++i) paint();
  const size_t shaped = engine.ShapeCount();
  EXPECT_EQ(paint(), paint());
  EXPECT_EQ(engine.ShapeCount(), shaped);
  EXPECT_GE(engine.Capacity(), shown);
  EXPECT_LE(engine.Capacity(), TextEngine::kMaxCacheCapacity);
  EXPECT_EQ(engine.CachedLayouts(), shown);
}

// Short ASCII texts are shaped as runs, without a layout: each must measure
// and draw exactly as pango's layout of it, pixel for pixel.
TEST(TextEngineTest, RunsMeasureAndDrawAsTheirLayouts) {
  TextEngine engine;
  std::vector<FontDesc> fonts(5);
  fonts[1].height = 15;
  fonts[1].weight = 700;
  fonts[2].height = 22;
  fonts[2].italic = true;
  fonts[3].face = L"No Such Face";  // falls back to the default face
  fonts[4].height = 9;
  const std::wstring texts[] = {L"12.34", L"-0.25%", L"AVATAR Wo ff fi", L"Buy", L"  spaced  ", L"x", L"(+1,234.5)"};
  const auto draw = [](const TextEngine::Shaped& shaped) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 260, 48);
    cairo_t* cr = cairo_create(surface);
    cairo_set_source_rgb(cr, 0, 0, 0);
    TextEngine::Show(cr, shaped, 3.0, 5.0);
    cairo_destroy(cr);
    cairo_surface_flush(surface);
    const unsigned char* data = cairo_image_surface_get_data(surface);
    std::vector<unsigned char> pixels(data, data + cairo_image_surface_get_stride(surface) * 48);
    cairo_surface_destroy(surface);
    return pixels;
  };
  TextEngine::Box as_layout;
  as_layout.needs_layout = true;
  for (const FontDesc& desc : fonts) {
    const TextEngine::Font* font = engine.GetFont(desc);
    for (const std::wstring& text : texts) {
      const TextEngine::Shaped& run = engine.Layout(font, text, true, TextEngine::Box());
      ASSERT_NE(run.run, nullptr);
      const std::vector<unsigned char> run_pixels = draw(run);
      const PangoRectangle run_box = run.logical;
      const TextEngine::Shaped& layout = engine.Layout(font, text, true, as_layout);
      ASSERT_NE(layout.layout, nullptr);
      const std::string what = SStringW(text).ToUtf8() + " at " + std::to_string(desc.height) + " px";
      EXPECT_EQ(run_box.x, layout.logical.x) << what;
      EXPECT_EQ(run_box.y, layout.logical.y) << what;
      EXPECT_EQ(run_box.width, layout.logical.width) << what;
      EXPECT_EQ(run_box.height, layout.logical.height) << what;
      EXPECT_TRUE(run_pixels == draw(layout)) << what;
      EXPECT_NE(std::count(run_pixels.begin(), run_pixels.end(), 0), static_cast<long>(run_pixels.size())) << what;
    }
  }
  // What a run cannot do stays with the layout: underlines, other scripts,
  // control characters, wrapping.
  FontDesc underlined;
  underlined.underline = true;
  EXPECT_EQ(engine.Layout(engine.GetFont(underlined), L"12.34", true, TextEngine::Box()).run, nullptr);
  const TextEngine::Font* plain = engine.GetFont(FontDesc());
  for (const wchar_t* text : {L"\u4ef7\u683c", L"caf\u00e9", L"a\tb", L""}) {
    EXPECT_EQ(engine.Layout(plain, text, true, TextEngine::Box()).run, nullptr) << SStringW(text).ToUtf8();
  }
  TextEngine::Box wrap;
  wrap.width = 40;
  wrap.wrap = true;
  EXPECT_NE(engine.Layout(plain, L"12.34 56.78 90.12", false, wrap).layout, nullptr);
}

TEST_F(RenderTest, CharacterExtentsAgreeWithPrefixWidths) {
  UseFont(20);
  // Latin, ideographs, a combining mark (one cluster with its base), a NUL
  const wchar_t text[] = L"Wi\x65B0" L"e\x0301" L"x\0y";
  const int n = static_cast<int>(sizeof(text) / sizeof(text[0])) - 1;
  std::vector<int> ends(static_cast<size_t>(n), -1);
  rt_->MeasureCharExtents(text, n, ends.data());
  for (int i = 0; i < n; ++i) {
    if (i > 0) {
      EXPECT_GE(ends[i], ends[i - 1]) << i;
    }
    // e and its accent are one cluster and share its width
    // from the NUL on, which pango would stop at, the extents go on past it
    if (text[i] == L'e' || text[i] == L'\x0301' || i >= 6) continue;
    SIZE prefix{0, 0};
    rt_->MeasureText(text, i + 1, &prefix);
    EXPECT_NEAR(ends[i], prefix.cx, 2) << "after character " << i;
  }
  EXPECT_GE(ends[2] - ends[1], 18);  // the ideograph is about an em
  EXPECT_GT(ends[7], ends[6]);       // y after the NUL still has a width
}

TEST_F(RenderTest, BoldFontPutsDownMoreInk) {
  // The default face has no bold cut; fontconfig emboldens it, which keeps
  // the advances, so compare darkness rather than width.
  auto darkness = [this](int weight) {
    rt_->Clear(kWhite);
    UseFont(16, weight);
    CRect rc(0, 0, 100, 60);
    rt_->DrawText(L"Weight", -1, &rc, DT_SINGLELINE);
    long sum = 0;
    for (int y = 0; y < 60; ++y)
      for (int x = 0; x < 100; ++x) sum += 255 - GetRValue(rt_->GetPixel(x, y));
    return sum;
  };
  EXPECT_GT(darkness(700), darkness(400) * 11 / 10);
}

TEST_F(RenderTest, TextDrawsInTextColourInsideItsBox) {
  Reset(140, 40);
  UseFont(20);
  rt_->SetTextColor(kRed);
  CRect rc(5, 5, 135, 35);
  rt_->DrawText(L"新建窗口 Hi", -1, &rc, DT_SINGLELINE | DT_VCENTER);
  Keep("text_chinese");
  const CRect ink = Ink();
  EXPECT_FALSE(ink.IsRectEmpty());
  EXPECT_EQ((ink & rc), ink);
  // Glyph stems are fully covered somewhere: the colour is the text colour.
  bool solid = false;
  for (int y = ink.top; y < ink.bottom && !solid; ++y)
    for (int x = ink.left; x < ink.right && !solid; ++x) solid = rt_->GetPixel(x, y) == kRed;
  EXPECT_TRUE(solid);
}

struct AlignCase {
  const char* name;
  UINT format;
  int expect_x;  // -1 left, 0 centre, 1 right
  int expect_y;
};

class TextAlignTest : public RenderTest, public ::testing::WithParamInterface<AlignCase> {};

TEST_P(TextAlignTest, InkSitsWhereTheFormatSays) {
  Reset(200, 80);
  UseFont(16);
  const CRect rc(10, 10, 190, 70);
  CRect r = rc;
  rt_->DrawText(L"Align", -1, &r, GetParam().format | DT_SINGLELINE);
  const CRect ink = Ink();
  ASSERT_FALSE(ink.IsRectEmpty());
  const int slack = 4;  // side bearings and the line's leading
  switch (GetParam().expect_x) {
    case -1: EXPECT_NEAR(ink.left, rc.left, slack); break;
    case 0: EXPECT_NEAR((ink.left + ink.right) / 2, (rc.left + rc.right) / 2, slack); break;
    case 1: EXPECT_NEAR(ink.right, rc.right, slack); break;
  }
  switch (GetParam().expect_y) {
    case -1: EXPECT_NEAR(ink.top, rc.top, slack + 2); break;
    case 0: EXPECT_NEAR((ink.top + ink.bottom) / 2, (rc.top + rc.bottom) / 2, slack); break;
    case 1: EXPECT_NEAR(ink.bottom, rc.bottom, slack + 2); break;
  }
}

INSTANTIATE_TEST_SUITE_P(
    Formats, TextAlignTest,
    ::testing::Values(AlignCase{"TopLeft", DT_LEFT | DT_TOP, -1, -1},
                      AlignCase{"Centre", DT_CENTER | DT_VCENTER, 0, 0},
                      AlignCase{"BottomRight", DT_RIGHT | DT_BOTTOM, 1, 1},
                      AlignCase{"TopCentre", DT_CENTER, 0, -1}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(RenderTest, VerticalCentringNeedsSingleLine) {
  Reset(200, 80);
  UseFont(16);
  CRect rc(10, 10, 190, 70);
  rt_->DrawText(L"Multi", -1, &rc, DT_VCENTER);
  EXPECT_LT(Ink().top, 20);  // Win32 ignores DT_VCENTER for multi-line text
}

TEST_F(RenderTest, EllipsisShortensTextToFitTheBox) {
  Reset(200, 30);
  UseFont(14);
  const wchar_t* text = L"A rather long caption that cannot fit";
  CRect clipped(0, 0, 100, 30), ellipsized(0, 0, 100, 30);
  rt_->DrawText(text, -1, &clipped, DT_SINGLELINE | DT_NOCLIP);
  const CRect overflow = Ink();
  rt_->Clear(kWhite);
  rt_->DrawText(text, -1, &ellipsized, DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOCLIP);
  Keep("text_ellipsis");
  const CRect shortened = Ink();
  EXPECT_GT(overflow.right, 100);  // without the flag the text runs on
  EXPECT_LE(shortened.right, 100);
  EXPECT_GT(shortened.right, 60);  // most of the room is still used
}

TEST_F(RenderTest, WithoutNoClipTextIsCutAtTheBox) {
  UseFont(14);
  CRect rc(0, 0, 40, 30);
  rt_->DrawText(L"Overflowing words here", -1, &rc, DT_SINGLELINE);
  EXPECT_LE(Ink().right, 40);
  EXPECT_GT(Ink().right, 30);
}

TEST_F(RenderTest, WordBreakWrapsAtTheBoxWidth) {
  Reset(120, 100);
  UseFont(14);
  const wchar_t* text = L"one two three four five six";
  const CRect one = CalcRect(text, CRect(0, 0, 1000, 0), DT_SINGLELINE);
  const CRect wrapped = CalcRect(text, CRect(0, 0, 80, 0), DT_WORDBREAK);
  // One line: the measured text. Wrapped: at least three lines, no wider than asked.
  EXPECT_EQ(one.Width(), Measure(text).cx);
  EXPECT_EQ(one.Height(), Measure(text).cy);
  EXPECT_GE(wrapped.Height(), 3 * one.Height());
  EXPECT_LE(wrapped.Width(), 80);
  EXPECT_GT(wrapped.Width(), 30);

  CRect rc(0, 0, 80, 100);
  rt_->DrawText(text, -1, &rc, DT_WORDBREAK);
  Keep("text_wordbreak");
  const CRect ink = Ink();
  EXPECT_LE(ink.right, 80);
  EXPECT_GE(ink.Height(), 2 * one.Height());
}

TEST_F(RenderTest, WrappedEllipsisDropsLinesBelowTheBox) {
  Reset(120, 120);
  UseFont(14);
  const wchar_t* text = L"one two three four five six seven eight nine ten";
  const int line = Measure(text).cy;
  CRect rc(0, 0, 80, 2 * line + 2);
  rt_->DrawText(text, -1, &rc, DT_WORDBREAK | DT_NOCLIP);
  EXPECT_GT(Ink().bottom, rc.bottom);  // plain wrapping runs past the box
  rt_->Clear(kWhite);
  rt_->DrawText(text, -1, &rc, DT_WORDBREAK | DT_END_ELLIPSIS | DT_NOCLIP);
  Keep("text_wrapped_ellipsis");
  EXPECT_LE(Ink().bottom, rc.bottom);
  EXPECT_GT(Ink().bottom, line);  // both lines that fit are shown
}

TEST_F(RenderTest, TextOutStartsAtThePoint) {
  UseFont(14);
  rt_->TextOut(30, 20, L"Hi", -1);
  const SIZE sz = Measure(L"Hi");
  const CRect ink = Ink();
  EXPECT_NEAR(ink.left, 30, 3);
  EXPECT_GE(ink.top, 20);
  EXPECT_LE(ink.bottom, 20 + sz.cy);
}

TEST_F(RenderTest, CalcRectDrawsNothingAndKeepsTopLeft) {
  UseFont(14);
  CRect rc(7, 9, 8, 10);
  rt_->DrawText(L"measure me", -1, &rc, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_CALCRECT);
  EXPECT_EQ(rc.TopLeft(), CPoint(7, 9));
  EXPECT_GT(rc.Width(), 40);
  EXPECT_TRUE(Ink().IsRectEmpty());
}

TEST_F(RenderTest, ExplicitLineBreaksStackWithoutWordBreak) {
  UseFont(14);
  const CRect two = CalcRect(L"first\nsecond", CRect(0, 0, 500, 0), 0);
  const CRect single = CalcRect(L"first\nsecond", CRect(0, 0, 500, 0), DT_SINGLELINE);
  EXPECT_GE(two.Height(), 2 * single.Height() - 1);
  EXPECT_EQ(two.Width(), Measure(L"second").cx);
}

struct PrefixCase {
  const char* name;
  const wchar_t* text;
  UINT format;
  const wchar_t* same_as;  // measured without prefix processing
};

class PrefixTest : public RenderTest, public ::testing::WithParamInterface<PrefixCase> {};

TEST_P(PrefixTest, AmpersandsFollowTheFormat) {
  UseFont(14);
  const CRect rc = CalcRect(GetParam().text, CRect(0, 0, 500, 0), GetParam().format | DT_SINGLELINE);
  EXPECT_EQ(rc.Width(), Measure(GetParam().same_as).cx);
}

INSTANTIATE_TEST_SUITE_P(
    Prefixes, PrefixTest,
    ::testing::Values(PrefixCase{"MnemonicDropped", L"&Save", 0, L"Save"},
                      PrefixCase{"DoubledShowsOne", L"Fish && Chips", 0, L"Fish & Chips"},
                      PrefixCase{"TrailingKept", L"Tail&", 0, L"Tail&"},
                      PrefixCase{"NoPrefixLiteral", L"&Save && Co", DT_NOPREFIX, L"&Save && Co"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(RenderTest, UnderlineAddsInkBelowTheBaseline) {
  Reset(100, 40);
  FontDesc d;
  d.height = 16;
  rt_->SelectFont(rt_->CreateFont(d));
  CRect rc(5, 5, 95, 35);
  rt_->DrawText(L"acme", -1, &rc, DT_SINGLELINE);
  const CRect plain = Ink();
  rt_->Clear(kWhite);
  d.underline = true;
  rt_->SelectFont(rt_->CreateFont(d));
  rt_->DrawText(L"acme", -1, &rc, DT_SINGLELINE);
  EXPECT_GT(Ink().bottom, plain.bottom);
}

// ---- images ----

TEST_F(RenderTest, StretchedBitmapKeepsItsQuadrants) {
  const IBitmapPtr bmp = Blocks({{kRed, kGreen}, {kBlue, kBlack}}, 2);
  const CRect dst(0, 0, 40, 40);
  rt_->DrawBitmap(&dst, bmp.get(), nullptr, ExpandMode::Stretch, 255);
  EXPECT_EQ(rt_->GetPixel(5, 5), kRed);
  EXPECT_EQ(rt_->GetPixel(35, 5), kGreen);
  EXPECT_EQ(rt_->GetPixel(5, 35), kBlue);
  EXPECT_EQ(rt_->GetPixel(35, 35), kBlack);
}

TEST_F(RenderTest, SourcePartDoesNotBleedIntoStretch) {
  const IBitmapPtr bmp = Blocks({{kRed, kGreen}}, 4);
  const CRect src(4, 0, 8, 4), dst(0, 0, 40, 40);
  rt_->DrawBitmap(&dst, bmp.get(), &src, ExpandMode::Stretch, 255);
  // Every pixel, edges included, comes from the green half.
  EXPECT_EQ(rt_->GetPixel(0, 20), kGreen);
  EXPECT_EQ(rt_->GetPixel(39, 20), kGreen);
  EXPECT_EQ(Ink(), dst);
}

TEST_F(RenderTest, TileRepeatsAndNoneDrawsOnce) {
  const IBitmapPtr bmp = Blocks({{kRed, kBlue}}, 1);
  const CRect tile(0, 0, 9, 1), once(0, 10, 9, 11);
  rt_->DrawBitmap(&tile, bmp.get(), nullptr, ExpandMode::Tile, 255);
  rt_->DrawBitmap(&once, bmp.get(), nullptr, ExpandMode::None, 255);
  EXPECT_EQ(rt_->GetPixel(4, 0), kRed);
  EXPECT_EQ(rt_->GetPixel(7, 0), kBlue);
  EXPECT_EQ(rt_->GetPixel(9, 0), kWhite);
  EXPECT_EQ(rt_->GetPixel(1, 10), kBlue);
  EXPECT_EQ(rt_->GetPixel(2, 10), kWhite);
}

TEST_F(RenderTest, BitmapAlphaBlends) {
  const IBitmapPtr bmp = Blocks({{kBlack}}, 4);
  const CRect dst(0, 0, 4, 4);
  rt_->DrawBitmap(&dst, bmp.get(), nullptr, ExpandMode::Stretch, 128);
  EXPECT_NEAR(GetRValue(rt_->GetPixel(1, 1)), 127, 2);
}

TEST_F(RenderTest, NinePatchKeepsCornersAndStretchesTheMiddle) {
  Reset(80, 50);
  // 3x3 blocks of 4px: corners red, edges green, centre blue.
  const IBitmapPtr bmp = Blocks({{kRed, kGreen, kRed}, {kGreen, kBlue, kGreen}, {kRed, kGreen, kRed}}, 4);
  const CRect dst(0, 0, 80, 50), margins(4, 4, 4, 4);
  rt_->DrawBitmap9Patch(&dst, bmp.get(), nullptr, &margins, ExpandMode::Stretch, 255);
  Keep("ninepatch");
  for (const CPoint& p : {CPoint(0, 0), CPoint(3, 3), CPoint(76, 0), CPoint(79, 49), CPoint(0, 46)})
    EXPECT_EQ(rt_->GetPixel(p.x, p.y), kRed) << p.x << "," << p.y;
  for (const CPoint& p : {CPoint(40, 0), CPoint(40, 3), CPoint(0, 25), CPoint(79, 25), CPoint(40, 49)})
    EXPECT_EQ(rt_->GetPixel(p.x, p.y), kGreen) << p.x << "," << p.y;
  EXPECT_EQ(rt_->GetPixel(40, 25), kBlue);
  EXPECT_EQ(rt_->GetPixel(6, 6), kBlue);
}

TEST_F(RenderTest, NinePatchMarginsShrinkInASmallBox) {
  const IBitmapPtr bmp = Blocks({{kRed, kGreen, kBlue}}, 4);  // 12x4, margins 4 and 4
  const CRect dst(0, 0, 6, 4), margins(4, 0, 4, 0);
  rt_->DrawBitmap9Patch(&dst, bmp.get(), nullptr, &margins, ExpandMode::Stretch, 255);
  // Only the two margins remain, three pixels each.
  EXPECT_EQ(rt_->GetPixel(0, 2), kRed);
  EXPECT_EQ(rt_->GetPixel(2, 2), kRed);
  EXPECT_EQ(rt_->GetPixel(3, 2), kBlue);
  EXPECT_EQ(rt_->GetPixel(5, 2), kBlue);
}

TEST_F(RenderTest, ResizeBitmapScalesEachFramePart) {
  const IBitmapPtr bmp = Blocks({{kRed, kGreen}}, 4);
  const CRect green(4, 0, 8, 4);
  const IBitmapPtr big = ResizeBitmap(*bmp, &green, 10, 6);
  ASSERT_TRUE(big);
  EXPECT_EQ(big->Width(), 10);
  EXPECT_EQ(big->Height(), 6);
  const CRect dst(0, 0, 10, 6);
  rt_->DrawBitmap(&dst, big.get(), nullptr, ExpandMode::None, 255);
  EXPECT_EQ(Ink(), dst);
  EXPECT_EQ(rt_->GetPixel(0, 0), kGreen);
  EXPECT_EQ(rt_->GetPixel(9, 5), kGreen);
}

TEST_F(RenderTest, PngRoundTripsThroughFileAndMemory) {
  const CRect rc(0, 0, 50, 30);
  rt_->FillSolidRect(&rc, kBlue);
  const std::string path = ::testing::TempDir() + "render_roundtrip_" + std::to_string(getpid()) + ".png";
  ASSERT_TRUE(rt_->SavePng(path));

  const IBitmapPtr from_file = factory_.LoadBitmapFromFile(SStringW::FromUtf8(path));
  std::ifstream in(path, std::ios::binary);
  const std::string bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  const IBitmapPtr from_memory = factory_.LoadBitmapFromMemory(bytes.data(), bytes.size());
  for (const IBitmapPtr& bmp : {from_file, from_memory}) {
    ASSERT_TRUE(bmp);
    EXPECT_EQ(bmp->Width(), 100);
    rt_->Clear(kWhite);
    const CRect dst(0, 0, 100, 60);
    rt_->DrawBitmap(&dst, bmp.get(), nullptr, ExpandMode::None, 255);
    EXPECT_EQ(rt_->GetPixel(10, 10), kBlue);
    EXPECT_EQ(rt_->GetPixel(60, 40), kWhite);
  }
  std::remove(path.c_str());
}

TEST_F(RenderTest, UnreadableImagesGiveNull) {
  const char junk[] = "not a png at all";
  EXPECT_FALSE(factory_.LoadBitmapFromMemory(junk, sizeof junk));
  EXPECT_FALSE(factory_.LoadBitmapFromMemory(nullptr, 0));
  EXPECT_FALSE(factory_.LoadBitmapFromFile(L"/nonexistent/image.png"));
}

// ---- clips and layers ----

TEST_F(RenderTest, ClipsNestAndPopRestores) {
  const CRect outer(10, 10, 60, 50), inner(40, 0, 90, 30), all(0, 0, 100, 60);
  rt_->PushClipRect(&outer);
  rt_->PushClipRect(&inner);
  EXPECT_EQ(rt_->GetClipBox(), CRect(40, 10, 60, 30));
  rt_->FillSolidRect(&all, kRed);
  EXPECT_EQ(Ink(), CRect(40, 10, 60, 30));
  rt_->PopClip();
  EXPECT_EQ(rt_->GetClipBox(), outer);
  rt_->FillSolidRect(&all, kBlue);
  rt_->PopClip();
  rt_->PopClip();  // unbalanced: ignored
  EXPECT_EQ(rt_->GetClipBox(), all);
  EXPECT_EQ(Ink(), outer);
}

TEST_F(RenderTest, LayerCompositesItsContentOnceWithItsAlpha) {
  const CRect a(0, 0, 30, 30), b(20, 0, 50, 30);
  rt_->PushLayer(128);
  rt_->FillSolidRect(&a, kBlack);
  rt_->FillSolidRect(&b, kBlack);  // overlap is not darker: the group blends as one
  rt_->PopLayer();
  EXPECT_NEAR(GetRValue(rt_->GetPixel(10, 10)), 127, 2);
  EXPECT_EQ(rt_->GetPixel(25, 10), rt_->GetPixel(10, 10));
  EXPECT_EQ(rt_->GetPixel(60, 10), kWhite);
}

TEST_F(RenderTest, PopClipDoesNotCloseALayer) {
  const CRect clip(0, 0, 10, 10), all(0, 0, 100, 60);
  rt_->PushClipRect(&clip);
  rt_->PushLayer(255);
  rt_->PopClip();  // mismatched: the layer is still open
  rt_->FillSolidRect(&all, kRed);
  rt_->PopLayer();
  rt_->PopClip();
  EXPECT_EQ(Ink(), clip);
  EXPECT_EQ(rt_->GetClipBox(), all);
}

// ---- a whole scene against its reference ----

TEST_F(RenderTest, ShapesSceneMatchesReference) {
  Reset(96, 64);
  const CRect frame(0, 0, 96, 64);
  rt_->FillSolidRect(&frame, RGBA(240, 240, 240, 255));
  rt_->SelectBrush(rt_->CreateSolidColorBrush(RGBA(40, 120, 220, 255)));
  const CRect pill(6, 6, 54, 26);
  rt_->FillRoundRect(&pill, POINT{10, 10});
  rt_->SelectPen(rt_->CreatePen(PS_SOLID, RGBA(200, 40, 40, 255), 2));
  const CRect ring(60, 4, 90, 30);
  rt_->DrawEllipse(&ring);
  const IBitmapPtr bmp = Blocks({{kRed, kGreen, kRed}, {kGreen, kWhite, kGreen}, {kRed, kGreen, kRed}}, 3);
  const CRect patch(6, 32, 60, 58), margins(3, 3, 3, 3);
  rt_->DrawBitmap9Patch(&patch, bmp.get(), nullptr, &margins, ExpandMode::Stretch, 255);
  const CRect clip(64, 34, 90, 60), big(0, 0, 96, 64);
  rt_->PushClipRect(&clip);
  rt_->PushLayer(128);
  rt_->FillSolidRect(&big, kBlack);
  rt_->PopLayer();
  rt_->PopClip();
  Keep("shapes_scene");
  EXPECT_TRUE(MatchesReferencePng(*rt_, DataPath("shapes_scene.png"), 4, 0.01));
}

TEST(PngCompareTest, ReportsDifferencesAndWritesTheActualImage) {
  CairoRenderFactory factory;
  auto rt = factory.CreateCairoTarget(20, 10);
  rt->Clear(RGBA(255, 255, 255, 255));
  // A directory of this process's own: tests run side by side.
  const std::string dir = ::testing::TempDir() + "cmp_" + std::to_string(getpid());
  ::mkdir(dir.c_str(), 0755);
  const std::string ref = dir + "/cmp_ref.png";
  ASSERT_TRUE(rt->SavePng(ref));
  EXPECT_TRUE(ComparePng(rt->Surface(), ref, 0, 0.0).match);

  // Two pixels change: within a 1% allowance they do not, beyond it they do.
  const CRect two(0, 0, 2, 1);
  rt->FillSolidRect(&two, RGBA(250, 255, 255, 255));
  EXPECT_TRUE(ComparePng(rt->Surface(), ref, 5, 0.0).match);
  EXPECT_TRUE(ComparePng(rt->Surface(), ref, 4, 0.01).match);
  const std::string out_dir = dir + "/out";
  ::mkdir(out_dir.c_str(), 0755);
  const PngCompareResult r = ComparePng(rt->Surface(), ref, 4, 0.0, out_dir);
  EXPECT_FALSE(r.match);
  EXPECT_EQ(r.differing, 2);
  // The message names the written image, and it holds what was rendered.
  const std::string actual = out_dir + "/cmp_ref.actual.png";
  EXPECT_NE(r.message.find(actual), std::string::npos) << r.message;
  EXPECT_TRUE(ComparePng(rt->Surface(), actual, 0, 0.0, out_dir).match);
  std::remove(actual.c_str());
  std::remove(ref.c_str());
  ::rmdir(out_dir.c_str());
  ::rmdir(dir.c_str());
}

}  // namespace
}  // namespace SOUI
