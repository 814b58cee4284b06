#include "edits/qv_edit.h"

#include <algorithm>

#include "edits/decimal_text.h"
#include "framework/style_tables.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

bool IsDigit(wchar_t c) { return c >= L'0' && c <= L'9'; }
bool IsLetter(wchar_t c) { return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z'); }
// The toolkit edit reads its flags as integers ("true" is 0); these copies
// must agree with it.
bool IntFlag(const SStringW& v) {
  int n = 0;
  StrToIntExW(v, STIF_SUPPORT_HEX, &n);
  return n != 0;
}

bool IsBackspace(const SStringW& s) { return s.GetLength() == 1 && s[0] == L'\b'; }

// ASCII only: the letter filters admit nothing else, and the user's locale
// must not turn an 'i' into a dotted capital.
void ToAsciiCase(SStringW& s, bool upper) {
  SStringW out;
  for (int i = 0; i < s.GetLength(); ++i) {
    wchar_t c = s[i];
    if (upper && c >= L'a' && c <= L'z') c = static_cast<wchar_t>(c - L'a' + L'A');
    if (!upper && c >= L'A' && c <= L'Z') c = static_cast<wchar_t>(c - L'A' + L'a');
    out += SStringW(c);
  }
  s = out;
}

// A built-in filter from its whole-text test: backspace passes, otherwise the
// candidate is judged. case_fold: 0 none, 1 upper, -1 lower.
QVEditFilter MakeFilter(bool (*accepts)(const SStringW&), int case_fold) {
  return [accepts, case_fold](const SStringW& text, SStringW& inserted, int start, int end) {
    if (IsBackspace(inserted)) return false;
    if (case_fold != 0) ToAsciiCase(inserted, case_fold > 0);
    return !accepts(QVEditCandidate(text, inserted, start, end));
  };
}

}  // namespace

SStringW QVEditCandidate(const SStringW& text, const SStringW& inserted, int start, int end) {
  const int len = text.GetLength();
  start = std::max(0, std::min(start, len));
  end = std::max(start, std::min(end, len));
  SStringW c = text.Left(start);
  c += inserted;
  c += text.Mid(end);
  return c;
}

bool IsQVFloatText(const SStringW& s) {
  int i = 0, digits = 0, points = 0;
  if (s.GetLength() > 0 && (s[0] == L'-' || s[0] == L'+')) i = 1;
  for (; i < s.GetLength(); ++i) {
    if (IsDigit(s[i])) ++digits;
    else if (s[i] == L'.' && ++points == 1) continue;
    else return false;
  }
  return digits > 0;
}

bool IsQVNumberText(const SStringW& s) {
  if (s.IsEmpty()) return false;
  for (int i = 0; i < s.GetLength(); ++i) {
    if (!IsDigit(s[i])) return false;
  }
  return true;
}

bool IsQVIntegerText(const SStringW& s) {
  for (int i = 0; i < s.GetLength(); ++i) {
    if (IsDigit(s[i]) || (i == 0 && (s[i] == L'-' || s[i] == L'+'))) continue;
    return false;
  }
  return true;
}

bool IsQVLetterText(const SStringW& s) {
  for (int i = 0; i < s.GetLength(); ++i) {
    if (!IsLetter(s[i])) return false;
  }
  return true;
}

bool FindQVEditFilter(const SStringW& value, QVEditFilter* out) {
  QVEditFilter f;
  // Case-sensitive, in this order.
  if (value == L"float") f = MakeFilter(&IsQVFloatText, 0);
  else if (value == L"number") f = MakeFilter(&IsQVNumberText, 0);
  else if (value == L"integer") f = MakeFilter(&IsQVIntegerText, 0);
  else if (value == L"EnUpper") f = MakeFilter(&IsQVLetterText, 1);
  else if (value == L"EnLower") f = MakeFilter(&IsQVLetterText, -1);
  else if (!(value == L"0" || value.IsEmpty() || value == L"null")) return false;
  if (out) *out = std::move(f);
  return true;
}

const wchar_t kQVEditTextColor[] = L"@color\\style_skin_qv_text\\text_h1";
const wchar_t kQVEditCueColor[] = L"@color\\style_skin_qv_text\\text_h3";

// ---- CQVEdit ------------------------------------------------------------------------

CQVEdit::CQVEdit() {
  GetEventSet()->addEvent(EVT_QVEDIT_INPUT_ERROR, EventQVEditInputError::EventName());
  // House colours by theme reference, so a page is right in light and dark.
  SEdit::SetAttribute(L"colorText", kQVEditTextColor, TRUE);
  SEdit::SetAttribute(L"cueColor", kQVEditCueColor, TRUE);
  // A single-line house edit is taller than its text: centre the line.
  SEdit::SetAttribute(L"vcenter", L"1", TRUE);
}

