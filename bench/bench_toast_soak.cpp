// Soak: 10,000 toasts over 100 owner windows created and destroyed in turn,
// the way a long trading day raises fills and rejections over windows that
// come and go. Each owner gets 100 toasts of varying kinds and stay times
// while the clock runs through parts of their slides; then it is destroyed,
// which must take its toast window and registry entry along.
// Memory (resident set and heap in use) is read before and after; a leaked
// toast window, timer or entry shows up as growth.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdio>
#include <memory>
#include <string>

#include "bench_memory.h"
#include "framework/control_classes.h"
#include "popups/toast.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

const wchar_t* const kTexts[] = {L"Order filled", L"Order rejected: price outside the daily limit",
                                 L"Connection restored", L"Your request has been sent"};

// One owner's life: created, toasted, destroyed.
void OwnerLife(SOUI::SApplication& app, int n, int toasts) {
  auto owner = std::make_unique<SOUI::SHostWnd>();
  owner->InitFromXmlText(L"<SOUI><root/></SOUI>");
  owner->Create(nullptr, n % 300, n % 200, 800, 600);
  owner->ShowWindow(SOUI::SW_SHOW);
  for (int i = 0; i < toasts; ++i) {
    QVStandardCtrls::IQVToast::TrackPopupToast(owner->m_hWnd,
                                               static_cast<QVStandardCtrls::EnQVToastIconType>(1 + i % 4),
                                               kTexts[(n + i) % 4], i % 3, static_cast<unsigned>((i % 5) * 50));
    app.GetClock().Advance(static_cast<uint32_t>((i * 37) % 400));
  }
}

void BM_ToastSoak(benchmark::State& state) {
  SOUI::SApplication app;
  app.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
  for (int n = 0; n < 5; ++n) OwnerLife(app, n, 100);  // caches that are meant to stay
  malloc_trim(0);
  const long rss_before = ResidentKb(), heap_before = HeapInUseKb();
  const int owners = static_cast<int>(state.range(0));
  const int per_owner = static_cast<int>(state.range(1));
  for (auto _ : state) {
    for (int n = 0; n < owners; ++n) OwnerLife(app, n, per_owner);
  }
  malloc_trim(0);
  const long rss_after = ResidentKb(), heap_after = HeapInUseKb();
  const size_t entries = QVStandardCtrls::IQVToast::ToastWndCount();
  state.counters["entries_after"] = static_cast<double>(entries);
  state.counters["heap_before_kB"] = static_cast<double>(heap_before);
  state.counters["heap_after_kB"] = static_cast<double>(heap_after);
  std::printf("soak of %d toasts over %d owners: %zu entries and %zu hosts left, %zu timers pending, "
              "RSS %ld kB -> %ld kB, heap in use %ld kB -> %ld kB\n",
              owners * per_owner, owners, entries, app.GetHosts().size(), app.GetClock().PendingTimers(),
              rss_before, rss_after, heap_before, heap_after);
}
BENCHMARK(BM_ToastSoak)->Args({100, 100})->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
