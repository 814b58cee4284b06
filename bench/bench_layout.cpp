// Building a 1,000-window layout from XML, against pugixml parsing the same
// text alone: the toolkit's own cost on top of the parse.
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include <cstdio>
#include <memory>
#include <string>

#include "alternating.h"

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

// Loading against parsing, in turns in one process on a steady heap (so
// neither side pays page faults the other does not): the toolkit's whole
// cost as a multiple of reading the same text.
void LoadRatio(benchmark::State& state, const std::string& xml, const char* what) {
  qvbench::Once(state, [&] {
    SOUI::SApplication app;
    app.GetResProvider().LoadUiDefFile(SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml"));
    QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());
    const auto parse = [&] {
      pugi::xml_document doc;
      return qvbench::TimeMs([&] { doc.load_buffer(xml.data(), xml.size()); });
    };
    const auto load = [&] {
      pugi::xml_document doc;
      std::unique_ptr<SOUI::SHostWnd> host;  // goes before the document, as in a host
      return qvbench::TimeMs([&] {
        doc.load_buffer(xml.data(), xml.size());
        host = std::make_unique<SOUI::SHostWnd>();
        host->InitFromXml(doc);
        host->Create();
        host->UpdateLayout();
        benchmark::DoNotOptimize(host->GetRoot()->GetChildrenCount());
      });
    };
    qvbench::Report(what, "parse", "load and lay out", qvbench::Alternate(60, parse, load), 10);
  });
}

void BM_LoadRatioRedGreenLabels(benchmark::State& state) {
  LoadRatio(state, RedGreenLayout(), "1,000 red-green labels");
}
BENCHMARK(BM_LoadRatioRedGreenLabels)->Iterations(1)->Unit(benchmark::kMillisecond);

void BM_LoadRatioWindows(benchmark::State& state) { LoadRatio(state, Layout(), "1,000 windows in rows"); }
BENCHMARK(BM_LoadRatioWindows)->Iterations(1)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
