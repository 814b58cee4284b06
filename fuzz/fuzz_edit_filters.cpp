// The built-in edit filters driven by random keystrokes, pastes, committed
// input-method text, selections and undo, on a focused "qv_edit" in a host.
//
//   [filter] [maxBuf choice] { [op] [operands...] } ...
//
// Checked after each insertion that the filter judged:
//   - text that changed satisfies the filter, so nothing that got in breaks
//     it (EnUpper/EnLower: and has the filter's case);
//   - text that did not change raised at most one input error, and a raised
//     error left the selection where it was;
//   - the text never outgrows maxBuf.
// Backspace and undo may leave text a filter would not accept (a lone "-"
// after deleting the 5 of "-5"); they are run but not judged.
// The sixth choice is a price edit (tick 0.05 from -10 to 100) with an empty
// filter slot: typed text keeps to two places, and each Up/Down step leaves
// an exact value on the tick grid within the bounds.
#include <cstdint>
#include <iterator>
#include <string>

#include "edits/decimal_text.h"
#include "edits/qv_edit.h"
#include "fuzz/fuzz_support.h"

namespace {

using QVStandardCtrls::CQVEdit;
using SOUI::SStringW;

const wchar_t* const kFilters[] = {L"float", L"number", L"integer", L"EnUpper", L"EnLower", L"price"};
const wchar_t* const kMaxBufs[] = {L"32767", L"8", L"1", L"0x40"};
// Mostly what the filters care about, then the rest of printable ASCII.
const wchar_t kKeys[] = L"0123456789.-+.-aZqQ \b\t\r";
const wchar_t* const kChunks[] = {L"", L"1", L"-", L".", L"1.5", L"-0.25", L"+7", L"12a", L"abc", L"ABC",
                                  L"\x4E2D", L"9\r\nx", L"..", L"--1", L"\x00E9", L"1e5"};

bool Accepts(const SStringW& filter, const SStringW& text) {
  if (filter == L"price") {
    const int places = QVStandardCtrls::QVDecimalPlaces(text);
    return text.IsEmpty() || text == L"-" || (places >= 0 && places <= 2 && text[0] != L'+');
  }
  if (filter == L"float") return QVStandardCtrls::IsQVFloatText(text);
  if (filter == L"number") return QVStandardCtrls::IsQVNumberText(text);
  if (filter == L"integer") return QVStandardCtrls::IsQVIntegerText(text);
  return QVStandardCtrls::IsQVLetterText(text);
}

// Letters of the case the filter converts away from: an insertion may
// replace some, never add one.
int WrongCase(const SStringW& filter, const SStringW& text) {
  int n = 0;
  for (int i = 0; i < text.GetLength(); ++i) {
    if (filter == L"EnUpper") n += text[i] >= L'a' && text[i] <= L'z';
    if (filter == L"EnLower") n += text[i] >= L'A' && text[i] <= L'Z';
  }
  return n;
}

SStringW Chunk(qvfuzz::ByteReader& in) {
  if (in.Bool()) return kChunks[in.Pick(std::size(kChunks))];
  SStringW s;
  for (int n = in.Range(0, 24); n > 0; --n) s += SStringW(static_cast<wchar_t>(in.Range(0x20, 0x7E)));
  return s;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qvfuzz::FuzzApp fuzz;
  qvfuzz::ByteReader in(data, size);
  const wchar_t* filter = kFilters[in.Pick(std::size(kFilters))];
  const wchar_t* max_buf = kMaxBufs[in.Pick(std::size(kMaxBufs))];
  SOUI::SHostWnd host;
  const bool price = SStringW(filter) == L"price";
  const SStringW mode = price ? SStringW(L"tick=\"0.05\" min=\"-10\" max=\"100\"")
                              : SStringW(L"filter=\"") + filter + L"\"";
  const SStringW xml = SStringW(L"<SOUI><root><qv_edit name=\"e\" pos=\"0,0,-0,@24\" ") + mode + L" maxBuf=\"" +
                       max_buf + L"\"/></root></SOUI>";
  if (!host.InitFromXmlText(xml)) return 0;
  host.Create(nullptr, 0, 0, 300, 60);
  host.ShowWindow(SOUI::SW_SHOW);
  CQVEdit* e = host.FindChildByName2<CQVEdit>(L"e");
  QV_FUZZ_CHECK(e != nullptr, "no edit");
  e->SetFocus();
  int errors = 0;
  e->GetEventSet()->subscribeEvent(QVStandardCtrls::EVT_QVEDIT_INPUT_ERROR, [&errors](SOUI::EventArgs*) {
    ++errors;
    return true;
  });
  int limit = 0;
  StrToIntExW(max_buf, STIF_SUPPORT_HEX, &limit);

  for (int step = 0; step < 300 && !in.Empty(); ++step) {
    const SStringW before = e->GetWindowText();
    long s0 = 0, e0 = 0;
    e->GetSel(s0, e0);
    const int errors_before = errors;
    bool judged = true;
    switch (in.Pick(7)) {
      case 0: {
        const wchar_t key = in.Bool() ? kKeys[in.Pick(std::size(kKeys) - 1)] : static_cast<wchar_t>(in.Range(0x20, 0x7E));
        judged = key >= 0x20;
        host.OnKeyEvent(WM_CHAR, key, 0);
        break;
      }
      case 1:
        fuzz.app().GetClipboard().SetText(Chunk(in));
        e->Paste();
        break;
      case 2:
        host.OnImeCommit(Chunk(in));
        break;
      case 3:
        e->SetSel(in.Range(-1, 40), in.Range(-1, 40));
        judged = false;
        break;
      case 4:
        if (in.Bool()) e->Undo();
        else e->Redo();
        judged = false;
        break;
      case 5:
        e->SetWindowText(Chunk(in));  // the program's own text is not judged
        judged = false;
        break;
      default: {
        host.OnKeyEvent(WM_KEYDOWN, in.Bool() ? VK_UP : VK_DOWN, 0);
        judged = false;
        if (!price) break;
        int64_t units = 0;
        const SStringW now = e->GetWindowText();
        if (limit < 6) break;  // "-10.00" and "100.00" are cut by a tinier maxBuf
        QV_FUZZ_CHECK(QVStandardCtrls::ParseQVDecimal(now, 2, &units) && QVStandardCtrls::QVDecimalPlaces(now) == 2,
                      "a step wrote \"%ls\"", now.c_str());
        QV_FUZZ_CHECK(units >= -1000 && units <= 10000 && units % 5 == 0, "a step left %lld units",
                      static_cast<long long>(units));
        break;
      }
    }
    const SStringW after = e->GetWindowText();
    QV_FUZZ_CHECK(after.GetLength() <= limit, "%d characters under maxBuf %d", after.GetLength(), limit);
    if (!judged) continue;
    if (after != before) {
      QV_FUZZ_CHECK(Accepts(filter, after), "%ls let in \"%ls\"", filter, after.c_str());
      QV_FUZZ_CHECK(WrongCase(filter, after) <= WrongCase(filter, before), "%ls kept the case of \"%ls\"", filter,
                    after.c_str());
      QV_FUZZ_CHECK(errors == errors_before, "accepted input raised an error");
    } else {
      QV_FUZZ_CHECK(errors - errors_before <= 1, "%d errors for one insertion", errors - errors_before);
      long s1 = 0, e1 = 0;
      e->GetSel(s1, e1);
      QV_FUZZ_CHECK(errors == errors_before || (s1 == s0 && e1 == e0), "a rejection moved the selection");
    }
  }
  return 0;
}
