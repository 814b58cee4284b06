// A watchlist receiving market data: N red-green labels in a grid, each tick
// sets new values on a few percent of them through the control's setters and
// the host paints its frame. Beside it, in the same process and alternating
// tick by tick, raw cairo+pango repaints only the changed cells with layouts
// kept per label: what a hand-written renderer would do. Then both repaint
// every visible label, alternating, from layouts already made. The ticks (grid,
// seed, changed sets) are the ones the Qt anchor replays, so its figures from
// the same sitting compare directly.
//
//   bench_stream [N PERCENT] [--ticks T] [--warmup W] [--save PREFIX]
//
// Without N and PERCENT it runs 1,000 and 10,000 labels at 10 % and 1 %.
#include <pango/pangocairo.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <string>
#include <vector>

#include "alternating.h"
#include "backends/cairo_render.h"
#include "display/market_values.h"
#include "framework/control_classes.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "stream_common.h"

namespace {

using SOUI::CRect;
using SOUI::SStringW;

constexpr int kFontPx = 12;

double now_ms() {
  using namespace std::chrono;
  return duration<double, std::milli>(steady_clock::now().time_since_epoch()).count();
}

// The anchors' output format: one line per figure.
void result(const char* bench, const char* metric, double v) {
  std::printf("RESULT %s %s %.4f\n", bench, metric, v);
  std::fflush(stdout);
}

std::string LayoutXml(const stream::Workload& w) {
  const stream::Grid& g = w.grid;
  std::string xml = "<SOUI width='" + std::to_string(g.width) + "' height='" + std::to_string(g.height) +
                    "'><root colorBkgnd='#FFFFFF' font='face:WenQuanYi Micro Hei,size:" +
                    std::to_string(kFontPx) + "'>";
  for (int i = 0; i < g.n; ++i) {
    char text[16];
    stream::FormatPrice(w.initial[i], text, sizeof text);
    xml += "<qv_redgreen pos='" + std::to_string(g.CellX(i)) + "," + std::to_string(g.CellY(i)) + ",@" +
           std::to_string(stream::kCellW) + ",@" + std::to_string(stream::kCellH) + "' text='" + text +
           "' compare='" + std::to_string(w.close[i]) + "' current='" + std::to_string(w.initial[i]) + "'/>";
  }
  return xml + "</root></SOUI>";
}

// The project's side: a host with the labels, ticks applied through the
// labels' own setters and painted through the host's frame path.
class ProjectSide {
 public:
  explicit ProjectSide(const stream::Workload& w) : w_(w) {
    host_.InitFromXmlText(SStringW::FromUtf8(LayoutXml(w)));
    host_.Create();
    for (SOUI::SWindow* c = host_.GetRoot()->GetWindow(SOUI::GSW_FIRSTCHILD); c;
         c = c->GetWindow(SOUI::GSW_NEXTSIBLING)) {
      labels_.push_back(static_cast<QVStandardCtrls::CQVRedGreenStatic*>(c));
    }
    for (const auto& tick : w.ticks) {
      std::vector<SStringW> texts;
      for (const stream::Change& c : tick) texts.push_back(SStringW::FromUtf8(c.text));
      texts_.push_back(std::move(texts));
    }
  }
  bool Ok() const { return static_cast<int>(labels_.size()) == w_.grid.n; }
  SOUI::SHostWnd& Host() { return host_; }

  double FirstPaint() {
    const double t0 = now_ms();
    Flush(host_.Render());
    return now_ms() - t0;
  }
  void Apply(size_t tick) {
    const auto& changes = w_.ticks[tick];
    for (size_t k = 0; k < changes.size(); ++k) {
      QVStandardCtrls::CQVRedGreenStatic* label = labels_[changes[k].index];
      label->SetWindowText(texts_[tick][k]);
      label->SetCurrent(changes[k].current);
    }
  }
  void Paint() { Flush(host_.Render()); }
  // Labels the last frame repainted: those meeting the painted region.
  int Repainted() const {
    int n = 0;
    for (auto* l : labels_) n += host_.GetPaintedRegion().Intersects(l->GetWindowRect());
    return n;
  }
  QVStandardCtrls::CQVRedGreenStatic* Label(int i) { return labels_[i]; }

