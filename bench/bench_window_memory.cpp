// What one window costs in memory: heap bytes (mallinfo2, so C and C++
// allocations both count, with malloc's own overhead) and C++ allocations
// (operator new is counted here) per plain window, per red-green label and
// per tab item, each measured over 10,000 of them built from a layout in a
// live host and laid out. Caches that are meant to stay (fonts, shaped
// text, style tables) are filled by a first round that is thrown away.
//
// Targets: a plain window at most 1 KB, a red-green label at most 1.5 KB.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

#include "framework/control_classes.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "tabs/tabctrl_base.h"

namespace {
std::atomic<long> g_allocations{0};
}  // namespace

// The replacement pair is malloc/free underneath; gcc cannot see that the
// sized delete below pairs with this new.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"
void* operator new(std::size_t size) {
  g_allocations.fetch_add(1, std::memory_order_relaxed);
  if (void* p = std::malloc(size ? size : 1)) return p;
  throw std::bad_alloc();
}
void operator delete(void* p) noexcept { std::free(p); }
void operator delete(void* p, std::size_t) noexcept { std::free(p); }

namespace {

constexpr int kCount = 10000;

long HeapInUse() { return static_cast<long>(mallinfo2().uordblks); }

struct Cost {
  double bytes = 0, allocations = 0;
};

// Heap and allocations that build() adds, per element, with what it built
// kept alive while measuring. The host itself is counted too; over 10,000
// elements it is noise.
template <class Build>
Cost Measure(Build build) {
  { build(); }  // warm-up
  malloc_trim(0);
  const long heap = HeapInUse();
  const long allocs = g_allocations.load();
  auto kept = build();
  Cost c;
  c.bytes = static_cast<double>(HeapInUse() - heap) / kCount;
  c.allocations = static_cast<double>(g_allocations.load() - allocs) / kCount;
  benchmark::DoNotOptimize(kept);
  return c;
}

std::unique_ptr<SOUI::SHostWnd> HostOf(const std::wstring& children) {
  auto host = std::make_unique<SOUI::SHostWnd>();
  host->InitFromXmlText((L"<SOUI width='800' height='600'><root>" + children + L"</root></SOUI>").c_str());
  host->Create();
  host->UpdateLayout();
  return host;
}

void Report(benchmark::State& state, const char* what, const Cost& c) {
  state.counters["bytes"] = c.bytes;
  state.counters["allocations"] = c.allocations;
  std::printf("%s: %.0f bytes and %.1f allocations each\n", what, c.bytes, c.allocations);
}

SOUI::SApplication* NewApp() {
  auto* app = new SOUI::SApplication();
  app->GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
  QVStandardCtrls::RegisterQVStandardCtrls(app->GetFactory());
  return app;
}

void BM_PlainWindowBytes(benchmark::State& state) {
  std::unique_ptr<SOUI::SApplication> app(NewApp());
  std::wstring xml;
  for (int i = 0; i < kCount; ++i) xml += L"<window pos='0,0,@20,@20'/>";
  Cost c;
  for (auto _ : state) c = Measure([&] { return HostOf(xml); });
  Report(state, "plain window", c);
}
BENCHMARK(BM_PlainWindowBytes)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_RedGreenLabelBytes(benchmark::State& state) {
  std::unique_ptr<SOUI::SApplication> app(NewApp());
  std::wstring xml;
  for (int i = 0; i < kCount; ++i) {
    xml += L"<qv_redgreen pos='0,0,@60,@14' text='1.00' compare='100' current='" + std::to_wstring(99 + i % 3) + L"'/>";
  }
  Cost c;
  for (auto _ : state) c = Measure([&] { return HostOf(xml); });
  Report(state, "red-green label", c);
}
BENCHMARK(BM_RedGreenLabelBytes)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_TabItemBytes(benchmark::State& state) {
  std::unique_ptr<SOUI::SApplication> app(NewApp());
  Cost c;
  for (auto _ : state) {
    c = Measure([&] {
      auto host = HostOf(L"<qv_primarytab name='tabs' pos='0,0,-0,@32'/>");
      auto* tabs = host->FindChildByName2<QVStandardCtrls::CQVTabCtrlBase>(L"tabs");
      for (int i = 0; i < kCount; ++i) tabs->InsertTab({{L"text", L"Tab"}}, -1);
      return host;
    });
  }
  Report(state, "tab item", c);
}
BENCHMARK(BM_TabItemBytes)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
