// Soak: 100,000 insert/remove cycles on a primary tab strip with animation
// on, the way a long trading day opens and closes tabs. Each cycle inserts a
// tab at a varying place, selects it every few cycles, removes the tab at
// another place and lets the clock run so that removal fades finish and
// their items are destroyed. The strip keeps about 20 tabs throughout.
// Memory (resident set and heap in use) is read before and after; a leaked
// item, animator or timer shows up as growth.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <pugixml.hpp>

#include <cstdio>
#include <string>

#include "bench_memory.h"
#include "framework/control_classes.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "tabs/tab_variants.h"

namespace {

constexpr int kSteadyTabs = 20;

struct StripHost {
  StripHost() {
    QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
    host.InitFromXmlText(
        L"<SOUI width='1600' height='60'><root>"
        L"<qv_primarytab name='tabs' pos='0,0,-0,@32'/>"
        L"</root></SOUI>");
    host.Create();
    tabs = host.FindChildByName2<QVStandardCtrls::CQVTabCtrlBase>(L"tabs");
    for (int i = 0; i < kSteadyTabs; ++i) Insert(i, -1);
    Settle();
  }
  void Insert(int n, int order) {
    tabs->InsertTab({{L"text", L"Tab " + std::to_wstring(n % 1000)}}, order);
  }
  // Runs the clock past any fade so removed items are gone, and lays out.
  void Settle() {
    app.GetClock().Advance(1000);
    host.UpdateLayout();
  }
  // One cycle: insert, maybe select, remove, a few frames of animation.
  void Cycle(int n) {
    const int count = tabs->GetTabCount();
    Insert(n, count > 0 ? n % count : -1);
    if (n % 4 == 0) tabs->SetCurSelByOrder(n % (count + 1), true);
    tabs->RemoveTabByOrder((n * 7) % (count + 1));
    app.GetClock().Advance(48);
    if (n % 16 == 0) host.Render();
  }
  SOUI::SApplication app;
  SOUI::SHostWnd host;
  QVStandardCtrls::CQVTabCtrlBase* tabs = nullptr;
};

void BM_TabInsertRemoveSoak(benchmark::State& state) {
  StripHost strip;
  for (int i = 0; i < 1000; ++i) strip.Cycle(i);  // caches that are meant to stay
  strip.Settle();
  malloc_trim(0);
  const long rss_before = ResidentKb(), heap_before = HeapInUseKb();
  const int cycles = static_cast<int>(state.range(0));
  for (auto _ : state) {
    for (int i = 0; i < cycles; ++i) strip.Cycle(i);
  }
  strip.Settle();
  malloc_trim(0);
  const long rss_after = ResidentKb(), heap_after = HeapInUseKb();
  const int tabs = strip.tabs->GetTabCount();
  const size_t windows = strip.tabs->GetChildrenCount();
  state.counters["tabs_after"] = tabs;
  state.counters["heap_before_kB"] = static_cast<double>(heap_before);
  state.counters["heap_after_kB"] = static_cast<double>(heap_after);
  std::printf("soak of %d tab insert/remove cycles: %d tabs and %zu child windows left, "
              "RSS %ld kB -> %ld kB, heap in use %ld kB -> %ld kB\n",
              cycles, tabs, windows, rss_before, rss_after, heap_before, heap_after);
}
BENCHMARK(BM_TabInsertRemoveSoak)->Arg(10000)->Arg(100000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
