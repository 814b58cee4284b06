// Building a 1,000-window layout from XML, against pugixml parsing the same
// text alone: the toolkit's own cost on top of the parse.
#include <benchmark/benchmark.h>
#include <malloc.h>
#include <pugixml.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

#include "framework/control_classes.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

std::string ThousandWindowLayout() {
  std::string xml = "<SOUI width='1000' height='800'><root>";
  for (int row = 0; row < 50; ++row) {
    xml += "<window name='row" + std::to_string(row) + "' pos='0,[2,-0,@14'>";
    for (int col = 0; col < 19; ++col) {
      xml += "<text name='c" + std::to_string(col) + "' pos='[4,0,@48,-0' text='12.34' colorText='#336699'/>";
    }
    xml += "</window>";
  }
  return xml + "</root></SOUI>";  // 50 rows x (1 + 19) = 1,000 windows
}

const std::string& Layout() {
  static const std::string xml = ThousandWindowLayout();
  return xml;
}

void BM_PugixmlParse(benchmark::State& state) {
  for (auto _ : state) {
    pugi::xml_document doc;
    benchmark::DoNotOptimize(doc.load_buffer(Layout().data(), Layout().size()));
  }
}
BENCHMARK(BM_PugixmlParse)->Unit(benchmark::kMicrosecond);

void BM_CreateAndLayout1000Windows(benchmark::State& state) {
  SOUI::SApplication app;
  for (auto _ : state) {
    pugi::xml_document doc;
    doc.load_buffer(Layout().data(), Layout().size());
    SOUI::SHostWnd host;
    host.InitFromXml(doc);
    host.Create();
    host.UpdateLayout();
    benchmark::DoNotOptimize(host.GetRoot()->GetChildrenCount());
  }
}
BENCHMARK(BM_CreateAndLayout1000Windows)->Unit(benchmark::kMicrosecond);

// The watchlist a trader opens: 1,000 red-green labels in a column, each with
// a name, a relative position, a style code, two numbers and a text.
std::string RedGreenLayout() {
  std::string xml = "<SOUI><root>\n";
  char line[512];
  for (int i = 0; i < 1000; ++i) {
    const int current = 90 + (i * 11) % 21;
    std::snprintf(line, sizeof line,
                  "<qv_redgreen name=\"l%d\" pos=\"10dp,[4dp,@120dp,@20dp\" qvstyle=\"RGR2\" "
                  "compare=\"100\" current=\"%d\" text=\"%d.%02d\"/>\n",
                  i, current, current, (i * 13) % 100);
    xml += line;
  }
  return xml + "</root></SOUI>\n";
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

// Loading against parsing, alternating in one process on a steady heap (no
// trimming back to the kernel between documents, so neither side pays page
// faults the other does not): the toolkit's whole cost as a multiple of
// reading the same text.
void LoadRatio(benchmark::State& state, const std::string& xml, const char* what) {
  mallopt(M_TRIM_THRESHOLD, 512 * 1024 * 1024);
  mallopt(M_MMAP_THRESHOLD, 512 * 1024 * 1024);
  SOUI::SApplication app;
  app.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
  using Clock = std::chrono::steady_clock;
  const auto ms = [](Clock::time_point a, Clock::time_point b) {
    return std::chrono::duration<double, std::milli>(b - a).count();
  };
  std::vector<double> parse, load;
  for (auto _ : state) {
    {
      const auto t0 = Clock::now();
      pugi::xml_document doc;
      doc.load_buffer(xml.data(), xml.size());
      parse.push_back(ms(t0, Clock::now()));
    }
    {
      const auto t0 = Clock::now();
      pugi::xml_document doc;
      doc.load_buffer(xml.data(), xml.size());
      SOUI::SHostWnd host;
      host.InitFromXml(doc);
      host.Create();
      host.UpdateLayout();
      benchmark::DoNotOptimize(host.GetRoot()->GetChildrenCount());
      load.push_back(ms(t0, Clock::now()));
    }
  }
  const double ratio = Median(load) / Median(parse);
  state.counters["ratio_to_parse"] = ratio;
  std::printf("%s: parse %.3f ms, load and lay out %.3f ms, ratio %.1f (at most 10)\n", what, Median(parse),
              Median(load), ratio);
}

void BM_LoadRatioRedGreenLabels(benchmark::State& state) {
  LoadRatio(state, RedGreenLayout(), "1,000 red-green labels");
}
BENCHMARK(BM_LoadRatioRedGreenLabels)->Iterations(60)->Unit(benchmark::kMillisecond);

void BM_LoadRatioWindows(benchmark::State& state) { LoadRatio(state, Layout(), "1,000 windows in rows"); }
BENCHMARK(BM_LoadRatioWindows)->Iterations(60)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
