// Creating 1,000 red-green labels in code and painting them once, the work
// the Qt anchor (bench_qt_labels: QLabel children with a palette colour,
// rendered once) times: a 20 x 50 grid of 80 x 20 px cells on a 1600 x 1000
// frame, 12 px WenQuanYi Micro Hei, texts "90.00".."110.99", red above 100
// and green below.
//
// Beside it, in the same process and alternating, raw cairo+pango draws the
// same labels from fresh layouts onto a cleared surface. Both sides shape
// every text anew in each round (the project's layout cache is emptied
// between rounds; fonts and glyphs stay warm on both sides, as in the Qt
// anchor's warm run). Compare the total with the anchor's create_1000_ms +
// render1_first_ms from ../shared/perf-anchors/run.sh in the same sitting.
#include <benchmark/benchmark.h>
#include <pango/pangocairo.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "alternating.h"
#include "backends/cairo_render.h"
#include "display/market_values.h"
#include "framework/control_classes.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

constexpr int kLabels = 1000, kCols = 20, kCellW = 80, kCellH = 20, kWidth = 1600, kHeight = 1000;
constexpr int kFontPx = 12;

struct Label {
  std::string text;
  int current = 0;
};

std::vector<Label> Labels() {
  std::vector<Label> labels(kLabels);
  for (int i = 0; i < kLabels; ++i) {
    labels[i].current = 90 + (i * 11) % 21;
    char text[32];
    std::snprintf(text, sizeof text, "%d.%02d", labels[i].current, (i * 13) % 100);
    labels[i].text = text;
  }
  return labels;
}

// The project: a host of the frame's size, the labels made in code and the
// first frame rendered. Returns {create, first paint} in milliseconds.
std::pair<double, double> ProjectRound(const std::vector<Label>& labels) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  if (auto* cairo = dynamic_cast<SOUI::CairoRenderFactory*>(app->GetRenderFactory())) cairo->DropTextLayouts();
  auto host = std::make_unique<SOUI::SHostWnd>();
  host->InitFromXmlText((L"<SOUI width='" + std::to_wstring(kWidth) + L"' height='" + std::to_wstring(kHeight) +
                         L"'><root colorBkgnd='#FFFFFF' font='face:WenQuanYi Micro Hei,size:" +
                         std::to_wstring(kFontPx) + L"'/></SOUI>")
                            .c_str());
  host->Create();
  SOUI::SWindow* root = host->GetRoot();
  std::vector<SOUI::SStringW> texts, positions;
  for (int i = 0; i < kLabels; ++i) {
    texts.push_back(SOUI::SStringW::FromUtf8(labels[i].text));
    positions.push_back(SOUI::SStringW::FromUtf8(std::to_string(i % kCols * kCellW) + "," +
                                                 std::to_string(i / kCols * kCellH) + ",@" +
                                                 std::to_string(kCellW) + ",@" + std::to_string(kCellH)));
  }
  const double create = qvbench::TimeMs([&] {
    for (int i = 0; i < kLabels; ++i) {
      auto* label = new QVStandardCtrls::CQVRedGreenStatic();
      root->InsertChild(label);
      label->InitFromXml(pugi::xml_node());
      label->SetAttribute(L"pos", positions[i], FALSE);
      label->SetWindowText(texts[i]);
      label->SetCompare(100);
      label->SetCurrent(labels[i].current);
    }
  });
  const double paint = qvbench::TimeMs([&] {
    SOUI::IRenderTarget* rt = host->Render();
    if (auto* cairo = dynamic_cast<SOUI::CairoRenderTarget*>(rt)) cairo_surface_flush(cairo->Surface());
  });
  return {create, paint};
}

// Raw cairo+pango: a layout per label made, set and drawn in its colour.
double RawRound(const std::vector<Label>& labels, cairo_t* cr, PangoFontDescription* font) {
  std::vector<PangoLayout*> layouts;
  layouts.reserve(kLabels);
  const double ms = qvbench::TimeMs([&] {
    cairo_set_source_rgb(cr, 1, 1, 1);
    cairo_paint(cr);
    for (int i = 0; i < kLabels; ++i) {
      PangoLayout* layout = pango_cairo_create_layout(cr);
      pango_layout_set_font_description(layout, font);
      pango_layout_set_text(layout, labels[i].text.c_str(), -1);
      layouts.push_back(layout);
      if (labels[i].current > 100) cairo_set_source_rgb(cr, 220 / 255.0, 40 / 255.0, 40 / 255.0);
      else cairo_set_source_rgb(cr, 30 / 255.0, 160 / 255.0, 60 / 255.0);
      int w = 0, h = 0;
      pango_layout_get_pixel_size(layout, &w, &h);
      cairo_move_to(cr, i % kCols * kCellW, i / kCols * kCellH + (kCellH - h) / 2);
      pango_cairo_show_layout(cr, layout);
    }
    cairo_surface_flush(cairo_get_target(cr));
  });
  for (PangoLayout* l : layouts) g_object_unref(l);
  return ms;
}

void BM_CreateAndFirstPaint1000Labels(benchmark::State& state) {
  qvbench::Once(state, [] {
    SOUI::SApplication app;
    app.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
    QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
    const std::vector<Label> labels = Labels();
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth, kHeight);
    cairo_t* cr = cairo_create(surface);
    PangoFontDescription* font = pango_font_description_from_string("WenQuanYi Micro Hei");
    pango_font_description_set_absolute_size(font, kFontPx * PANGO_SCALE);

    std::vector<double> creates, paints;
    const qvbench::Alternated totals = qvbench::Alternate(
        21, [&] { return RawRound(labels, cr, font); },
        [&] {
          const auto [create, paint] = ProjectRound(labels);
          creates.push_back(create);
          paints.push_back(paint);
          return create + paint;
        });
    std::printf("1,000 red-green labels: create %.3f ms, first paint %.3f ms, together %.3f ms; "
                "raw cairo+pango first paint %.3f ms: first paint %.2fx raw, together %.2fx raw (at most 2). "
                "Compare the total with Qt's create_1000_ms + render1_first_ms (at most 0.5x).\n",
                qvbench::Median(creates), qvbench::Median(paints), totals.other_ms, totals.base_ms,
                qvbench::Median(paints) / totals.base_ms, totals.ratio());

    pango_font_description_free(font);
    cairo_destroy(cr);
    cairo_surface_destroy(surface);
  });
}
BENCHMARK(BM_CreateAndFirstPaint1000Labels)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
