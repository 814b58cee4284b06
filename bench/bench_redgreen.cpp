// One rise/fall convention broadcast (message 1063) to 1,000 and 10,000 live
// red-green labels in a host: every label re-reads the setting, recolours
// and invalidates. The time per label should stay flat as the count grows.
#include <benchmark/benchmark.h>

#include "alternating.h"

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

// 10x the labels against 1x, each side timed alone and in turns: building
// and laying out, the 1063 broadcast, and destroying. Each should cost about
// 10x; at most 11x is allowed.
class LabelScaling {
 public:
  LabelScaling() {
    app_.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
    QVStandardCtrls::RegisterQVStandardCtrls(app_.GetFactory());
  }
  double Create(int count) {
    const SOUI::SStringW xml = SOUI::SStringW::FromUtf8(LabelsLayout(count));
    host_.reset();
    return qvbench::TimeMs([&] {
      host_ = std::make_unique<SOUI::SHostWnd>();
      host_->InitFromXmlText(xml);
      host_->Create();
      host_->UpdateLayout();
    });
  }
  double Broadcast(int count) {
    Create(count);
    red_rise_ = !red_rise_;
    GetUserSettings(app_).SetBool(50501, red_rise_);
    return qvbench::TimeMs([&] { GetMessageDispatch(app_).Send(1063); });
  }
  double Destroy(int count) {
    Create(count);
    return qvbench::TimeMs([&] { host_.reset(); });
  }

 private:
  SOUI::SApplication app_;
  std::unique_ptr<SOUI::SHostWnd> host_;
  bool red_rise_ = true;
};

void BM_RedGreenScaling(benchmark::State& state) {
  qvbench::Once(state, [&] {
    LabelScaling s;
    qvbench::Report("1,000 -> 10,000 red-green labels, create and lay out", "1k", "10k",
                    qvbench::Alternate(15, [&] { return s.Create(1000); }, [&] { return s.Create(10000); }), 11);
    qvbench::Report("1,000 -> 10,000 red-green labels, 1063 broadcast", "1k", "10k",
                    qvbench::Alternate(15, [&] { return s.Broadcast(1000); }, [&] { return s.Broadcast(10000); }),
                    11);
    qvbench::Report("1,000 -> 10,000 red-green labels, destroy", "1k", "10k",
                    qvbench::Alternate(15, [&] { return s.Destroy(1000); }, [&] { return s.Destroy(10000); }), 11);
  });
}
BENCHMARK(BM_RedGreenScaling)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
