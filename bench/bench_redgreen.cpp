// One rise/fall convention broadcast (message 1063) to 1,000 and 10,000 live
// red-green labels in a host: every label re-reads the setting, recolours
// and invalidates. The time per label should stay flat as the count grows.
#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "framework/control_classes.h"
#include "qvhost/config.h"
#include "qvhost/message_dispatch.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

std::string LabelsLayout(int count) {
  std::string xml = "<SOUI width='1000' height='800'><root>";
  for (int i = 0; i < count; ++i) {
    // A third each rising, falling and flat.
    const int current = 100 + (i % 3) - 1;
    xml += "<qv_redgreen pos='0,0,@60,@14' text='1.00' compare='100' current='" + std::to_string(current) + "'/>";
  }
  return xml + "</root></SOUI>";
}

void BM_RedGreenBroadcast(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  SOUI::SApplication app;
  app.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
  SOUI::SHostWnd host;
  host.InitFromXmlText(SOUI::SStringW::FromUtf8(LabelsLayout(count)));
  host.Create();
  host.UpdateLayout();
  if (host.GetRoot()->GetChildrenCount() != static_cast<UINT>(count)) {
    state.SkipWithError("labels were not created");
    return;
  }
  bool red_rise = true;
  for (auto _ : state) {
    // Flip each time so that every label really changes colour.
    red_rise = !red_rise;
    GetUserSettings(app).SetBool(50501, red_rise);
    GetMessageDispatch(app).Send(1063);
  }
  state.SetComplexityN(count);
  state.counters["per_label"] =
      benchmark::Counter(static_cast<double>(count), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_RedGreenBroadcast)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity(benchmark::oN);

// Destroying N labels: each unbinds its broadcast handler on the way out,
// which must cost the same however many labels remain.
void BM_RedGreenDestroy(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  SOUI::SApplication app;
  app.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
  const SOUI::SStringW xml = SOUI::SStringW::FromUtf8(LabelsLayout(count));
  for (auto _ : state) {
    state.PauseTiming();
    auto host = std::make_unique<SOUI::SHostWnd>();
    host->InitFromXmlText(xml);
    host->Create();
    state.ResumeTiming();
    host.reset();
  }
  state.SetComplexityN(count);
}
BENCHMARK(BM_RedGreenDestroy)->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond)->Complexity(benchmark::oN);

}  // namespace

BENCHMARK_MAIN();
