// Repainting 500 labels, through a whole host window (tree walk, state,
// inherited fonts and colours) and through the bare render target, against
// the same labels drawn with pango and cairo directly (layouts made once, as
// a hand-written renderer would keep them).
#include <benchmark/benchmark.h>
#include <pango/pangocairo.h>

#include <string>
#include <vector>

#include "backends/cairo_render.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

constexpr int kLabels = 500;

std::wstring LabelText(int i) {
  return (i % 3 == 0 ? L"新建窗口 " : L"Label number ") + std::to_wstring(i);
}

SOUI::CRect LabelRect(int i) {
  const int col = i % 5, row = i / 5;
  return SOUI::CRect(col * 160, row * 6, col * 160 + 150, row * 6 + 20);
}

void BM_RenderTargetLabels(benchmark::State& state) {
  SOUI::CairoRenderFactory factory;
  auto rt = factory.CreateCairoTarget(800, 620);
  SOUI::FontDesc desc;
  desc.height = 14;
  rt->SelectFont(rt->CreateFont(desc));
  rt->SetTextColor(RGBA(0, 0, 0, 255));
  std::vector<std::wstring> texts;
  for (int i = 0; i < kLabels; ++i) texts.push_back(LabelText(i));
  for (auto _ : state) {
    rt->Clear(RGBA(255, 255, 255, 255));
    for (int i = 0; i < kLabels; ++i) {
      SOUI::CRect rc = LabelRect(i);
      rt->DrawText(texts[i].c_str(), -1, &rc, SOUI::DT_SINGLELINE | SOUI::DT_VCENTER);
    }
    cairo_surface_flush(rt->Surface());
  }
}
BENCHMARK(BM_RenderTargetLabels)->Unit(benchmark::kMillisecond);

void BM_HostWindowLabels(benchmark::State& state) {
  SOUI::SApplication app;
  std::wstring xml = L"<SOUI width='800' height='620'><root colorBkgnd='#FFFFFF' "
                     L"font='face:WenQuanYi Micro Hei,size:14' colorText='#000000'>";
  for (int i = 0; i < kLabels; ++i) {
    const SOUI::CRect rc = LabelRect(i);
    xml += L"<text pos='" + std::to_wstring(rc.left) + L"," + std::to_wstring(rc.top) + L",@" +
           std::to_wstring(rc.Width()) + L",@" + std::to_wstring(rc.Height()) + L"'>" + LabelText(i) +
           L"</text>";
  }
  xml += L"</root></SOUI>";
  SOUI::SHostWnd host;
  host.InitFromXmlText(xml.c_str());
  host.Create();
  host.Render();
  for (auto _ : state) {
    host.GetRoot()->Invalidate();
    auto* frame = static_cast<SOUI::CairoRenderTarget*>(host.Render());
    cairo_surface_flush(frame->Surface());
  }
}
BENCHMARK(BM_HostWindowLabels)->Unit(benchmark::kMillisecond);

void BM_RawPangoCairoLabels(benchmark::State& state) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 800, 620);
  cairo_t* cr = cairo_create(surface);
  PangoFontDescription* font = pango_font_description_from_string("WenQuanYi Micro Hei");
  pango_font_description_set_absolute_size(font, 14 * PANGO_SCALE);
  std::vector<PangoLayout*> layouts;
  std::vector<int> heights;
  for (int i = 0; i < kLabels; ++i) {
    PangoLayout* layout = pango_cairo_create_layout(cr);
    pango_layout_set_font_description(layout, font);
    std::string utf8 = SOUI::SStringW(LabelText(i)).ToUtf8();
    pango_layout_set_text(layout, utf8.c_str(), -1);
    int w, h;
    pango_layout_get_pixel_size(layout, &w, &h);
    layouts.push_back(layout);
    heights.push_back(h);
  }
  for (auto _ : state) {
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_paint(cr);
    cairo_set_source_rgb(cr, 0, 0, 0);
    for (int i = 0; i < kLabels; ++i) {
      const SOUI::CRect rc = LabelRect(i);
      cairo_move_to(cr, rc.left, rc.top + (rc.Height() - heights[i]) / 2);
      pango_cairo_show_layout(cr, layouts[i]);
    }
    cairo_surface_flush(surface);
  }
  for (PangoLayout* l : layouts) g_object_unref(l);
  pango_font_description_free(font);
  cairo_destroy(cr);
  cairo_surface_destroy(surface);
}
BENCHMARK(BM_RawPangoCairoLabels)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
