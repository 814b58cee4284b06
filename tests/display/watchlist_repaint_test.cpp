// A watchlist of red-green labels receiving quotes: a tick repaints only the
// labels that changed, an unchanged quote repaints nothing, and whatever
// happens between ticks (moves, hiding, showing, a recolour broadcast,
// removal) the partly repainted frame equals a full repaint of the same state.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "backends/cairo_render.h"
#include "display/market_values.h"
#include "library_test_base.h"
#include "qvhost/config.h"
#include "qvhost/message_dispatch.h"

namespace QVStandardCtrls {
namespace {

using SOUI::CRect;
using SOUI::SStringW;

constexpr int kCols = 10, kRows = 12, kCellW = 60, kCellH = 20;

class WatchlistRepaintTest : public test::LibraryTestBase {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    std::wstring xml = L"<SOUI width='" + std::to_wstring(kCols * kCellW) + L"' height='" +
                       std::to_wstring(kRows * kCellH) + L"'><root colorBkgnd='#FFFFFF'>";
    for (int i = 0; i < kCols * kRows; ++i) {
      xml += L"<qv_redgreen name='q" + std::to_wstring(i) + L"' pos='" + std::to_wstring(i % kCols * kCellW) +
             L"," + std::to_wstring(i / kCols * kCellH) + L",@" + std::to_wstring(kCellW) + L",@" +
             std::to_wstring(kCellH) + L"' colorBkgnd='#FFFFFF' text='10.00' compare='1000' current='1000'/>";
    }
    CreateHost((xml + L"</root></SOUI>").c_str());
  }
  CQVRedGreenStatic* Quote(int i) { return Find<CQVRedGreenStatic>((L"q" + std::to_wstring(i)).c_str()); }
  void SetQuote(int i, int cents) {
    wchar_t text[16];
    std::swprintf(text, 16, L"%d.%02d", cents / 100, cents % 100);
    Quote(i)->SetWindowText(text);
    Quote(i)->SetCurrent(cents);
  }
  std::vector<unsigned char> Pixels() {
    auto* frame = dynamic_cast<SOUI::CairoRenderTarget*>(host()->Render());
    if (!frame) return {};
    cairo_surface_t* s = frame->Surface();
    cairo_surface_flush(s);
    const unsigned char* data = cairo_image_surface_get_data(s);
    return std::vector<unsigned char>(data, data + cairo_image_surface_get_stride(s) * cairo_image_surface_get_height(s));
  }
};

TEST_F(WatchlistRepaintTest, ATickRepaintsTheChangedQuotesAndAnUnchangedQuoteNothing) {
  host()->Render();
  SetQuote(0, 1012);                    // top-left
  SetQuote(kCols * kRows - 1, 990);     // bottom-right
  host()->Render();
  const SOUI::SRegion& painted = host()->GetPaintedRegion();
  EXPECT_EQ(painted.GetCount(), 2u);
  int repainted = 0;
  for (int i = 0; i < kCols * kRows; ++i) repainted += painted.Intersects(Quote(i)->GetWindowRect());
  EXPECT_EQ(repainted, 2);

  // The same quote again, by setter and by attribute: nothing invalidated.
  SetQuote(0, 1012);
  Quote(kCols * kRows - 1)->SetAttribute(L"current", L"990", FALSE);
  Quote(kCols * kRows - 1)->SetAttribute(L"compare", L"1000", FALSE);
  EXPECT_TRUE(host()->GetDirtyRegion().IsEmpty());
  EXPECT_FALSE(host()->GetRoot()->IsLayoutDirty());
}

TEST_F(WatchlistRepaintTest, PartialFramesEqualAFullRepaintWhateverHappensBetweenTicks) {
  std::mt19937 rng(11);
  std::vector<int> alive;
  for (int i = 0; i < kCols * kRows; ++i) alive.push_back(i);
  host()->Render();
  bool red_rise = true;
  for (int tick = 0; tick < 24; ++tick) {
    for (int k = 0; k < 8; ++k) SetQuote(alive[rng() % alive.size()], 980 + static_cast<int>(rng() % 41));
    const int pick = alive[rng() % alive.size()];
    switch (tick % 6) {
      case 0: {  // moved by half a cell, over its neighbours
        const CRect rc = Quote(pick)->GetWindowRect();
        Quote(pick)->Move(rc.left + kCellW / 2, rc.top + kCellH / 2, kCellW, kCellH);
        break;
      }
      case 1:
        Quote(pick)->SetVisible(FALSE, TRUE);
        break;
      case 2:
        for (int i : alive) Quote(i)->SetVisible(TRUE, TRUE);
        break;
      case 3:  // the rise/fall convention flips for every label
        red_rise = !red_rise;
        GetUserSettings(*app_).SetBool(kQVCfgRedRise, red_rise);
        GetMessageDispatch(*app_).Send(kQVMsgRiseFallColorChanged);
        break;
      case 4:
        Quote(pick)->DestroyWindow();
        alive.erase(std::find(alive.begin(), alive.end(), pick));
        break;
      default:
        break;  // quotes only
    }
    const std::vector<unsigned char> partial = Pixels();
    ASSERT_FALSE(partial.empty());
    host()->GetRoot()->Invalidate();
    ASSERT_TRUE(partial == Pixels()) << "stale pixels after tick " << tick;
  }
}

}  // namespace
}  // namespace QVStandardCtrls
