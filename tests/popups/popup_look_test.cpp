// The rendered look of the toast, the tooltip bar, the message box and the
// menus: one sheet per zoom and theme, compared with its reference PNG.
#include <cairo.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "backends/cairo_render.h"
#include "library_test_base.h"
#include "popups/dialogs.h"
#include "popups/guide.h"
#include "popups/menu.h"
#include "popups/toast.h"
#include "popups/tooltip.h"
#include "testing/contrast.h"
#include "testing/png_compare.h"

namespace QVStandardCtrls {
namespace test {
namespace {

using SOUI::SStringW;

class PopupLookTest : public LookTestBase {};

// Each icon on one line, then a message that wraps, stacked on a page colour.
TEST_P(PopupLookTest, ToastSheet) {
  CreateHost(L"<SOUI><root/></SOUI>", 600, 400);
  struct Shot {
    EnQVToastIconType type;
    const wchar_t* text;
  };
  const Shot shots[] = {{QVToastIcon_Tip, L"Quote subscription renewed"},
                        {QVToastIcon_Warning, L"Price is near the daily limit"},
                        {QVToastIcon_Success, L"Order filled"},
                        {QVToastIcon_Error, L"Order rejected"},
                        {QVToastIcon_Success,
                         L"Your conditional order has been placed and will be sent to the exchange once the "
                         L"trigger price is reached during trading hours"}};
  std::vector<cairo_surface_t*> frames;
  int sheet_w = 0, sheet_h = 0;
  const int gap = 8 * zoom_ / 100;
  for (const Shot& s : shots) {
    ASSERT_TRUE(IQVToast::TrackPopupToast(host()->m_hWnd, s.type, s.text, 0, 5000));
    Advance(120);
    std::shared_ptr<CQVToastWnd> toast = IQVToast::FindToastWnd(host()->m_hWnd);
    ASSERT_TRUE(toast);
    auto* rt = dynamic_cast<SOUI::CairoRenderTarget*>(toast->Render());
    ASSERT_NE(rt, nullptr);
    // A copy: the next toast repaints the same frame.
    cairo_surface_t* copy = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, toast->GetToastWidth(),
                                                       toast->GetToastHeight());
    cairo_t* cr = cairo_create(copy);
    cairo_set_source_surface(cr, rt->Surface(), 0, 0);
    cairo_paint(cr);
    cairo_destroy(cr);
    frames.push_back(copy);
    sheet_w = std::max(sheet_w, toast->GetToastWidth());
    sheet_h += toast->GetToastHeight() + gap;
  }
  cairo_surface_t* sheet = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, sheet_w + 2 * gap, sheet_h + gap);
  cairo_t* cr = cairo_create(sheet);
  // The page behind: light grey, or the dark theme's window colour.
  if (dark_) cairo_set_source_rgb(cr, 0.09, 0.10, 0.12);
  else cairo_set_source_rgb(cr, 0.93, 0.94, 0.95);
  cairo_paint(cr);
  int y = gap;
  for (cairo_surface_t* f : frames) {
    cairo_set_source_surface(cr, f, gap, y);
    cairo_paint(cr);
    y += cairo_image_surface_get_height(f) + gap;
    cairo_surface_destroy(f);
  }
  cairo_destroy(cr);
  cairo_surface_flush(sheet);
  const SOUI::PngCompareResult r = SOUI::ComparePng(sheet, Reference("qv_toast"), 16, 0.01);
  cairo_surface_destroy(sheet);
  EXPECT_TRUE(r.match) << r.message;
}

// The three kinds, with and without icon, link and close button, one wrapped.
TEST_P(PopupLookTest, ToolTipSheet) {
  const int w = 420, h = 290;
  // Each bar: kind, icon skin, message, link, close button.
  const wchar_t* const bars[][5] = {
      {L"TD", L"", L"Market data is delayed by 15 minutes", L"", L"0"},
      {L"TD", L"skin_toast_icon_tip", L"New features are available", L"Learn more", L"1"},
      {L"TC", L"skin_toast_icon_warn", L"Margin usage above 80%", L"Details", L"0"},
      {L"TC", L"", L"Password expires in 3 days", L"", L"1"},
      {L"TW", L"skin_toast_icon_error", L"Connection lost, reconnecting", L"Retry", L"1"},
      {L"TW", L"skin_toast_icon_error",
       L"Your account is restricted until the missing identity documents have been received", L"Upload", L"1"},
  };
  SStringW xml = L"<SOUI><root colorBkgnd=\"@color\\style_gallery\\bg\">";
  for (const auto& b : bars) {
    xml += SStringW::Format2(L"<qv_tooltip pos=\"8dp,[8dp\" width=\"404dp\" qvstyle=\"%s\" iconskin=\"%s\" "
                             L"tiptext=\"%s\" linktext=\"%s\" closebtn=\"%s\"/>",
                             b[0], b[1], b[2], b[3], b[4]);
  }
  xml += L"</root></SOUI>";
  CreateHost(xml.c_str(),
      w * zoom_ / 100, h * zoom_ / 100);
  Layout();
  host()->Render();
  EXPECT_TRUE(SOUI::MatchesReferencePng(*dynamic_cast<SOUI::CairoRenderTarget*>(host()->GetFrame()),
                                        Reference("qv_tooltip"), 16, 0.01));
  // The link keeps its fixed blue on every band, so every band must carry
  // it readably (3:1), and its message as body text (4.5:1).
  const auto colour = [this](const SStringW& ref) {
    COLORREF c = 0;
    EXPECT_TRUE(app_->GetResProvider().ResolveColor(ref, &c)) << ref.ToUtf8();
    return c;
  };
  COLORREF link = 0;
  ASSERT_TRUE(app_->GetResProvider().ResolveColor(CQVToolTip::kLinkColor, &link));
  for (SOUI::SWindow* w = host()->GetRoot()->GetWindow(SOUI::GSW_FIRSTCHILD); w; w = w->GetWindow(SOUI::GSW_NEXTSIBLING)) {
    auto* bar = dynamic_cast<CQVToolTip*>(w);
    ASSERT_NE(bar, nullptr);
    const COLORREF band = colour(bar->GetBkgndColor());
    EXPECT_GE(SOUI::test::ContrastRatio(link, band), 3.0) << bar->GetBkgndColor().ToUtf8();
    EXPECT_GE(SOUI::test::ContrastRatio(colour(bar->GetTextColor()), band), 4.5) << bar->GetTextColor().ToUtf8();
  }
}

// Every message-box layout (icon or not, heading or not, link or not, one
// to three buttons) on one sheet.
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

TEST_P(PopupLookTest, MessageBoxSheet) {
  const BoxLayout layouts[] = {
      {0, L"", L"Order filled", L"", QVDefaultDialogAttr::Btn_Ok, 0, 0},
      {QVDefaultDialogAttr::Icon_Tips, L"Order", L"Cancel every open order of this account?", L"", QVDefaultDialogAttr::Btn_OkCancel, 0, 0},
      {QVDefaultDialogAttr::Icon_Warn, L"Connection", L"The quote server stopped answering. Retry now, keep waiting, or give up and "
                                       L"work offline?", L"Network settings", QVDefaultDialogAttr::Btn_YesNoCancel, 0, 1},
      {QVDefaultDialogAttr::Icon_Error, L"", L"The order was rejected: the price is outside the daily limit.", L"Why?",
       QVDefaultDialogAttr::Btn_RetryCancel, QVDefaultDialogAttr::BottomLeft_Check, 1},
      {0, L"Risk notice", L"Options can lose all their value. Read the <ln>risk disclosure</ln> before the first "
                          L"trade.", L"", QVDefaultDialogAttr::Btn_OkCancel, QVDefaultDialogAttr::BottomLeft_Link, 0},
      {QVDefaultDialogAttr::Icon_Successed, L"", L"Transfer completed", L"", QVDefaultDialogAttr::Btn_Ok, 0, 0},
  };
  std::vector<cairo_surface_t*> frames;
  for (const BoxLayout& l : layouts) {
    QVDefaultDialogAttr a;
    a.title = l.title;
    a.content_title = l.title[0] ? L"Please confirm" : L"";
    a.content_text = l.text;
    a.link_text = l.link;
    a.SetContentIcon(static_cast<QVDefaultDialogAttr::ContentIcon>(l.icon));
    a.SetButtonStyle(static_cast<QVDefaultDialogAttr::ButtonStyle>(l.buttons));
    a.bottom_left_kind = l.bottom_left;
    a.bottom_left_text = l.bottom_left == QVDefaultDialogAttr::BottomLeft_Check ? L"Do not ask again" : L"Help";
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
  const SOUI::PngCompareResult r = SOUI::ComparePng(sheet, Reference("qv_messagebox"), 16, 0.01);
  cairo_surface_destroy(sheet);
  EXPECT_TRUE(r.match) << r.message;
}

// Copies what a host window shows onto the sheet at its screen place.
void PaintHostAt(cairo_t* cr, SOUI::SHostWnd* wnd) {
  auto* rt = dynamic_cast<SOUI::CairoRenderTarget*>(wnd->Render());
  if (!rt) return;
  cairo_set_source_surface(cr, rt->Surface(), wnd->GetWindowRect().left, wnd->GetWindowRect().top);
  cairo_paint(cr);
}

// A menu with every kind of row, its submenu open, and beside it a
// multi-selection menu, on a page colour.
TEST_P(PopupLookTest, MenuSheet) {
  CreateHost(L"<SOUI><root/></SOUI>", 200, 100);
  const int z = zoom_;
  const int sheet_w = 600 * z / 100, sheet_h = 290 * z / 100;
  cairo_surface_t* sheet = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, sheet_w, sheet_h);
  cairo_t* cr = cairo_create(sheet);
  if (dark_) cairo_set_source_rgb(cr, 0.09, 0.10, 0.12);
  else cairo_set_source_rgb(cr, 0.93, 0.94, 0.95);
  cairo_paint(cr);

  auto item = [](UINT id, const wchar_t* text, const wchar_t* icon = L"", const wchar_t* shortcut = L"") {
    QVMenuAttr a = QVMenuAttr::Item(id, text, shortcut);
    a.icon_skin = icon;
    return a;
  };
  QVMenuItems menu = {item(1, L"New order", L"skin_toast_icon_tip", L"Ctrl+N"),
                      item(2, L"Quick trade", L"skin_toast_icon_succeed", L"F2"), QVMenuAttr::Separator(),
                      item(3, L"Show depth"), item(4, L"Price view"), item(5, L"Chart view"),
                      QVMenuAttr::Separator(), item(6, L"Export"), item(7, L"Transfer"), QVMenuAttr::Separator(),
                      item(8, L"Cancel all orders", L"skin_toast_icon_error", L"Del")};
  menu[3].checked = true;
  menu[4].radio_group = menu[5].radio_group = 1;
  menu[4].checked = true;
  menu[7].submenu = std::make_shared<QVMenuItems>(QVMenuItems{item(61, L"CSV file"), item(62, L"Excel workbook")});
  menu[8].enabled = false;
  menu[8].disabled_tip = L"Not during the auction";
  menu[10].danger = true;
  app_->GetClock().SetTimer(10, [&] {
    // Down to Export and into its submenu.
    for (int i = 0; i < 6; ++i) gen().PressAndReleaseKey(VK_DOWN);
    gen().PressAndReleaseKey(VK_RIGHT);
    PaintHostAt(cr, IQVMenu::GetOpenMenu(0));
    PaintHostAt(cr, IQVMenu::GetOpenMenu(1));
    gen().PressAndReleaseKey(VK_ESCAPE);
    gen().PressAndReleaseKey(VK_ESCAPE);
  }, false);
  IQVMenu::TrackPopupMenu(host()->m_hWnd, menu, SOUI::CPoint(12 * z / 100, 12 * z / 100));

  QVMenuItems columns = {item(1, L"Price"), item(2, L"Change %"), item(3, L"Code"), item(4, L"Volume"),
                         item(5, L"Turnover")};
  columns[2].enabled = false;
  app_->GetClock().SetTimer(10, [&] {
    gen().PressAndReleaseKey(VK_DOWN);
    PaintHostAt(cr, IQVMenu::GetOpenMenu(0));
    gen().PressAndReleaseKey(VK_ESCAPE);
  }, false);
  IQVMultiSelMenu::TrackPopupMenu(host()->m_hWnd, columns, {1, 2, 3}, SOUI::CPoint(420 * z / 100, 12 * z / 100));
  cairo_destroy(cr);
  cairo_surface_flush(sheet);
  const SOUI::PngCompareResult r = SOUI::ComparePng(sheet, Reference("qv_menu"), 16, 0.01);
  cairo_surface_destroy(sheet);
  EXPECT_TRUE(r.match) << r.message;
}

// Three steps of a guide over a small trading window, each bubble on a
// different side of its anchor: below (first step), left with a picture and
// "next" hovered, above (last step, "done").
TEST_P(PopupLookTest, GuideSheet) {
  const int z = zoom_;
  CreateHost(L"<SOUI><root colorBkgnd=\"@color\\style_gallery\\bg\">"
             L"<text name=\"order\" pos=\"24dp,24dp,@96dp,@28dp\" text=\"New order\" font=\"size:12dp\" "
             L"colorBkgnd=\"@color\\style_gallery\\card\" colorText=\"@color\\style_gallery\\title\"/>"
             L"<window name=\"chart\" pos=\"-120dp,24dp,@96dp,-24dp\" colorBkgnd=\"@color\\style_gallery\\card\"/>"
             L"<text name=\"funds\" pos=\"24dp,-52dp,@96dp,@28dp\" text=\"Funds\" font=\"size:12dp\" "
             L"colorBkgnd=\"@color\\style_gallery\\card\" colorText=\"@color\\style_gallery\\title\"/>"
             L"</root></SOUI>",
             760 * z / 100, 440 * z / 100);
  host()->SetWindowPos(nullptr, 0, 0, 760 * z / 100, 440 * z / 100, SOUI::SWP_NOZORDER | SOUI::SWP_SHOWWINDOW);
  Layout();
  const std::vector<QVGuideStep> steps = {
      {L"order", L"Place an order", L"Pick a security, set the price and the quantity, then send it.", L""},
      {L"chart", L"Watch the chart", L"Prices update as trades happen. Drag to scroll back in time.",
       L"skin_qvstd_dialog_icon_tips"},
      {L"funds", L"Check your funds before you trade",
       L"Available cash and margin are shown here, refreshed after every fill.", L""}};
  const int w = 760 * z / 100, h = 440 * z / 100;
  cairo_surface_t* sheet = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w, h);
  cairo_t* cr = cairo_create(sheet);
  PaintHostAt(cr, host());
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(IQVGuide::Start(host()->m_hWnd, steps, i));
    CQVGuideWnd* bubble = IQVGuide::GetGuideWnd(host()->m_hWnd);
    ASSERT_NE(bubble, nullptr);
    if (i == 1) {
      SOUI::test::EventGenerator g(bubble);
      g.MoveMouseTo(bubble->GetPartRect(EnQVGuidePart::Next).CenterPoint());
    }
    PaintHostAt(cr, bubble);
  }
  IQVGuide::Stop(host()->m_hWnd);
  cairo_destroy(cr);
  cairo_surface_flush(sheet);
  const SOUI::PngCompareResult r = SOUI::ComparePng(sheet, Reference("qv_guide"), 16, 0.01);
  cairo_surface_destroy(sheet);
  EXPECT_TRUE(r.match) << r.message;
}

INSTANTIATE_TEST_SUITE_P(ZoomsAndThemes, PopupLookTest,
                         ::testing::Combine(::testing::Values(100, 150), ::testing::Bool()),
                         [](const ::testing::TestParamInfo<std::tuple<int, bool>>& info) {
                           return std::to_string(std::get<0>(info.param)) +
                                  (std::get<1>(info.param) ? "_dark" : "_light");
                         });

}  // namespace
}  // namespace test
}  // namespace QVStandardCtrls
