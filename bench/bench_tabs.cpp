// Tab strip costs: a full layout of N tabs, which should grow linearly with
// N, and one drag step (a hit test of the dragged centre, a list move and
// the re-placing of the tabs that moved), which should not grow with N.
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <memory>

#include "alternating.h"

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

// An application with the library's classes registered.
struct App {
  App() { QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory()); }
  SOUI::SApplication app;
};

// A strip of n tabs in a host; needs an App.
struct Strip {
  explicit Strip(int n) {
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
  SOUI::SHostWnd host;
  BenchTabs* tabs = nullptr;
};

void BM_TabLayout(benchmark::State& state) {
  App app;
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
  App app;
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
BENCHMARK(BM_TabDragStep)->Arg(50)->Arg(500)->Complexity(benchmark::o1)->Unit(benchmark::kMicrosecond);

// Inserting N tabs at the end of a primary strip (the house look: title,
// icon, tail button and red dot per item), then one layout pass. Should
// cost N times one insert, not N squared.
void BM_TabInsert(benchmark::State& state) {
  const int n = static_cast<int>(state.range(0));
  App app;
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

// 10x the tabs against 1x, each side timed alone and in turns: inserting N
// tabs (with the layout after), a full layout, and a drag step (averaged
// over 200 steps, a single one being too short to time). Inserting and
// laying out should cost about 10x, a drag step about the same at both
// sizes; at most 11x is allowed.
double InsertMs(int n) {
  SOUI::SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='2000' height='100'><root><qv_primarytab name='tabs' pos='0,0,-0,@32'/></root></SOUI>");
  host.Create();
  host.UpdateLayout();
  auto* tabs = host.FindChildByName2<CQVTabCtrlBase>(L"tabs");
  return qvbench::TimeMs([&] {
    for (int i = 0; i < n; ++i) tabs->InsertTab({{L"text", L"Tab"}}, -1);
    host.UpdateLayout();
  });
}

double LayoutMs(Strip& strip) {
  return qvbench::TimeMs([&] { strip.tabs->LayoutNow(); });
}

double DragStepMs(Strip& strip, int n) {
  QVStandardCtrls::CQVItemBase* dragged = strip.tabs->GetTabObjByOrder(n / 2);
  const SOUI::CRect home = dragged->GetWindowRect();
  constexpr int kSteps = 200;
  return qvbench::TimeMs([&] {
           for (int i = 0; i < kSteps; ++i) {
             SOUI::CRect rc = home;
             rc.OffsetRect(i % 2 == 0 ? 40 : 0, 0);
             dragged->Move(&rc);
             strip.tabs->OnItemDragMove(dragged, rc.CenterPoint());
           }
         }) /
         kSteps;
}

void BM_TabScaling(benchmark::State& state) {
  qvbench::Once(state, [&] {
    App app;
    qvbench::Report("50 -> 500 tabs, insert and lay out", "50", "500",
                    qvbench::Alternate(15, [] { return InsertMs(50); }, [] { return InsertMs(500); }), 11);
    Strip small(50), large(500);
    qvbench::Report("50 -> 500 tabs, full layout", "50", "500",
                    qvbench::Alternate(101, [&] { return LayoutMs(small); }, [&] { return LayoutMs(large); }), 11);
    qvbench::Report("50 -> 500 tabs, drag step", "50", "500",
                    qvbench::Alternate(31, [&] { return DragStepMs(small, 50); }, [&] { return DragStepMs(large, 500); }),
                    11);
  });
}
BENCHMARK(BM_TabScaling)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
