// Typing into a multi-line edit: the cost of one keystroke (the character,
// the change notification and the repaint of the host) with an almost empty
// edit and with 10,000 characters already typed. Lines break every 60
// characters, as typed text does; a keystroke should cost its line, not the
// whole text, so the two figures should be close. main() also types 10,000
// characters in one run and prints the cost of the first and the last 500
// keystrokes and their ratio. BM_KeystrokeWrapped types paragraphs that wrap.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <memory>

#include "soui/edit.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace {

constexpr int kTotal = 10000;
constexpr int kLine = 60;

struct Typist {
  Typist() {
    host.InitFromXmlText(
        L"<SOUI width='600' height='400'><root>"
        L"<edit name='e' pos='0,0,-0,-0' multiLines='1' wantReturn='1' maxBuf='100000'/>"
        L"</root></SOUI>");
    host.Create(nullptr, 0, 0);
    host.ShowWindow(SOUI::SW_SHOW);
    edit = host.FindChildByName2<SOUI::SEdit>(L"e");
    edit->SetFocus();
    host.Render();
  }
  // One keystroke and the repaint it causes.
  void Key() {
    const wchar_t ch = (++typed % kLine == 0) ? L'\r' : static_cast<wchar_t>(L'a' + typed % 26);
    host.OnKeyEvent(WM_CHAR, ch);
    host.Render();
  }
  SOUI::SApplication app;
  SOUI::SHostWnd host;
  SOUI::SEdit* edit = nullptr;
  int typed = 0;
};

void BM_Keystroke(benchmark::State& state) {
  Typist t;
  for (int i = 0; i < state.range(0); ++i) t.host.OnKeyEvent(WM_CHAR, (i + 1) % kLine ? L'x' : L'\r');
  t.host.Render();
  for (auto _ : state) t.Key();
  state.counters["chars"] = t.edit->GetTextLength();
}
BENCHMARK(BM_Keystroke)->Arg(0)->Arg(kTotal)->Unit(benchmark::kMicrosecond);

// The same with paragraphs of 300 characters in words, each wrapping to
// several lines of the 600 px edit: a keystroke re-wraps its paragraph only.
void BM_KeystrokeWrapped(benchmark::State& state) {
  Typist t;
  int i = 0;
  auto next = [&i] { return ++i % 300 == 0 ? L'\r' : i % 6 == 0 ? L' ' : L'w'; };
  for (int k = 0; k < state.range(0); ++k) t.host.OnKeyEvent(WM_CHAR, next());
  t.host.Render();
  for (auto _ : state) {
    t.host.OnKeyEvent(WM_CHAR, next());
    t.host.Render();
  }
  state.counters["lines"] = t.edit->GetLineCount();
}
BENCHMARK(BM_KeystrokeWrapped)->Arg(0)->Arg(kTotal)->Unit(benchmark::kMicrosecond);

double MicrosPerKey(Typist& t, int keys) {
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < keys; ++i) t.Key();
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count() / keys;
}

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  benchmark::Shutdown();
  // The first keys repaint a view that is still filling (8 lines of 25);
  // from about 1,500 characters on every repaint covers the full view, so
  // the comparison that shows growth with the text is full view against end.
  Typist t;
  const double first = MicrosPerKey(t, 500);
  MicrosPerKey(t, 1500);
  const double full = MicrosPerKey(t, 500);
  MicrosPerKey(t, kTotal - 3000);
  const double last = MicrosPerKey(t, 500);
  std::printf("typing %d characters: keys 1-500 %.1f us/key, keys 2001-2500 (view full) %.1f us/key, "
              "keys 9501-10000 %.1f us/key; end / full view %.2f, end / start %.2f\n",
              kTotal, first, full, last, last / full, last / first);
  return 0;
}
