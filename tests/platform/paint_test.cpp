// Window painting: order, inheritance, alpha, clipping and dirty regions on
// the recording target; real pixels of small themed layouts at two zooms.
#include <gtest/gtest.h>

#include "backends/cairo_render.h"
#include "soui/stdctrls.h"
#include "testing/png_compare.h"
#include "testing/recording_render.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

class PaintTest : public test::UiTestBase {
 protected:
  // Paints the whole host onto a fresh recording target.
  RecordingRenderTarget& Record() {
    host()->UpdateLayout();
    rec_ = std::make_unique<RecordingRenderTarget>(host()->GetClientRect().Width(),
                                                   host()->GetClientRect().Height());
    host()->GetRoot()->RedrawRegion(rec_.get(), host()->GetClientRect());
    return *rec_;
  }
  // Index of the first recorded call containing text, or -1.
  int IndexOf(const std::string& text) const {
    const auto& calls = rec_->Calls();
    for (size_t i = 0; i < calls.size(); ++i) {
      if (calls[i].find(text) != std::string::npos) return static_cast<int>(i);
    }
    return -1;
  }
  std::unique_ptr<RecordingRenderTarget> rec_;
};

TEST_F(PaintTest, BackToFrontWithInheritedFontAndColour) {
  CreateHostWithChildren(
      L"<window name='panel' pos='0,0,200,100' colorBkgnd='#102030' colorText='#FF0000' font='size:20'>"
      L"  <text name='inherits' pos='0,0,100,30'>first</text>"
      L"  <text name='own' pos='0,40,100,70' colorText='#00FF00' font='size:10,bold:1'>second</text>"
      L"</window>"
      L"<window name='top' pos='50,50,150,150' colorBkgnd='#FFFFFF'/>",
      300, 200);
  Record();
  const int panel = IndexOf("FillSolidRect [0,0,200,100] #102030FF");
  const int first = IndexOf("DrawText \"first\"");
  const int second = IndexOf("DrawText \"second\"");
  const int top = IndexOf("FillSolidRect [50,50,150,150] #FFFFFFFF");
  ASSERT_GE(panel, 0);
  EXPECT_LT(panel, first);
  EXPECT_LT(first, second);
  EXPECT_LT(second, top);  // a later sibling paints over the earlier ones
  // The child without its own colour and font paints with its parent's.
  EXPECT_NE(rec_->Calls()[first].find("color=#FF0000FF font=20/400"), std::string::npos) << rec_->Calls()[first];
  EXPECT_NE(rec_->Calls()[second].find("color=#00FF00FF font=10/700"), std::string::npos) << rec_->Calls()[second];
}

TEST_F(PaintTest, AlphaWrapsTheSubtreeAndClipClientClipsChildren) {
  CreateHostWithChildren(
      L"<window name='faded' pos='0,0,100,100' alpha='128'><window pos='0,0,50,50' colorBkgnd='#FF0000'/></window>"
      L"<window name='clipper' pos='100,0,200,100' clipClient='1' margin='5'>"
      L"  <window pos='-50,-50,300,300' colorBkgnd='#00FF00'/></window>",
      300, 200);
  Record();
  const int layer = IndexOf("PushLayer 128");
  const int red = IndexOf("#FF0000FF");
  const int pop = IndexOf("PopLayer");
  ASSERT_GE(layer, 0);
  EXPECT_LT(layer, red);
  EXPECT_LT(red, pop);
  const int clip = IndexOf("PushClipRect [105,5,195,95]");  // the client area, inside the margin
  const int green = IndexOf("#00FF00FF");
  ASSERT_GE(clip, 0);
  EXPECT_LT(clip, green);
  EXPECT_GT(IndexOf("PopClip"), green);
}

TEST_F(PaintTest, OnlyDirtyWindowsRepaint) {
  CreateHostWithChildren(L"<text name='a' pos='0,0,100,20'>a</text><text name='b' pos='0,30,100,50'>b</text>", 200, 100);
  host()->Render();
  EXPECT_TRUE(host()->GetDirtyRect().IsRectEmpty());
  const int painted = host()->GetPaintCount();
  host()->Render();
  EXPECT_EQ(host()->GetPaintCount(), painted);  // nothing dirty, nothing painted
  Find(L"b")->SetWindowText(L"changed");
  EXPECT_EQ(host()->GetDirtyRect(), CRect(0, 30, 100, 50));
  host()->Render();
  EXPECT_EQ(host()->GetPaintCount(), painted + 1);
}