HRESULT CQVEdit::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVEdit> kAttrs[] = {
      {L"qvstyle", &CQVEdit::OnAttrQVStyle},
      {L"filter", &CQVEdit::OnAttrFilter},
      // Kept here too: pasted text is cut to the room left before judging.
      {L"maxBuf", &CQVEdit::OnAttrMaxBuf, true},
      {L"multiLines", &CQVEdit::OnAttrMultiLines, true},
      {L"readOnly", &CQVEdit::OnAttrReadOnly, true},
      {L"decimals", &CQVEdit::OnAttrDecimals},
      {L"tick", &CQVEdit::OnAttrTick},
      {L"min", &CQVEdit::OnAttrMin},
      {L"max", &CQVEdit::OnAttrMax},
      {L"wheel", &CQVEdit::OnAttrWheel},
  };
  static const QVAdmittedAttrs kAdmitted = {
      L"skin", L"focusSkin", L"colorBkgnd", L"colorBorder", L"margin", L"margin-x", L"margin-y", L"inset",
      L"padding", L"padding_left", L"padding_top", L"padding_right", L"padding_bottom", L"valign", L"align",
      L"height", L"font", L"colorText", L"colorTextDisable", L"cursor", L"password",
      L"passwordChar", L"number", L"wantReturn", L"wantTab", L"cueText", L"cueColor", L"vcenter",
      L"autoHscroll", L"colorSelBkgnd", L"colorSelText", L"colorImeLine"};
  return QVDispatchAttribute<CQVEdit, SEdit>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT CQVEdit::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  const QVEditStyle* style = FindQVEditStyle(value);
  if (!style) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  SetAttribute(L"skin", style->skin, loading);
  SetAttribute(L"height", style->height, loading);
  SetAttribute(L"font", style->font, loading);
  SetAttribute(L"padding", style->padding, loading);
  return S_OK;
}

HRESULT CQVEdit::OnAttrFilter(const SStringW& value, BOOL) {
  QVEditFilter f;
  if (FindQVEditFilter(value, &f)) filter_ = std::move(f);
  return S_OK;
}

HRESULT CQVEdit::OnAttrMaxBuf(const SStringW& value, BOOL) {
  int n = 0;
  StrToIntExW(value, STIF_SUPPORT_HEX, &n);
  max_buf_ = n > 0 ? n : kDefaultMaxBuf;
  return S_OK;
}

HRESULT CQVEdit::OnAttrMultiLines(const SStringW& value, BOOL) {
  multi_lines_ = IntFlag(value);
  return S_OK;
}

HRESULT CQVEdit::OnAttrReadOnly(const SStringW& value, BOOL) {
  read_only_ = IntFlag(value);
  return S_OK;
}

HRESULT CQVEdit::OnAttrDecimals(const SStringW& value, BOOL) {
  decimals_ = value;
  return S_OK;
}

HRESULT CQVEdit::OnAttrTick(const SStringW& value, BOOL) {
  tick_ = value;
  return S_OK;
}

HRESULT CQVEdit::OnAttrMin(const SStringW& value, BOOL) {
  min_ = value;
  return S_OK;
}

HRESULT CQVEdit::OnAttrMax(const SStringW& value, BOOL) {
  max_ = value;
  return S_OK;
}

HRESULT CQVEdit::OnAttrWheel(const SStringW& value, BOOL) {
  wheel_ = QVParseBool(value);
  return S_OK;
}

// Read from the attribute texts each time, so their order in the XML does
// not matter; values that do not parse are ignored.
CQVEdit::PriceRule CQVEdit::Price() const {
  PriceRule r;
  int places = 0;
  StrToIntExW(decimals_, STIF_SUPPORT_HEX, &places);
  r.places = std::max(0, std::min(places, kQVMaxDecimalPlaces));
  const int tick_places = QVDecimalPlaces(tick_);
  if (tick_places > r.places && tick_places <= kQVMaxDecimalPlaces) r.places = tick_places;
  int64_t tick = 0;
  if (ParseQVDecimal(tick_, r.places, &tick) && tick > 0) r.tick = tick;
  r.has_min = ParseQVDecimal(min_, r.places, &r.min);
  r.has_max = ParseQVDecimal(max_, r.places, &r.max);
  if (r.has_min && r.has_max && r.max < r.min) r.has_max = false;
  return r;
}

