// Laying out 1,000 rich-text paragraphs (mixed Latin and CJK runs, links and
// bold runs) at a narrow and a wide width. Each iteration measures from
// scratch: the widths alternate, so the control's cached layout never hits.
#include <benchmark/benchmark.h>

#include <string>

#include "soui/qvrichtext.h"
#include "soui/sapp.h"

namespace {

constexpr int kParagraphs = 1000;

SOUI::SStringW Paragraph(int i) {
  std::wstring xml = L"<RichEditContent lineSpacing='2'>";
  xml += L"<text font='size:14dp,bold:1'>" + std::to_wstring(i) + L". </text>";
  xml += L"<text>Order&#160;filled at 12.34 for 1,000 shares, 委托已成交，请注意查看持仓变化 </text>";
  xml += L"<text color='#4F9BFF' link-data='08182'>08182</text>";
  xml += L"<text><![CDATA[ and the remaining quantity was cancelled by the exchange.]]></text>";
  xml += L"</RichEditContent>";
  return SOUI::SStringW(xml.c_str());
}

void BM_RichTextLayout(benchmark::State& state) {
  SOUI::SApplication app;
  SOUI::QVRichText rich;
  rich.SetAttribute(L"font", L"size:12dp", FALSE);
  for (int i = 0; i < kParagraphs; ++i) rich.AppendContent(Paragraph(i));
  const int width = static_cast<int>(state.range(0));
  int lines = 0;
  for (auto _ : state) {
    rich.GetContentHeight(width + 1);  // another width: drops the cached layout
    benchmark::DoNotOptimize(rich.GetContentHeight(width));
    lines = rich.GetLineCount(width);
  }
  state.counters["lines"] = lines;
  state.SetItemsProcessed(state.iterations() * 2 * kParagraphs);
}
BENCHMARK(BM_RichTextLayout)->Arg(240)->Arg(800)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