 private:
  static void Flush(SOUI::IRenderTarget* rt) {
    if (auto* cairo = dynamic_cast<SOUI::CairoRenderTarget*>(rt)) cairo_surface_flush(cairo->Surface());
  }

  const stream::Workload& w_;
  SOUI::SHostWnd host_;
  std::vector<QVStandardCtrls::CQVRedGreenStatic*> labels_;
  std::vector<std::vector<SStringW>> texts_;
};

// Raw cairo+pango: one layout per label, set to the new text on a change;
// only the changed cells are cleared and drawn.
class RawSide {
 public:
  explicit RawSide(const stream::Workload& w) : w_(w) {
    surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, w.grid.width, w.grid.height);
    cr_ = cairo_create(surface_);
    font_ = pango_font_description_from_string("WenQuanYi Micro Hei");
    pango_font_description_set_absolute_size(font_, kFontPx * PANGO_SCALE);
    for (int i = 0; i < w.grid.n; ++i) {
      PangoLayout* layout = pango_cairo_create_layout(cr_);
      pango_layout_set_font_description(layout, font_);
      char text[16];
      stream::FormatPrice(w.initial[i], text, sizeof text);
      pango_layout_set_text(layout, text, -1);
      layouts_.push_back(layout);
      direction_.push_back(stream::Direction(w.initial[i], w.close[i]));
    }
  }
  ~RawSide() {
    for (PangoLayout* l : layouts_) g_object_unref(l);
    pango_font_description_free(font_);
    cairo_destroy(cr_);
    cairo_surface_destroy(surface_);
  }
  double FirstPaint() {
    const double t0 = now_ms();
    cairo_set_source_rgb(cr_, 1, 1, 1);
    cairo_paint(cr_);
    for (int i = 0; i < w_.grid.n; ++i) {
      if (w_.grid.Visible(i)) DrawCell(i);
    }
    cairo_surface_flush(surface_);
    return now_ms() - t0;
  }
  void Tick(size_t tick) {
    for (const stream::Change& c : w_.ticks[tick]) {
      pango_layout_set_text(layouts_[c.index], c.text, -1);
      direction_[c.index] = stream::Direction(c.current, w_.close[c.index]);
      if (!w_.grid.Visible(c.index)) continue;
      cairo_rectangle(cr_, w_.grid.CellX(c.index), w_.grid.CellY(c.index), stream::kCellW, stream::kCellH);
      cairo_set_source_rgb(cr_, 1, 1, 1);
      cairo_fill(cr_);
      DrawCell(c.index);
    }
    cairo_surface_flush(surface_);
  }
  void Save(const std::string& path) { cairo_surface_write_to_png(surface_, path.c_str()); }

 private:
  void DrawCell(int i) {
    const stream::Rgb& c = stream::ColourOf(direction_[i]);
    cairo_set_source_rgb(cr_, c.r / 255.0, c.g / 255.0, c.b / 255.0);
    int w = 0, h = 0;
    pango_layout_get_pixel_size(layouts_[i], &w, &h);
    cairo_move_to(cr_, w_.grid.CellX(i), w_.grid.CellY(i) + (stream::kCellH - h) / 2);
    pango_cairo_show_layout(cr_, layouts_[i]);
  }

  const stream::Workload& w_;
  cairo_surface_t* surface_ = nullptr;
  cairo_t* cr_ = nullptr;
  PangoFontDescription* font_ = nullptr;
  std::vector<PangoLayout*> layouts_;
  std::vector<int> direction_;
};

