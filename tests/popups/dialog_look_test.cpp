// The rendered message box: every layout (icon or not, heading or not, link
// or not, one to three buttons) on one sheet per zoom and theme, compared
// with its reference PNG.
#include <cairo.h>
#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "backends/cairo_render.h"
#include "library_test_base.h"
#include "popups/dialogs.h"
#include "testing/png_compare.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;
using Attr = QVDefaultDialogAttr;

class DialogLookTest : public LibraryTestBase, public ::testing::WithParamInterface<std::tuple<int, bool>> {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    zoom_ = std::get<0>(GetParam());
    dark_ = std::get<1>(GetParam());
    if (dark_) {
      ASSERT_TRUE(app_->GetResProvider().LoadUiDefFile(
          SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/dark/uires.xml")));
    }
    app_->SetZoom(zoom_);
    app_->SetMeasureTarget(nullptr);
  }
  int zoom_ = 100;
  bool dark_ = false;
};

struct BoxLayout {
  int icon;  // 0: none
  const wchar_t* title;
  const wchar_t* text;
  const wchar_t* link;
  int buttons;  // ButtonStyle
  int bottom_left;
  int width_class;
};

// A copy of the dialog's frame (the next dialog paints into its own).
cairo_surface_t* Snapshot(CQVDefaultDialog& dlg) {
  auto* rt = dynamic_cast<SOUI::CairoRenderTarget*>(dlg.Render());
  if (!rt) return nullptr;
  const SOUI::CRect rc = dlg.GetClientRect();
  cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, rc.Width(), rc.Height());
  cairo_t* cr = cairo_create(copy);
  cairo_set_source_surface(cr, rt->Surface(), 0, 0);
  cairo_paint(cr);
  cairo_destroy(cr);
  return copy;
}

TEST_P(DialogLookTest, MessageBoxSheet) {
  const BoxLayout layouts[] = {
      {0, L"", L"Order filled", L"", Attr::Btn_Ok, 0, 0},
      {Attr::Icon_Tips, L"Order", L"Cancel every open order of this account?", L"", Attr::Btn_OkCancel, 0, 0},
      {Attr::Icon_Warn, L"Connection", L"The quote server stopped answering. Retry now, keep waiting, or give up and "
                                       L"work offline?", L"Network settings", Attr::Btn_YesNoCancel, 0, 1},
      {Attr::Icon_Error, L"", L"The order was rejected: the price is outside the daily limit.", L"Why?",
       Attr::Btn_RetryCancel, Attr::BottomLeft_Check, 1},
      {0, L"Risk notice", L"Options can lose all their value. Read the <ln>risk disclosure</ln> before the first "
                          L"trade.", L"", Attr::Btn_OkCancel, Attr::BottomLeft_Link, 0},
      {Attr::Icon_Successed, L"", L"Transfer completed", L"", Attr::Btn_Ok, 0, 0},
  };
  std::vector<cairo_surface_t*> frames;
  for (const BoxLayout& l : layouts) {
    Attr a;
    a.title = l.title;
    a.content_title = l.title[0] ? L"Please confirm" : L"";
    a.content_text = l.text;
    a.link_text = l.link;
    a.SetContentIcon(static_cast<Attr::ContentIcon>(l.icon));
    a.SetButtonStyle(static_cast<Attr::ButtonStyle>(l.buttons));
    a.bottom_left_kind = l.bottom_left;
    a.bottom_left_text = l.bottom_left == Attr::BottomLeft_Check ? L"Do not ask again" : L"Help";
    a.width_class = l.width_class;
    CQVDefaultDialog dlg(a);
    ASSERT_NE(dlg.CreateDialogWnd(nullptr), nullptr);
    cairo_surface_t* f = Snapshot(dlg);
    ASSERT_NE(f, nullptr);
    frames.push_back(f);
  }
  // Two columns, each row as high as its taller box.
  const int cols = 2;
  std::vector<int> col_w(cols, 0), row_h((frames.size() + 1) / 2, 0);
  for (size_t i = 0; i < frames.size(); ++i) {
    col_w[i % cols] = std::max(col_w[i % cols], cairo_image_surface_get_width(frames[i]));
    row_h[i / cols] = std::max(row_h[i / cols], cairo_image_surface_get_height(frames[i]));
  }
  int sheet_w = 0, sheet_h = 0;
  for (int w : col_w) sheet_w += w;
  for (int h : row_h) sheet_h += h;
  cairo_surface_t* sheet = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, sheet_w, sheet_h);
  cairo_t* cr = cairo_create(sheet);
  if (dark_) cairo_set_source_rgb(cr, 0.09, 0.10, 0.12);
  else cairo_set_source_rgb(cr, 0.93, 0.94, 0.95);
  cairo_paint(cr);
  int y = 0;
  for (size_t r = 0; r < row_h.size(); ++r) {
    int x = 0;
    for (int c = 0; c < cols && r * cols + c < frames.size(); ++c) {
      cairo_set_source_surface(cr, frames[r * cols + c], x, y);
      cairo_paint(cr);
      x += col_w[c];
    }
    y += row_h[r];
  }
  cairo_destroy(cr);
  for (cairo_surface_t* f : frames) cairo_surface_destroy(f);
  cairo_surface_flush(sheet);
  const std::string ref = std::string(QV_SOURCE_DIR "/tests/data/qv_messagebox_") + std::to_string(zoom_) +
                          (dark_ ? "_dark" : "") + ".png";
  const SOUI::PngCompareResult r = SOUI::ComparePng(sheet, ref, 16, 0.01);
  cairo_surface_destroy(sheet);
  EXPECT_TRUE(r.match) << r.message;
}

INSTANTIATE_TEST_SUITE_P(ZoomsAndThemes, DialogLookTest,
                         ::testing::Combine(::testing::Values(100, 150), ::testing::Bool()),
                         [](const ::testing::TestParamInfo<std::tuple<int, bool>>& info) {
                           return std::to_string(std::get<0>(info.param)) +
                                  (std::get<1>(info.param) ? "_dark" : "_light");
                         });

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
