// Building a 1,000-window layout from XML, against pugixml parsing the same
// text alone: the toolkit's own cost on top of the parse.
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

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

}  // namespace

BENCHMARK_MAIN();
