// Building and laying out nested wrap-content windows from XML, at 1,000 and
// 10,000 windows. The nesting deepens with the count, so any measuring that
// is repeated at every level shows up as a ratio far above 10; linear work
// gives about 10. The ratio is printed after the runs.
//
// Shape, for L = N/10 levels (each level a wrap window holding the next):
//   root: level1, 9 labels
//     level1: level2, 9 labels
//       ...
//         levelL (empty)
// N windows in all, the deepest at depth L (1,000 for N = 10,000, the
// toolkit's nesting limit).
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "alternating.h"

#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

std::string NestedLayout(int windows) {
  const int levels = windows / 10;
  std::string xml = "<SOUI><root>";
  for (int i = 0; i < levels; ++i) {
    xml += "<window name='level" + std::to_string(i + 1) + "'>";
    if (i == levels - 1) break;
    for (int j = 0; j < 9; ++j) xml += "<window text='12.34'/>";
  }
  for (int i = 0; i < levels; ++i) xml += "</window>";
  // The root's own nine labels.
  for (int j = 0; j < 9; ++j) xml += "<window text='56.78'/>";
  return xml + "</root></SOUI>";
}

void BM_NestedWrapLayout(benchmark::State& state) {
  const std::string xml = NestedLayout(static_cast<int>(state.range(0)));
  SOUI::SApplication app;
  for (auto _ : state) {
    auto doc = std::make_unique<pugi::xml_document>();
    doc->load_buffer(xml.data(), xml.size());
    auto host = std::make_unique<SOUI::SHostWnd>();
    host->InitFromXml(*doc);
    host->Create();  // sizes the host to its content: measures the whole tree
    host->UpdateLayout();
    benchmark::DoNotOptimize(host->GetRoot()->GetWindowRect());
    // Tearing down is not what is measured.
    state.PauseTiming();
    host.reset();
    doc.reset();
    state.ResumeTiming();
  }
  state.counters["windows"] = static_cast<double>(state.range(0));
}
BENCHMARK(BM_NestedWrapLayout)->Arg(1000)->Arg(2000)->Arg(4000)->Arg(8000)->Arg(10000)->Unit(benchmark::kMillisecond);

// The ratio itself, measured honestly: 1,000 and 10,000 windows built in
// turns in one process on a steady heap, the medians compared. The small
// side averages ten builds, one being too short to time alone.
double BuildOnce(const std::string& xml) {
  std::unique_ptr<pugi::xml_document> doc;
  std::unique_ptr<SOUI::SHostWnd> host;
  const double ms = qvbench::TimeMs([&] {
    doc = std::make_unique<pugi::xml_document>();
    doc->load_buffer(xml.data(), xml.size());
    host = std::make_unique<SOUI::SHostWnd>();
    host->InitFromXml(*doc);
    host->Create();
    host->UpdateLayout();
    benchmark::DoNotOptimize(host->GetRoot()->GetWindowRect());
  });
  host.reset();  // tearing down is not what is measured
  return ms;
}

void BM_NestedRatioAlternating(benchmark::State& state) {
  qvbench::Once(state, [] {
    SOUI::SApplication app;
    const std::string small = NestedLayout(1000), large = NestedLayout(10000);
    const auto ten_small = [&] {
      double sum = 0;
      for (int i = 0; i < 10; ++i) sum += BuildOnce(small);
      return sum / 10;
    };
    qvbench::Report("nested wrap layout, 1,000 -> 10,000 windows, alternating on a steady heap", "1k", "10k",
                    qvbench::Alternate(40, ten_small, [&] { return BuildOnce(large); }), 10);
  });
}
BENCHMARK(BM_NestedRatioAlternating)->Iterations(1)->Unit(benchmark::kMillisecond);

// Prints as usual and keeps each run's time per iteration by name.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& r : runs) {
      if (r.run_type == Run::RT_Iteration && r.iterations > 0) {
        times_[r.benchmark_name()] = r.GetAdjustedRealTime();
      }
    }
  }
  double Time(const std::string& name) const {
    auto it = times_.find(name);
    return it == times_.end() ? 0 : it->second;
  }

 private:
  std::map<std::string, double> times_;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  const double t1k = reporter.Time("BM_NestedWrapLayout/1000");
  const double t10k = reporter.Time("BM_NestedWrapLayout/10000");
  if (t1k > 0 && t10k > 0) {
    std::printf("nested wrap layout, 10k/1k time ratio: %.1f (linear is about 10)\n", t10k / t1k);
  }
  benchmark::Shutdown();
  return 0;
}
