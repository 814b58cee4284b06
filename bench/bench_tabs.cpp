// Tab strip costs: a full layout of N tabs, and one drag step (hit test of
// the dragged centre against every tab, a list move and a relayout) over N
// tabs. Both should grow linearly with N.
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <memory>

#include "framework/control_classes.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "tabs/tabctrl_base.h"

namespace {

using QVStandardCtrls::CQVTabCtrlBase;

// Exposes the layout so that it can be timed on its own; animation off so
// that a layout places the tabs at once.
class BenchTabs : public CQVTabCtrlBase {
 public:
  void LayoutNow() { UpdateTabRect(head_, nullptr, nullptr, false); }
};

struct Strip {
  explicit Strip(int n) {
    QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
    pugi::xml_document doc;
    doc.load_string("<SOUI width='2000' height='100'><root/></SOUI>");
    host.InitFromXml(doc);
    host.Create();
    host.UpdateLayout();
    tabs = new BenchTabs();
    host.GetRoot()->InsertChild(tabs);
    pugi::xml_document tdoc;
    // Wide enough for every tab in one row (overflow past the edge).
    tdoc.load_string("<qv_tabctrlbase pos='0,0,@2000,@32' animation='0'><tab width='60' height='32'/></qv_tabctrlbase>");
    tabs->InitFromXml(tdoc.first_child());
    host.UpdateLayout();
    for (int i = 0; i < n; ++i) tabs->InsertTab({{L"createAnimator", L"0"}}, -1);
  }
  SOUI::SApplication app;
  SOUI::SHostWnd host;
  BenchTabs* tabs = nullptr;
};

void BM_TabLayout(benchmark::State& state) {
  Strip strip(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    strip.tabs->LayoutNow();
    benchmark::DoNotOptimize(strip.tabs->GetRowCount());
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(BM_TabLayout)->Arg(50)->Arg(500)->Complexity(benchmark::oN)->Unit(benchmark::kMicrosecond);

// One drag step that swaps the dragged tab with its right neighbour; the
// next iteration swaps it back, so the list stays the same size.
void BM_TabDragStep(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  Strip strip(n);
  CQVTabCtrlBase* tabs = strip.tabs;
  QVStandardCtrls::CQVItemBase* dragged = tabs->GetTabObjByOrder(n / 2);
  const SOUI::CRect home = dragged->GetWindowRect();
  int dir = 1;
  int swaps = 0;
  int order = tabs->GetTabOrder(dragged->GetItemId());
  for (auto _ : state) {
    SOUI::CRect rc = home;
    rc.OffsetRect(dir > 0 ? 40 : 0, 0);
    dragged->Move(&rc);
    tabs->OnItemDragMove(dragged, rc.CenterPoint());
    dir = -dir;
    state.PauseTiming();
    const int now = tabs->GetTabOrder(dragged->GetItemId());
    swaps += now != order;
    order = now;
    state.ResumeTiming();
  }
  // Every step is meant to swap: a step that finds nothing to swap would
  // time only the hit test.
  state.counters["swaps_per_step"] = static_cast<double>(swaps) / static_cast<double>(state.iterations());
  state.SetComplexityN(n);
}
BENCHMARK(BM_TabDragStep)->Arg(50)->Arg(500)->Complexity(benchmark::oN)->Unit(benchmark::kMicrosecond);

// Inserting N tabs at the end of a primary strip (the house look: title,
// icon, tail button and red dot per item), then one layout pass. Should
// cost N times one insert, not N squared.
void BM_TabInsert(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  SOUI::SApplication app;
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
  for (auto _ : state) {
    state.PauseTiming();
    auto host = std::make_unique<SOUI::SHostWnd>();
    host->InitFromXmlText(L"<SOUI width='2000' height='100'><root><qv_primarytab name='tabs' pos='0,0,-0,@32'/></root></SOUI>");
    host->Create();
    host->UpdateLayout();
    auto* tabs = host->FindChildByName2<CQVTabCtrlBase>(L"tabs");
    state.ResumeTiming();
    for (int i = 0; i < n; ++i) tabs->InsertTab({{L"text", L"Tab"}}, -1);
    host->UpdateLayout();
    state.PauseTiming();
    host.reset();
    state.ResumeTiming();
  }
  state.SetComplexityN(n);
}
BENCHMARK(BM_TabInsert)->Arg(50)->Arg(500)->Arg(2000)->Complexity(benchmark::oN)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