// Children placed inside a parent that was just placed add nothing to the
// dirty region; once painted, every later move is dirty again, whether the
// child moves alone or with its parent.
TEST_F(PaintTest, EveryPlacementAfterAPaintIsRepainted) {
  CreateHostWithChildren(L"<window name='p' pos='10,10,@100,@60'><window name='c' pos='0,0,@20,@20'/></window>",
                         200, 100);
  const auto dirty_covers = [this](const CRect& rc) {
    SRegion region = host()->GetDirtyRegion();
    region.Normalize();
    long long area = 0;
    region.ForEachPart(rc, [&](const CRect& part) { area += static_cast<long long>(part.Width()) * part.Height(); });
    return area == static_cast<long long>(rc.Width()) * rc.Height();
  };
  host()->Render();
  ASSERT_TRUE(host()->GetDirtyRegion().IsEmpty());
  SWindow* p = Find(L"p");
  SWindow* c = Find(L"c");
  ASSERT_EQ(c->GetWindowRect(), CRect(10, 10, 30, 30));
  // The child moves inside its parent, which stays where it is.
  ASSERT_EQ(c->SetAttribute(L"pos", L"50,30,@20,@20", FALSE), S_FALSE);
  host()->UpdateLayout();
  EXPECT_EQ(c->GetWindowRect(), CRect(60, 40, 80, 60));
  EXPECT_TRUE(dirty_covers(CRect(10, 10, 30, 30)));
  EXPECT_TRUE(dirty_covers(CRect(60, 40, 80, 60)));
  EXPECT_FALSE(dirty_covers(CRect(10, 40, 30, 60)));  // the rest of the parent is not dirty
  host()->Render();
  // The parent moves, and the child in it.
  ASSERT_EQ(p->SetAttribute(L"pos", L"90,30,@100,@60", FALSE), S_FALSE);
  host()->UpdateLayout();
  EXPECT_TRUE(dirty_covers(CRect(10, 10, 110, 70)));
  EXPECT_TRUE(dirty_covers(CRect(90, 30, 190, 90)));
  host()->Render();
  // Again the child alone: its parent's earlier placement was painted.
  ASSERT_EQ(c->SetAttribute(L"pos", L"0,0,@20,@20", FALSE), S_FALSE);
  host()->UpdateLayout();
  EXPECT_TRUE(dirty_covers(CRect(140, 60, 160, 80)));
  EXPECT_TRUE(dirty_covers(CRect(90, 30, 110, 50)));
  EXPECT_FALSE(dirty_covers(CRect(120, 30, 140, 50)));
}

TEST_F(PaintTest, RepaintingTranslucentContentDoesNotAccumulate) {
  CreateHostWithChildren(L"<window name='glass' pos='0,0,50,50' colorBkgnd='#FF000080'/>", 100, 100);
  auto* frame = dynamic_cast<CairoRenderTarget*>(host()->Render());
  ASSERT_NE(frame, nullptr);
  const COLORREF first = frame->GetPixel(10, 10);
  for (int i = 0; i < 3; ++i) {
    Find(L"glass")->Invalidate();
    host()->Render();
  }
  EXPECT_EQ(frame->GetPixel(10, 10), first);  // the dirty area starts clear each time
  EXPECT_NEAR(GetAValue(first), 0x80, 2);
  EXPECT_EQ(GetAValue(frame->GetPixel(70, 70)), 0);  // nothing painted there
}

// Small themed layouts against checked-in pictures, at 100 % and 150 %.
class ThemedScreenshotTest : public test::UiTestBase, public ::testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    ASSERT_TRUE(app_->GetResProvider().LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml")));
  }
};

TEST_P(ThemedScreenshotTest, LabelsImagesAndBorders) {
  const int zoom = GetParam();
  app_->SetZoom(zoom);
  CreateHost(
      L"<SOUI width='220dp' height='90dp'><root colorBkgnd='#FFFFFF' padding='8dp'>"
      L"<text pos='0,0,-0,@20dp' font='size:13dp' colorText='@color\\style_skin_qv_text\\text_h1'>Rise 新建窗口</text>"
      L"<text pos='0,[4dp,-0,@20dp' align='right' font='size:12dp,bold:1' colorText='@color\\style_skin_qv_text\\text_rise'>+1.25%</text>"
      L"<window pos='0,[6dp,@80dp,@24dp' margin='1dp' colorBorder='#C0C4CC' colorBkgnd='#F2F3F5'>"
      L"  <text pos='|0,|0' offset='-0.5,-0.5' font='size:12dp' colorText='@color\\style_skin_qv_text\\text_fall'>-0.30</text>"
      L"</window>"
      L"<img pos='-0,{0' offset='-1,0' skin='skin_basewnd_btn_close'/>"
      L"</root></SOUI>");
  ASSERT_NE(host()->Render(), nullptr);
  auto* frame = dynamic_cast<CairoRenderTarget*>(host()->GetFrame());
  ASSERT_NE(frame, nullptr);
  EXPECT_EQ(frame->GetSize(), CSize(220 * zoom / 100, 90 * zoom / 100));
  const std::string ref = std::string(QV_SOURCE_DIR "/tests/data/paint_labels_") + std::to_string(zoom) + ".png";
  // Fonts may differ by a pixel between machines: a loose tolerance on few pixels.
  EXPECT_TRUE(MatchesReferencePng(*frame, ref, 64, 0.03));
}

INSTANTIATE_TEST_SUITE_P(Zoom, ThemedScreenshotTest, ::testing::Values(100, 150));

}  // namespace
}  // namespace SOUI