void Run(const stream::Args& a) {
  const stream::Grid grid = stream::MakeGrid(a.n, a.view_w, a.view_h);
  const stream::Workload w = stream::MakeWorkload(grid, a.PerTick(), a.ticks, a.warmup, a.shared_close);
  const std::string qv_name = a.Name("qv"), raw_name = a.Name("raw");
  ProjectSide qv(w);
  if (!qv.Ok()) {
    std::fprintf(stderr, "%s: the labels were not created\n", qv_name.c_str());
    return;
  }
  RawSide raw(w);
  const double qv_first = qv.FirstPaint();
  const double raw_first = raw.FirstPaint();

  std::vector<double> qv_tick, qv_update, raw_tick, repainted;
  for (size_t t = 0; t < w.ticks.size(); ++t) {
    // Alternating, so that both sides see the same machine.
    const double a0 = now_ms();
    qv.Apply(t);
    const double a1 = now_ms();
    qv.Paint();
    const double a2 = now_ms();
    raw.Tick(t);
    const double a3 = now_ms();
    if (t < static_cast<size_t>(w.warmup)) continue;
    qv_update.push_back(a1 - a0);
    qv_tick.push_back(a2 - a0);
    raw_tick.push_back(a3 - a2);
    repainted.push_back(qv.Repainted());
  }
  // Repaint extent: the top-left label alone, then with the last visible one.
  std::vector<double> two, two_paints;
  {
    const int rows = grid.height / stream::kCellH, cols = grid.width / stream::kCellW;
    const int last = std::min(grid.n - 1, (rows - 1) * grid.cols + cols - 1);
    const SStringW text[2] = {L"0.01", L"0.02"};
    for (int k = 0; k < 21; ++k) {
      const double c0 = now_ms();
      for (int i : {0, last}) {
        qv.Label(i)->SetWindowText(text[k % 2]);
        qv.Label(i)->SetCurrent(k % 2 ? 1 : -1);
      }
      qv.Paint();
      two.push_back(now_ms() - c0);
      two_paints.push_back(qv.Repainted());
    }
  }
  // A full repaint of every visible label, layouts made: the whole frame
  // invalidated against raw cairo+pango drawing every cell from its kept
  // layout, alternating.
  std::vector<double> qv_full, raw_full;
  for (int k = 0; k < 51; ++k) {
    const double f0 = now_ms();
    qv.Host().GetRoot()->Invalidate();
    qv.Paint();
    const double f1 = now_ms();
    raw.FirstPaint();
    const double f2 = now_ms();
    qv_full.push_back(f1 - f0);
    raw_full.push_back(f2 - f1);
  }
  if (a.save) {
    qv.Host().SaveFramePng(SStringW::FromUtf8(std::string(a.save) + "_qv.png"));
    raw.Save(std::string(a.save) + "_raw.png");
  }
  const char* q = qv_name.c_str();
  result(q, "labels", grid.n);
  result(q, "changes_per_tick", w.per_tick);
  result(q, "visible_changes_per_tick", w.visible_changes_per_timed_tick);
  result(q, "colour_changes_per_tick", w.colour_changes_per_timed_tick);
  result(q, "first_paint_ms", qv_first);
  result(q, "tick_median_ms", qvbench::Median(qv_tick));
  result(q, "update_median_ms", qvbench::Median(qv_update));
  result(q, "labels_repainted_median", qvbench::Median(repainted));
  result(q, "two_labels_opposite_corners_ms", qvbench::Median(two));
  result(q, "two_labels_opposite_corners_paints", qvbench::Median(two_paints));
  result(q, "full_repaint_median_ms", qvbench::Median(qv_full));
  result(raw_name.c_str(), "first_paint_ms", raw_first);
  result(raw_name.c_str(), "full_repaint_median_ms", qvbench::Median(raw_full));
  result(q, "full_repaint_ratio_to_raw", qvbench::Median(qv_full) / std::max(qvbench::Median(raw_full), 1e-6));
  result(raw_name.c_str(), "tick_median_ms", qvbench::Median(raw_tick));
  result(q, "ratio_to_raw", qvbench::Median(qv_tick) / std::max(qvbench::Median(raw_tick), 1e-6));
}

}  // namespace

int main(int argc, char** argv) {
  SOUI::SApplication app;
  app.GetResProvider().LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
  // Google Benchmark's flags (./dev bench passes them to every benchmark) are not ours.
  std::vector<char*> args;
  for (int i = 0; i < argc; ++i) {
    if (std::strncmp(argv[i], "--benchmark", 11) != 0) args.push_back(argv[i]);
  }
  const stream::Args a = stream::ParseArgs(static_cast<int>(args.size()), args.data(), 1);
  if (!a.ok) {
    std::fprintf(stderr, "usage: bench_stream [N PERCENT] [--ticks T] [--warmup W] [--save PREFIX]\n");
    return 2;
  }
  if (args.size() > 1 && args[1][0] != '-') {
    Run(a);
    return 0;
  }
  for (int n : {1000, 10000}) {
    for (double percent : {10.0, 1.0}) {
      stream::Args each = a;
      each.n = n;
      each.percent = percent;
      Run(each);
    }
  }
  return 0;
}
