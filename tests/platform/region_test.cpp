// The dirty region: what it keeps (every pixel asked for, no pixel twice),
// what it joins, and the frame path painting only the windows that meet it.
#include "soui/region.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "backends/cairo_render.h"
#include "testing/recording_render.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

constexpr int kSide = 64;

// How often each pixel of a kSide x kSide canvas is covered.
std::vector<int> Coverage(const std::vector<CRect>& rects) {
  std::vector<int> count(kSide * kSide, 0);
  for (const CRect& r : rects) {
    for (int y = r.top; y < r.bottom; ++y) {
      for (int x = r.left; x < r.right; ++x) ++count[y * kSide + x];
    }
  }
  return count;
}

TEST(SRegionTest, NormalizedRegionCoversEverythingOnceAndAnswersLikeBruteForce) {
  std::mt19937 rng(7);
  for (int round = 0; round < 200; ++round) {
    SRegion region;
    std::vector<CRect> input;
    const int n = 1 + static_cast<int>(rng() % 24);
    for (int i = 0; i < n; ++i) {
      const int l = rng() % kSide, t = rng() % kSide;
      const CRect r(l, t, l + 1 + rng() % 16, t + 1 + rng() % 12);
      input.push_back(r & CRect(0, 0, kSide, kSide));
      region.Union(input.back());
    }
    region.Normalize();
    const std::vector<int> asked = Coverage(input), kept = Coverage(region.GetRects());
    for (int p = 0; p < kSide * kSide; ++p) {
      ASSERT_LE(kept[p], 1) << "pixel painted twice, round " << round;
      ASSERT_TRUE(asked[p] == 0 || kept[p] == 1) << "dirty pixel dropped, round " << round;
    }
    for (size_t i = 1; i < region.GetRects().size(); ++i) {
      ASSERT_LE(region.GetRects()[i - 1].top, region.GetRects()[i].top);
    }
    // Queries agree with a scan of the rectangles; parts are exactly the overlap.
    for (int q = 0; q < 20; ++q) {
      const int l = rng() % kSide, t = rng() % kSide;
      const CRect probe(l, t, l + 1 + rng() % 20, t + 1 + rng() % 20);
      bool meets = false;
      long overlap = 0;
      for (const CRect& r : region.GetRects()) {
        const CRect part = r & probe;
        meets |= !part.IsRectEmpty();
        if (!part.IsRectEmpty()) overlap += part.Width() * part.Height();
      }
      EXPECT_EQ(region.Intersects(probe), meets);
      long parts = 0;
      region.ForEachPart(probe, [&](const CRect& part) {
        EXPECT_EQ(part, part & probe);
        parts += part.Width() * part.Height();
      });
      EXPECT_EQ(parts, overlap);
    }
  }
}

TEST(SRegionTest, JoinsNeighboursExactlyAndKeepsDistantRectanglesApart) {
  SRegion region;
  region.Union(CRect(0, 0, 80, 20));
  region.Union(CRect(0, 0, 80, 20));  // the same label twice
  region.Union(CRect(80, 0, 160, 20));  // its neighbour in the row
  region.Union(CRect(800, 500, 880, 520));  // far away
  region.Normalize();
  ASSERT_EQ(region.GetCount(), 2u);
  EXPECT_EQ(region.GetRects()[0], CRect(0, 0, 160, 20));
  EXPECT_EQ(region.GetRects()[1], CRect(800, 500, 880, 520));
  EXPECT_EQ(region.GetBox(), CRect(0, 0, 880, 520));
  EXPECT_FALSE(region.Intersects(CRect(400, 200, 480, 220)));

  // Beyond the cap the region becomes its box rather than growing without end.
  SRegion many;
  for (size_t i = 0; i <= SRegion::kMaxRects; ++i) {
    const int x = static_cast<int>(i % 100) * 10, y = static_cast<int>(i / 100) * 10;
    many.Union(CRect(x, y, x + 5, y + 5));
  }
  many.Normalize();
  ASSERT_EQ(many.GetCount(), 1u);
  EXPECT_EQ(many.GetRects()[0], many.GetBox());
}

// A render factory whose frames record instead of drawing.
class RecordingFactory : public CairoRenderFactory {
 public:
  std::unique_ptr<IRenderTarget> CreateRenderTarget(int width, int height) override {
    return std::make_unique<RecordingRenderTarget>(width, height);
  }
};

class RegionPaintTest : public test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    app_->SetRenderFactory(std::make_unique<RecordingFactory>());
    app_->SetMeasureTarget(std::make_unique<RecordingRenderTarget>());  // fixed text metric
  }
  RecordingRenderTarget* Frame() { return static_cast<RecordingRenderTarget*>(host()->GetFrame()); }
};

TEST_F(RegionPaintTest, TwoChangesInOppositeCornersPaintTwoWindowsAndTheBackgroundBehindThem) {
  std::wstring cells;
  for (int i = 0; i < 100; ++i) {
    const int x = (i % 10) * 40, y = (i / 10) * 20;
    cells += L"<text name='c" + std::to_wstring(i) + L"' pos='" + std::to_wstring(x) + L"," +
             std::to_wstring(y) + L",@40,@20'>" + std::to_wstring(i) + L"</text>";
  }
  CreateHost((L"<SOUI width='400' height='200'><root colorBkgnd='#FFFFFF'>" + cells + L"</root></SOUI>").c_str());
  host()->Render();
  ASSERT_NE(Frame(), nullptr);
  EXPECT_EQ(Frame()->Count("DrawText"), 100);

  Frame()->Clear();
  Find(L"c0")->SetWindowText(L"first");
  Find(L"c99")->SetWindowText(L"last");
  host()->Render();
  EXPECT_EQ(Frame()->Count("DrawText"), 2) << Frame()->Dump();
  EXPECT_TRUE(Frame()->Contains("DrawText \"first\""));
  EXPECT_TRUE(Frame()->Contains("DrawText \"last\""));
  // The root's background is filled under the two cells only.
  EXPECT_TRUE(Frame()->Contains("FillSolidRect [0,0,400,200]"));
  EXPECT_EQ(Frame()->Count("PushClipRect [0,0,40,20]"), 1) << Frame()->Dump();
  EXPECT_EQ(Frame()->Count("PushClipRect [360,180,400,200]"), 1);
  EXPECT_EQ(host()->GetPaintedRegion().GetCount(), 2u);

  // The same texts again: nothing to repaint.
  Frame()->Clear();
  const int paints = host()->GetPaintCount();
  Find(L"c0")->SetWindowText(L"first");
  Find(L"c99")->SetAttribute(L"text", L"last", FALSE);
  EXPECT_TRUE(host()->GetDirtyRegion().IsEmpty());
  host()->Render();
  EXPECT_EQ(host()->GetPaintCount(), paints);
}

TEST_F(RegionPaintTest, ContentSizedWindowKeepingItsSizeRepaintsWithoutALayoutPass) {
  CreateHostWithChildren(L"<text name='price' pos='10,10' colorBkgnd='#FFFFFF'>12.34</text>", 200, 100);
  host()->Render();
  const CRect before = Find(L"price")->GetWindowRect();
  Find(L"price")->SetWindowText(L"56.78");  // same width in the fixed metric
  EXPECT_FALSE(host()->GetRoot()->IsLayoutDirty());
  Find(L"price")->SetWindowText(L"123.456");  // wider: laid out again
  EXPECT_TRUE(host()->GetRoot()->IsLayoutDirty());
  host()->Render();
  EXPECT_GT(Find(L"price")->GetWindowRect().Width(), before.Width());
}

}  // namespace
}  // namespace SOUI