QVEditFilter CQVEdit::ActiveFilter() const {
  if (filter_ || !IsPriceMode()) return filter_;
  const PriceRule rule = Price();
  const bool negative = !rule.has_min || rule.min < 0;
  return [rule, negative](const SStringW& text, SStringW& inserted, int start, int end) {
    if (IsBackspace(inserted)) return false;
    const SStringW c = QVEditCandidate(text, inserted, start, end);
    if (c.IsEmpty() || (negative && c == L"-")) return false;
    if (c[0] == L'+' || (c[0] == L'-' && !negative)) return true;
    const int places = QVDecimalPlaces(c);
    return places < 0 || places > rule.places;
  };
}

bool CQVEdit::StepPrice(int dir) {
  if (!IsPriceMode() || read_only_ || dir == 0) return false;
  const PriceRule rule = Price();
  int64_t value = 0;
  if (ParseQVDecimal(GetWindowText(), rule.places, &value)) value = StepQVDecimal(value, rule.tick, dir);
  else value = rule.has_min ? rule.min : 0;  // empty or unreadable: start afresh
  if (rule.has_min) value = std::max(value, rule.min);
  if (rule.has_max) value = std::min(value, rule.max);
  const SStringW text = FormatQVDecimal(value, rule.places);
  if (text == GetWindowText()) return true;
  SetSel(0, -1);
  ReplaceSel(text, TRUE);
  return true;
}

void CQVEdit::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  if ((vk == VK_UP || vk == VK_DOWN) && StepPrice(vk == VK_UP ? 1 : -1)) return;
  SEdit::OnKeyDown(vk, repeat, flags);
}

BOOL CQVEdit::OnMouseWheel(UINT flags, short delta, CPoint pt) {
  // Only when asked and focused: a page scrolled under the pointer must
  // never change an order's price.
  if (wheel_ && IsFocused() && delta != 0 && StepPrice(delta > 0 ? 1 : -1)) return TRUE;
  return SEdit::OnMouseWheel(flags, delta, pt);
}

void CQVEdit::NotifyFilterEvent() {
  EventQVEditInputError evt(this);
  FireEvent(evt);
}

bool CQVEdit::Reject(SStringW& inserted, int start, int end) {
  const QVEditFilter filter = ActiveFilter();
  if (!filter) return false;
  try {
    return filter(GetWindowText(), inserted, start, end);
  } catch (...) {
    return true;  // a filter that cannot say yes has said no
  }
}

void CQVEdit::OnChar(UINT ch, UINT repeat, UINT flags) {
  // Shortcuts and a read-only edit are the toolkit's business, not input.
  const bool judged = (filter_ || IsPriceMode()) && ch >= 0x20 && ch <= 0x7E && GetKeyState(VK_CONTROL) >= 0 && !read_only_;
  if (!judged) {
    SEdit::OnChar(ch, repeat, flags);
    return;
  }
  DWORD start = 0, end = 0;
  LRESULT unused = 0;
  ProcessSwndMessage(EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end), unused);
  SStringW inserted(static_cast<wchar_t>(ch));
  if (Reject(inserted, static_cast<int>(start), static_cast<int>(end))) {
    NotifyFilterEvent();
    return;
  }
  ReplaceSel(inserted, TRUE);
}

SStringW CQVEdit::Trim(const SStringW& text, bool* cut) const {
  long start = 0, end = 0;
  GetSel(start, end);
  const int room = std::max(0, max_buf_ - (GetTextLength() - static_cast<int>(end - start)));
  SStringW kept;
  *cut = false;
  for (int i = 0; i < text.GetLength(); ++i) {
    const wchar_t c = text[i];
    if (!multi_lines_ && (c == L'\r' || c == L'\n')) break;
    if ((c < 0x20 && c != L'\n') || c == 0x7F) continue;
    if (kept.GetLength() >= room) {
      *cut = true;
      break;
    }
    kept += SStringW(c);
  }
  return kept;
}

void CQVEdit::InsertText(const SStringW& text, InsertSource source) {
  // Typed text reaching here is what the typing path leaves unfiltered.
  if ((!filter_ && !IsPriceMode()) || source == InsertSource::kTyped || read_only_) {
    SEdit::InsertText(text, source);
    return;
  }
  bool cut = false;
  SStringW inserted = Trim(text, &cut);
  if (inserted.IsEmpty()) return;
  long start = 0, end = 0;
  GetSel(start, end);
  if (Reject(inserted, static_cast<int>(start), static_cast<int>(end))) {
    NotifyFilterEvent();
    return;
  }
  SEdit::InsertText(inserted, source);
  if (cut) {
    EventRENotify evt(this);
    evt.iNotify = EN_MAXTEXT;
    FireEvent(evt);
  }
}

}  // namespace QVStandardCtrls
