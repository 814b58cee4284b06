// Soak: 10,000 host windows, each built from a small layout, painted and
// destroyed in turn. Memory is read before and after (resident set from
// /proc, heap in use from mallinfo2); anything a host leaves behind shows
// up as growth. Warm-up hosts first fill the caches that are meant to stay
// (fonts, shaped text, scaled skins).
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <string>

#include "bench_memory.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

constexpr char kSmallLayout[] =
    "<SOUI width='240' height='120'><root colorBkgnd='#FFFFFF'>"
    "<text name='title' pos='8,8' text='Order 1234' font='size:14dp,bold:1'/>"
    "<text name='price' pos='8,[4' text='12.34' colorText='#F23030'/>"
    "<button name='ok' pos='-88,-36,@80,@28' text='OK' colorBkgnd='#3366CC'/>"
    "<window name='band' pos='0,-4,-0,-0' colorBkgnd='#CCCCCC'/>"
    "</root></SOUI>";

void OneHost() {
  SOUI::SHostWnd host(L"LAYOUT:soak");
  host.Create();
  benchmark::DoNotOptimize(host.Render());
}

void BM_HostSoak(benchmark::State& state) {
  SOUI::SApplication app;
  app.GetResProvider().AddXml(L"LAYOUT", L"soak", kSmallLayout);
  for (int i = 0; i < 100; ++i) OneHost();
  malloc_trim(0);
  const long rss_before = ResidentKb(), heap_before = HeapInUseKb();
  const int hosts = static_cast<int>(state.range(0));
  for (auto _ : state) {
    for (int i = 0; i < hosts; ++i) OneHost();
  }
  malloc_trim(0);
  const long rss_after = ResidentKb(), heap_after = HeapInUseKb();
  state.counters["hosts"] = hosts;
  state.counters["rss_before_kB"] = static_cast<double>(rss_before);
  state.counters["rss_after_kB"] = static_cast<double>(rss_after);
  state.counters["heap_before_kB"] = static_cast<double>(heap_before);
  state.counters["heap_after_kB"] = static_cast<double>(heap_after);
  std::printf("soak of %d hosts: RSS %ld kB -> %ld kB, heap in use %ld kB -> %ld kB\n", hosts, rss_before,
              rss_after, heap_before, heap_after);
}
BENCHMARK(BM_HostSoak)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
