// The gallery as a person sees it, at 100 %, 150 % and 200 % in both themes:
// no control of a page lies over another, every text stands out from what
// is drawn behind it (at least 3:1, the contrast asked of large text and
// of interface parts), and in a 1280x800 window every card can be scrolled
// into view.
#include <gtest/gtest.h>

#include <algorithm>
#include <cwctype>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "apps/gallery/gallery.h"
#include "backends/cairo_render.h"
#include "display/legend.h"
#include "framework/control_classes.h"
#include "soui/qvrichtext.h"
#include "soui/scrollview.h"
#include "tabs/item_base.h"
#include "testing/contrast.h"
#include "testing/ui_test_base.h"

namespace {

using SOUI::CRect;
using SOUI::SStringW;
using SOUI::SWindow;

using SOUI::test::ContrastRatio;

std::string Describe(const SWindow* w) {
  std::string s = SStringW(w->GetObjectClass()).ToUtf8();
  if (!w->GetName().IsEmpty()) s += " '" + w->GetName().ToUtf8() + "'";
  if (!w->GetWindowText().IsEmpty()) s += " \"" + w->GetWindowText().ToUtf8() + "\"";
  const CRect r = w->GetWindowRect();
  return s + " [" + std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
         std::to_string(r.bottom) + "]";
}

bool Shown(const SWindow* w) { return w->IsVisible(TRUE) && !w->GetWindowRect().IsRectEmpty(); }

// Which card a window is on, for the messages.
std::string CardOf(const SWindow* w) {
  for (; w; w = w->GetParent()) {
    if (w->GetName().Left(5) == L"card_") return w->GetName().ToUtf8();
  }
  return "header";
}

// Layout containers: what a page author places controls in. Controls that
// build their own insides (tab items, composite edits) arrange those
// themselves and are checked by their own tests.
bool IsPageContainer(const SWindow* w) {
  const SStringW cls = w->GetObjectClass();
  return cls == L"window" || cls == L"root";
}

// Drawn faint on purpose, as inactive parts may be: a disabled window, the
// title of a disabled tab, a legend entry switched off, and the disabled
// text styles shown as such.
bool Muted(const SWindow* w) {
  if (w->IsDisabled(TRUE)) return true;
  for (const SWindow* a = w; a; a = a->GetParent()) {
    if (auto* item = dynamic_cast<const QVStandardCtrls::CQVItemBase*>(a); item && !item->IsEnable()) return true;
    if (auto* legend = dynamic_cast<const QVStandardCtrls::CQVLegend*>(a); legend && !legend->IsLegendChecked()) {
      return true;
    }
  }
  return false;
}

class GalleryLookTest : public SOUI::test::UiTestBase,
                        public ::testing::WithParamInterface<std::tuple<int, bool>> {
 protected:
  void Build(bool full_height) {
    const auto [zoom, dark] = GetParam();
    ASSERT_TRUE(gallery::LoadTheme(*app_, dark));
    QVStandardCtrls::RegisterQVStandardCtrls(app_->GetFactory());
    app_->SetZoom(zoom);
    ASSERT_NE(CreateHost(gallery::BuildLayout(*app_, full_height).c_str()), nullptr);
    gallery::InstallPageBehaviour(*host());
    Advance(1000);  // entrance animations end
    Layout();
  }

  // Overlapping siblings in page containers, one line each.
  void FindOverlaps(const SWindow* parent, std::vector<std::string>* out) const {
    std::vector<const SWindow*> kids;
    for (const SWindow* c = parent->GetWindow(SOUI::GSW_FIRSTCHILD); c; c = c->GetWindow(SOUI::GSW_NEXTSIBLING)) {
      if (Shown(c)) kids.push_back(c);
    }
    if (IsPageContainer(parent)) {
      // A child covering all of its parent is an overlay (a loading screen
      // over what it stands for): it lies over its siblings by design.
      const auto overlay = [parent](const SWindow* w) { return w->GetWindowRect() == parent->GetClientRect(); };
      for (size_t i = 0; i < kids.size(); ++i) {
        if (overlay(kids[i])) continue;
        for (size_t j = i + 1; j < kids.size(); ++j) {
          if (overlay(kids[j])) continue;
          if (!(kids[i]->GetWindowRect() & kids[j]->GetWindowRect()).IsRectEmpty()) {
            out->push_back(CardOf(parent) + ": " + Describe(kids[i]) + " overlaps " + Describe(kids[j]));
          }
        }
      }
    }
    for (const SWindow* c : kids) FindOverlaps(c, out);
  }

  // Texts whose strongest pixel stands out less than 3:1 from the colour
  // most of their box shows (what is behind the text). Rich text is checked
  // piece by piece: one faint run among readable ones is still faint.
  void FindFaintTexts(SWindow* w, const SOUI::CairoRenderTarget& frame, std::vector<std::string>* out) const {
    if (!Shown(w) || Muted(w)) return;
    // Children under an overlay (one covering all of w) do not show.
    SWindow* first_shown = w->GetWindow(SOUI::GSW_FIRSTCHILD);
    for (SWindow* c = first_shown; c; c = c->GetWindow(SOUI::GSW_NEXTSIBLING)) {
      if (Shown(c) && c->GetWindowRect() == w->GetClientRect()) first_shown = c;
    }
    const bool leaf = !w->GetWindow(SOUI::GSW_FIRSTCHILD);
    for (SWindow* c = first_shown; c; c = c->GetWindow(SOUI::GSW_NEXTSIBLING)) FindFaintTexts(c, frame, out);
    if (!leaf) return;
    if (auto* rich = dynamic_cast<SOUI::QVRichText*>(w)) {
      const CRect area = rich->GetChildrenLayoutRect();
      for (const auto& piece : rich->LayoutFragments(area.Width())) {
        const std::wstring& t = piece.text.str();
        if (std::all_of(t.begin(), t.end(), [](wchar_t c) { return std::iswspace(c) || c == L'\u00A0'; })) continue;
        CRect box = piece.rc;
        box.OffsetRect(area.left, area.top);
        CheckBox(w, box & w->GetVisibleRect(), frame, "\"" + piece.text.ToUtf8() + "\" in ", out);
      }
    } else if (!SStringW(w->GetWindowText()).Trim().IsEmpty()) {
      // What shows of it: a scroll view may hide part or all of a window.
      CheckBox(w, w->GetVisibleRect(), frame, "", out);
    }
  }

  static void CheckBox(const SWindow* w, CRect box, const SOUI::CairoRenderTarget& frame, const std::string& what,
                       std::vector<std::string>* out) {
    box = box & CRect(SOUI::CPoint(0, 0), frame.GetSize());
    std::map<COLORREF, int> counts;
    for (int y = box.top; y < box.bottom; ++y) {
      for (int x = box.left; x < box.right; ++x) ++counts[frame.GetPixel(x, y) | 0xFF000000];
    }
    if (counts.empty()) return;
    const COLORREF behind =
        std::max_element(counts.begin(), counts.end(), [](auto& a, auto& b) { return a.second < b.second; })->first;
    double best = 1;
    for (const auto& [colour, n] : counts) best = std::max(best, ContrastRatio(colour, behind));
    if (best < 3.0) {
      char ratio[16];
      std::snprintf(ratio, sizeof ratio, "%.2f", best);
      out->push_back(CardOf(w) + ": " + what + Describe(w) + " contrast " + ratio);
    }
  }

  std::string Config() const {
    return std::to_string(std::get<0>(GetParam())) + "%" + (std::get<1>(GetParam()) ? " dark" : " light");
  }
};

std::string Lines(const std::vector<std::string>& v) {
  std::string s;
  for (const std::string& line : v) s += "  " + line + "\n";
  return s;
}

TEST_P(GalleryLookTest, NoControlLiesOverAnotherAndEveryTextStandsOut) {
  Build(true);
  auto* frame = dynamic_cast<SOUI::CairoRenderTarget*>(host()->Render());
  ASSERT_NE(frame, nullptr);
  if (const char* dir = std::getenv("QV_TEST_OUTPUT_DIR")) {
    frame->SavePng(std::string(dir) + "/gallery_" + std::to_string(std::get<0>(GetParam())) +
                   (std::get<1>(GetParam()) ? "_dark" : "") + ".png");
  }
  std::vector<std::string> overlaps, faint;
  FindOverlaps(host()->GetRoot(), &overlaps);
  FindFaintTexts(host()->GetRoot(), *frame, &faint);
  EXPECT_TRUE(overlaps.empty()) << Config() << ", overlapping:\n" << Lines(overlaps);
  EXPECT_TRUE(faint.empty()) << Config() << ", below 3:1:\n" << Lines(faint);
}

TEST_P(GalleryLookTest, EveryCardScrollsIntoAWindowOf1280x800) {
  Build(false);
  const CRect client = host()->GetClientRect();
  EXPECT_LE(client.Width(), 1280) << Config();
  EXPECT_LE(client.Height(), 800) << Config();
  auto* pages = Find<SOUI::SScrollView>(L"pages");
  ASSERT_NE(pages, nullptr);
  int cards = 0;
  for (SWindow* card = pages->GetWindow(SOUI::GSW_FIRSTCHILD); card; card = card->GetWindow(SOUI::GSW_NEXTSIBLING)) {
    ++cards;
    // Scrolled so that the card's top left corner is at the view's.
    const CRect view = pages->GetViewRect();
    const CRect at = card->GetWindowRect();
    const SOUI::CPoint origin = pages->GetViewOrigin();
    pages->SetViewOrigin(SOUI::CPoint(origin.x + at.left - view.left, origin.y + at.top - view.top));
    Layout();
    const CRect now = card->GetWindowRect();
    EXPECT_TRUE(view.PtInRect(now.TopLeft())) << Config() << ": " << Describe(card) << " not reachable";
    // Its right edge too: the view may be narrower than the card.
    const SOUI::CPoint left_aligned = pages->GetViewOrigin();
    pages->SetViewOrigin(SOUI::CPoint(left_aligned.x + std::max(0, now.right - view.right), left_aligned.y));
    Layout();
    EXPECT_LE(card->GetWindowRect().right, view.right) << Config() << ": " << Describe(card) << " cut on the right";
  }
  EXPECT_GE(cards, 10);
}

INSTANTIATE_TEST_SUITE_P(ZoomsAndThemes, GalleryLookTest,
                         ::testing::Combine(::testing::Values(100, 150, 200), ::testing::Bool()),
                         [](const auto& info) {
                           return std::to_string(std::get<0>(info.param)) + (std::get<1>(info.param) ? "_dark" : "_light");
                         });

}  // namespace
