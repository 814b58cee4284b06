// SEdit implementation.
//
// Sections: construction and attributes · text model · editing · input ·
// painting.
#include "soui/edit.h"

#include <algorithm>

#include "soui/sapp.h"

namespace SOUI {
namespace {

bool IsWordChar(wchar_t c) { return c != L' ' && c != L'\t' && c != L'\n'; }

BOOL ParseIntFlag(const SStringW& v) {
  int n = 0;
  StrToIntExW(v, STIF_SUPPORT_HEX, &n);
  return n != 0 ? TRUE : FALSE;
}

}  // namespace

// ---- construction and attributes ---------------------------------------------------

SEdit::SEdit() {
  focusable_ = TRUE;
  style_.align = SwndStyle::Left;
  style_.cursor = L"ibeam";
  GetEventSet()->addEvent(EVT_RE_NOTIFY, EventRENotify::EventName());
}

void RegisterEditControls(SObjectFactory& factory) { factory.RegisterWindowClass<SEdit>(); }

HRESULT SEdit::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  auto is = [&](const wchar_t* n) { return name.CompareNoCase(n) == 0; };
  if (is(L"multiLines")) multi_lines_ = ParseIntFlag(value);
  else if (is(L"readOnly")) read_only_ = ParseIntFlag(value);
  else if (is(L"password")) password_ = ParseIntFlag(value);
  else if (is(L"passwordChar")) password_char_ = value.IsEmpty() ? L'*' : value[0];
  else if (is(L"number")) number_ = ParseIntFlag(value);
  else if (is(L"wantReturn")) want_return_ = ParseIntFlag(value);
  else if (is(L"wantTab")) want_tab_ = ParseIntFlag(value);
  else if (is(L"vcenter")) vcenter_ = ParseIntFlag(value);
  else if (is(L"maxBuf")) {
    int n = 0;
    StrToIntExW(value, STIF_SUPPORT_HEX, &n);
    max_buf_ = n > 0 ? n : kDefaultMaxBuf;
  } else if (is(L"cueText")) {
    SApplication* app = SApplication::getSingletonPtr();
    cue_text_ = app ? app->GetResProvider().ResolveString(value) : value;
  } else if (is(L"cueColor")) {
    if (!cue_color_.Set(value)) return E_FAIL;
  } else if (is(L"autoHscroll") || is(L"autoVscroll") || is(L"transparent")) {
    // Scrolling follows the caret always; the background is the window's.
  } else {
    const HRESULT hr = SWindow::SetAttribute(name, value, loading);
    if (is(L"font")) std::fill(measured_.begin(), measured_.end(), false), line_height_ = 0;
    return hr;
  }
  return AfterAttribute(name, value, loading, S_OK);
}

UINT SEdit::OnGetDlgCode() const {
  UINT code = SC_WANTCHARS | SC_WANTARROWS;
  if (want_tab_) code |= SC_WANTTAB;
  if (multi_lines_ && want_return_) code |= SC_WANTRETURN;
  return code;
}

// ---- text model --------------------------------------------------------------------

SStringW SEdit::GetWindowText(BOOL raw) const {
  (void)raw;
  if (!joined_valid_) {
    std::wstring all;
    all.reserve(static_cast<size_t>(length_));
    for (size_t i = 0; i < paras_.size(); ++i) {
      if (i) all += L'\n';
      all += paras_[i];
    }
    joined_ = SStringW(std::move(all));
    joined_valid_ = true;
  }
  return joined_;
}

void SEdit::SetWindowText(const SStringW& text) {
  undo_.clear();
  redo_.clear();
  std::wstring clean = Sanitize(text.str());
  if (static_cast<int>(clean.size()) > max_buf_) clean.resize(static_cast<size_t>(max_buf_));
  ApplyReplace(0, length_, clean);
  caret_ = anchor_ = 0;
  scroll_x_ = scroll_y_ = 0;
  Notify(EN_CHANGE);
}

void SEdit::Locate(int pos, int* para, int* col) const {
  pos = std::max(0, std::min(pos, length_));
  int p = 0;
  while (p + 1 < static_cast<int>(paras_.size()) && pos > static_cast<int>(paras_[static_cast<size_t>(p)].size())) {
    pos -= static_cast<int>(paras_[static_cast<size_t>(p)].size()) + 1;
    ++p;
  }
  *para = p;
  *col = pos;
}

int SEdit::PosOf(int para, int col) const {
  int pos = 0;
  for (int p = 0; p < para; ++p) pos += static_cast<int>(paras_[static_cast<size_t>(p)].size()) + 1;
  return pos + col;
}

std::wstring SEdit::Display(int para) const {
  const std::wstring& t = paras_[static_cast<size_t>(para)];
  return password_ ? std::wstring(t.size(), password_char_) : t;
}

const std::vector<int>& SEdit::Extents(int para) const {
  const size_t i = static_cast<size_t>(para);
  if (!measured_[i]) {
    std::vector<int>& ends = extents_[i];
    const std::wstring text = Display(para);
    ends.assign(text.size(), 0);
    SApplication* app = SApplication::getSingletonPtr();
    IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
    if (rt && !text.empty()) {
      IFontPtr old = rt->SelectFont(GetPaintFont(rt));
      rt->MeasureCharExtents(text.c_str(), static_cast<int>(text.size()), ends.data());
      rt->SelectFont(old);
    }
    measured_[i] = true;
  }
  return extents_[i];
}

int SEdit::LineHeight() const {
  if (line_height_ <= 0) {
    SApplication* app = SApplication::getSingletonPtr();
    IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
    SIZE sz{0, 12};
    if (rt) {
      IFontPtr old = rt->SelectFont(GetPaintFont(rt));
      rt->MeasureText(L"A", 1, &sz);
      rt->SelectFont(old);
    }
    line_height_ = std::max<int>(sz.cy, 1);
  }
  return line_height_;
}

int SEdit::XOf(int para, int col) const {
  const std::vector<int>& e = Extents(para);
  if (col <= 0 || e.empty()) return 0;
  return e[static_cast<size_t>(std::min<int>(col, static_cast<int>(e.size())) - 1)];
}

CRect SEdit::TextRect() const {
  CRect rc = GetClientRect();
  rc.DeflateRect(style_.GetPadding(GetScale()));
  return rc;
}

int SEdit::HitTest(CPoint pt) const {
  const CRect rc = TextRect();
  int para = 0;
  if (multi_lines_) {
    para = (pt.y - rc.top + scroll_y_) / LineHeight();
    para = std::max(0, std::min(para, static_cast<int>(paras_.size()) - 1));
  }
  const int x = pt.x - rc.left + scroll_x_;
  const std::vector<int>& e = Extents(para);
  // The nearest boundary: before character i when x is left of its middle.
  int col = 0;
  const int n = static_cast<int>(e.size());
  while (col < n) {
    const int left = col ? e[static_cast<size_t>(col - 1)] : 0;
    if (x < (left + e[static_cast<size_t>(col)] + 1) / 2) break;
    ++col;
  }
  return PosOf(para, col);
}

void SEdit::EnsureCaretVisible() {
  const CRect rc = TextRect();
  int para = 0, col = 0;
  Locate(caret_, &para, &col);
  const int x = XOf(para, col);
  if (x < scroll_x_) scroll_x_ = std::max(0, x - rc.Width() / 4);
  else if (x >= scroll_x_ + rc.Width()) scroll_x_ = x - rc.Width() + 1;
  if (multi_lines_) {
    const int top = para * LineHeight(), bottom = top + LineHeight();
    if (top < scroll_y_) scroll_y_ = top;
    else if (bottom > scroll_y_ + rc.Height()) scroll_y_ = bottom - rc.Height();
  }
}

int SEdit::WordStart(int pos) const {
  const SStringW text = GetWindowText();
  while (pos > 0 && !IsWordChar(text[pos - 1])) --pos;
  while (pos > 0 && IsWordChar(text[pos - 1])) --pos;
  return pos;
}

int SEdit::WordEnd(int pos) const {
  const SStringW text = GetWindowText();
  while (pos < length_ && IsWordChar(text[pos])) ++pos;
  while (pos < length_ && !IsWordChar(text[pos])) ++pos;
  return pos;
}

// ---- editing ------------------------------------------------------------------------

std::wstring SEdit::Sanitize(const std::wstring& in) const {
  std::wstring out;
  out.reserve(in.size());
  for (size_t i = 0; i < in.size(); ++i) {
    wchar_t c = in[i];
    if (c == L'\r') {
      if (i + 1 < in.size() && in[i + 1] == L'\n') continue;  // CRLF is one break
      c = L'\n';
    }
    if (c == L'\n' && !multi_lines_) break;  // a single line keeps its first line
    if (c < 0x20 && c != L'\n' && c != L'\t') continue;  // NUL and other controls
    if (c == 0x7F) continue;
    if (number_ && !(c >= L'0' && c <= L'9')) continue;
    out += c;
  }
  return out;
}

std::wstring SEdit::TextRange(int start, int end) const {
  // Walks only the paragraphs of the range, not the whole text.
  std::wstring out;
  if (end <= start) return out;
  int p = 0, c = 0;
  Locate(start, &p, &c);
  int left = end - start;
  while (left > 0 && p < static_cast<int>(paras_.size())) {
    const std::wstring& para = paras_[static_cast<size_t>(p)];
    const int take = std::min(left, static_cast<int>(para.size()) - c);
    out.append(para, static_cast<size_t>(c), static_cast<size_t>(take));
    left -= take;
    if (left > 0) {
      out += L'\n';
      --left;
    }
    ++p;
    c = 0;
  }
  return out;
}

void SEdit::ApplyReplace(int start, int end, const std::wstring& text) {
  int p0 = 0, c0 = 0, p1 = 0, c1 = 0;
  Locate(start, &p0, &c0);
  Locate(end, &p1, &c1);
  const std::wstring head = paras_[static_cast<size_t>(p0)].substr(0, static_cast<size_t>(c0));
  const std::wstring tail = paras_[static_cast<size_t>(p1)].substr(static_cast<size_t>(c1));
  std::vector<std::wstring> lines;
  size_t from = 0;
  for (;;) {
    const size_t nl = text.find(L'\n', from);
    lines.push_back(text.substr(from, nl == std::wstring::npos ? std::wstring::npos : nl - from));
    if (nl == std::wstring::npos) break;
    from = nl + 1;
  }
  lines.front() = head + lines.front();
  lines.back() += tail;
  // Only the paragraphs touched are replaced and re-measured.
  const auto first = static_cast<std::ptrdiff_t>(p0), last = static_cast<std::ptrdiff_t>(p1) + 1;
  paras_.erase(paras_.begin() + first, paras_.begin() + last);
  extents_.erase(extents_.begin() + first, extents_.begin() + last);
  measured_.erase(measured_.begin() + first, measured_.begin() + last);
  paras_.insert(paras_.begin() + first, lines.begin(), lines.end());
  extents_.insert(extents_.begin() + first, lines.size(), std::vector<int>());
  measured_.insert(measured_.begin() + first, lines.size(), false);
  length_ += static_cast<int>(text.size()) - (end - start);
  joined_valid_ = false;
  if (layout_param_.IsWrapContent(Orientation::Horz) || layout_param_.IsWrapContent(Orientation::Vert)) {
    RequestRelayout();
  }
}

bool SEdit::Replace(int start, int end, std::wstring text, bool can_undo, bool typing) {
  start = std::max(0, std::min(start, length_));
  end = std::max(start, std::min(end, length_));
  const int room = max_buf_ - (length_ - (end - start));
  bool cut = false;
  if (static_cast<int>(text.size()) > room) {
    text.resize(static_cast<size_t>(std::max(room, 0)));
    cut = true;
  }
  if (text.empty() && start == end) {
    if (cut) Notify(EN_MAXTEXT);
    return false;
  }
  if (can_undo) {
    const std::wstring removed = TextRange(start, end);
    UndoStep* last = undo_.empty() ? nullptr : &undo_.back();
    // Consecutive typing is one undo step.
    if (typing && removed.empty() && last && last->typing &&
        last->pos + static_cast<int>(last->inserted.size()) == start) {
      last->inserted += text;
    } else {
      undo_.push_back(UndoStep{start, removed, text, caret_, anchor_, typing});
    }
    redo_.clear();
  }
  ApplyReplace(start, end, text);
  caret_ = anchor_ = start + static_cast<int>(text.size());
  EnsureCaretVisible();
  ShowCaretNow();
  Invalidate();
  Notify(EN_CHANGE);
  if (cut) Notify(EN_MAXTEXT);
  return true;
}

void SEdit::Notify(UINT code) {
  EventRENotify evt(this);
  evt.iNotify = code;
  FireEvent(evt);
}

void SEdit::GetSel(long& start, long& end) const {
  start = std::min(caret_, anchor_);
  end = std::max(caret_, anchor_);
}

void SEdit::SetSel(long start, long end) {
  auto clamp = [this](long v) { return static_cast<int>(v < 0 || v > length_ ? length_ : v); };
  anchor_ = clamp(start);
  caret_ = clamp(end);
  EnsureCaretVisible();
  ShowCaretNow();
  Invalidate();
}

void SEdit::ReplaceSel(const SStringW& text, BOOL can_undo) {
  if (read_only_) return;
  long s = 0, e = 0;
  GetSel(s, e);
  Replace(static_cast<int>(s), static_cast<int>(e), Sanitize(text.str()), can_undo != FALSE, false);
}

void SEdit::InsertText(const SStringW& text, InsertSource source) {
  if (read_only_) return;
  long s = 0, e = 0;
  GetSel(s, e);
  Replace(static_cast<int>(s), static_cast<int>(e), Sanitize(text.str()), true, source == InsertSource::kTyped);
}

void SEdit::Undo() {
  if (undo_.empty() || read_only_) return;
  UndoStep step = undo_.back();
  undo_.pop_back();
  ApplyReplace(step.pos, step.pos + static_cast<int>(step.inserted.size()), step.removed);
  caret_ = step.caret_before;
  anchor_ = step.anchor_before;
  redo_.push_back(step);
  EnsureCaretVisible();
  Invalidate();
  Notify(EN_CHANGE);
}

void SEdit::Redo() {
  if (redo_.empty() || read_only_) return;
  UndoStep step = redo_.back();
  redo_.pop_back();
  ApplyReplace(step.pos, step.pos + static_cast<int>(step.removed.size()), step.inserted);
  caret_ = anchor_ = step.pos + static_cast<int>(step.inserted.size());
  step.typing = false;  // a redone step does not absorb later typing
  undo_.push_back(step);
  EnsureCaretVisible();
  Invalidate();
  Notify(EN_CHANGE);
}

void SEdit::Copy() {
  long s = 0, e = 0;
  GetSel(s, e);
  if (s == e || password_) return;  // a password is never copied out
  SApplication* app = SApplication::getSingletonPtr();
  if (app) app->GetClipboard().SetText(GetWindowText().Mid(static_cast<int>(s), static_cast<int>(e - s)));
}

void SEdit::Cut() {
  if (read_only_ || password_) return;
  Copy();
  ReplaceSel(L"", TRUE);
}

void SEdit::Paste() {
  SApplication* app = SApplication::getSingletonPtr();
  if (app) InsertText(app->GetClipboard().GetText(), InsertSource::kPaste);
}

// ---- input --------------------------------------------------------------------------

void SEdit::MoveCaret(int pos, bool extend) {
  caret_ = std::max(0, std::min(pos, length_));
  if (!extend) anchor_ = caret_;
  if (!undo_.empty()) undo_.back().typing = false;  // typing elsewhere is a new step
  EnsureCaretVisible();
  ShowCaretNow();
  Invalidate();
}

void SEdit::ShowCaretNow() {
  if (!IsFocused()) return;
  caret_on_ = true;
  SetTimer(kCaretTimerId, kCaretBlinkMs);  // restarts the blink
}

void SEdit::OnSetFocus() {
  SWindow::OnSetFocus();
  ShowCaretNow();
}

void SEdit::OnKillFocus() {
  KillTimer(kCaretTimerId);
  caret_on_ = false;
  dragging_ = false;
  composition_.Empty();
  SWindow::OnKillFocus();
}

void SEdit::OnTimer(int id) {
  if (id != kCaretTimerId) return SWindow::OnTimer(id);
  caret_on_ = !caret_on_;
  Invalidate();
}

void SEdit::OnLButtonDown(UINT flags, CPoint pt) {
  SetFocus();
  SetCapture();
  dragging_ = true;
  MoveCaret(HitTest(pt), (flags & MK_SHIFT) != 0);
}

void SEdit::OnLButtonDblClk(UINT flags, CPoint pt) {
  (void)flags;
  const int pos = HitTest(pt);
  const SStringW text = GetWindowText();
  int s = pos, e = pos;
  while (s > 0 && IsWordChar(text[s - 1])) --s;
  while (e < length_ && IsWordChar(text[e])) ++e;
  anchor_ = s;
  MoveCaret(e, true);
  dragging_ = false;
}

void SEdit::OnLButtonUp(UINT flags, CPoint pt) {
  (void)flags;
  (void)pt;
  dragging_ = false;
  ReleaseCapture();
}

void SEdit::OnMouseMove(UINT flags, CPoint pt) {
  if (dragging_ && (flags & MK_LBUTTON)) MoveCaret(HitTest(pt), true);
}

void SEdit::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  const bool ctrl = GetKeyState(VK_CONTROL) < 0, shift = GetKeyState(VK_SHIFT) < 0;
  long s = 0, e = 0;
  GetSel(s, e);
  int para = 0, col = 0;
  Locate(caret_, &para, &col);
  switch (vk) {
    case VK_LEFT:
      if (!shift && s != e && !ctrl) MoveCaret(static_cast<int>(s), false);
      else MoveCaret(ctrl ? WordStart(caret_) : caret_ - 1, shift);
      return;
    case VK_RIGHT:
      if (!shift && s != e && !ctrl) MoveCaret(static_cast<int>(e), false);
      else MoveCaret(ctrl ? WordEnd(caret_) : caret_ + 1, shift);
      return;
    case VK_HOME: MoveCaret(ctrl ? 0 : PosOf(para, 0), shift); return;
    case VK_END:
      MoveCaret(ctrl ? length_ : PosOf(para, static_cast<int>(paras_[static_cast<size_t>(para)].size())), shift);
      return;
    case VK_PRIOR:
    case VK_NEXT:
      if (!multi_lines_) break;  // a single line leaves page keys to the view around it
      [[fallthrough]];
    case VK_UP:
    case VK_DOWN: {
      if (!multi_lines_) return;
      const int step = vk == VK_PRIOR || vk == VK_NEXT ? std::max(1, TextRect().Height() / LineHeight()) : 1;
      const int target = std::max(0, std::min(para + (vk == VK_UP || vk == VK_PRIOR ? -step : step),
                                              static_cast<int>(paras_.size()) - 1));
      if (target < 0 || target >= static_cast<int>(paras_.size())) return;
      const CRect rc = TextRect();
      const CPoint pt(rc.left + XOf(para, col) - scroll_x_, rc.top + target * LineHeight() - scroll_y_);
      int tp = 0, tc = 0;
      Locate(HitTest(pt), &tp, &tc);
      MoveCaret(PosOf(target, tc), shift);
      return;
    }
    case VK_DELETE:
      if (read_only_) return;
      if (s != e) Replace(static_cast<int>(s), static_cast<int>(e), L"", true, false);
      else Replace(caret_, ctrl ? WordEnd(caret_) : caret_ + 1, L"", true, false);
      return;
    default: break;
  }
  if (ctrl) {
    switch (vk) {
      case 'A': SelectAll(); return;
      case 'C': Copy(); return;
      case 'X': Cut(); return;
      case 'V': Paste(); return;
      case 'Z': Undo(); return;
      case 'Y': Redo(); return;
      default: break;
    }
  }
  SWindow::OnKeyDown(vk, repeat, flags);
}

void SEdit::OnChar(UINT ch, UINT repeat, UINT flags) {
  (void)repeat;
  (void)flags;
  if (GetKeyState(VK_CONTROL) < 0 && ch != 0x08) return;  // shortcuts are keys, not text
  if (read_only_) return;
  if (ch == 0x08) {
    long s = 0, e = 0;
    GetSel(s, e);
    if (s != e) Replace(static_cast<int>(s), static_cast<int>(e), L"", true, false);
    else if (caret_ > 0) Replace(caret_ - 1, caret_, L"", true, false);
    return;
  }
  if (ch == L'\r' || ch == L'\n') {
    if (multi_lines_ && want_return_) InsertText(L"\n", InsertSource::kTyped);
    return;
  }
  if (ch == L'\t' && !want_tab_) return;
  if ((ch < 0x20 && ch != L'\t') || ch == 0x7F || ch > 0x10FFFF) return;
  InsertText(SStringW(static_cast<wchar_t>(ch)), InsertSource::kTyped);
}

BOOL SEdit::ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
  switch (msg) {
    case EM_GETSEL: {
      long s = 0, e = 0;
      GetSel(s, e);
      if (wp) *reinterpret_cast<DWORD*>(wp) = static_cast<DWORD>(s);
      if (lp) *reinterpret_cast<DWORD*>(lp) = static_cast<DWORD>(e);
      result = static_cast<LRESULT>(MAKELPARAM(std::min<long>(s, 0xFFFF), std::min<long>(e, 0xFFFF)));
      return TRUE;
    }
    case EM_SETSEL:
      SetSel(static_cast<long>(static_cast<intptr_t>(wp)), static_cast<long>(lp));
      result = 0;
      return TRUE;
    case EM_REPLACESEL:
      if (lp) ReplaceSel(reinterpret_cast<const wchar_t*>(lp), wp != 0);
      result = 0;
      return TRUE;
    case WM_IME_COMPOSITION: {
      const ImeText* ime = reinterpret_cast<const ImeText*>(lp);
      result = 0;
      if (!ime) return TRUE;
      if (wp & GCS_RESULTSTR) {
        composition_.Empty();
        InsertText(ime->text, InsertSource::kIme);
      } else {
        composition_ = read_only_ ? SStringW() : ime->text;
      }
      Invalidate();
      return TRUE;
    }
    default:
      return SWindow::ProcessSwndMessage(msg, wp, lp, result);
  }
}

// ---- painting -------------------------------------------------------------------------

CSize SEdit::MeasureContent(int width) {
  (void)width;
  const int lines = multi_lines_ ? static_cast<int>(paras_.size()) : 1;
  return CSize(0, LineHeight() * lines);
}

void SEdit::OnPaint(IRenderTarget* rt) {
  const CRect rc = TextRect();
  if (rc.IsRectEmpty()) return;
  rt->PushClipRect(&rc);
  const int lh = LineHeight();
  int top = rc.top - scroll_y_;
  if (!multi_lines_ && vcenter_) top = rc.top + (rc.Height() - lh) / 2;
  const COLORREF color = GetPaintTextColor();
  if (length_ == 0 && composition_.IsEmpty() && !cue_text_.IsEmpty()) {
    const COLORREF cue = cue_color_.IsSet() ? cue_color_.Get() : RGBA(0x99, 0x99, 0x99, 0xFF);
    const COLORREF old = rt->SetTextColor(cue);
    rt->TextOut(rc.left, top, cue_text_, cue_text_.GetLength());
    rt->SetTextColor(old);
  }
  long s = 0, e = 0;
  GetSel(s, e);
  int first = multi_lines_ ? std::max(0, scroll_y_ / lh) : 0;
  int pos = PosOf(first, 0);
  for (int p = first; p < static_cast<int>(paras_.size()); ++p) {
    const int y = top + p * lh;
    if (y >= rc.bottom) break;
    const int len = static_cast<int>(paras_[static_cast<size_t>(p)].size());
    // The selection behind the text.
    const int ss = std::max<long>(s, pos) - pos, se = std::min<long>(e, pos + len) - pos;
    if (se > ss || (s < pos + len + 1 && e > pos + len && p + 1 < static_cast<int>(paras_.size()) && s <= pos + len)) {
      const int x0 = rc.left - scroll_x_ + XOf(p, std::max(ss, 0));
      const int x1 = rc.left - scroll_x_ + XOf(p, std::max(se, 0)) + (e > pos + len ? lh / 3 : 0);
      const CRect sel(x0, y, std::max(x1, x0), y + lh);
      if (!sel.IsRectEmpty()) rt->FillSolidRect(&sel, RGBA(0xAD, 0xD6, 0xFF, 0xFF));
    }
    const std::wstring text = Display(p);
    if (!text.empty()) {
      const COLORREF old = rt->SetTextColor(color);
      rt->TextOut(rc.left - scroll_x_, y, text.c_str(), len);
      rt->SetTextColor(old);
    }
    pos += len + 1;
    if (!multi_lines_) break;
  }
  int cp = 0, cc = 0;
  Locate(caret_, &cp, &cc);
  const int cx = rc.left - scroll_x_ + XOf(cp, cc);
  const int cy = multi_lines_ ? top + cp * lh : top;
  int caret_x = cx;
  if (!composition_.IsEmpty()) {
    // The composition sits at the caret, underlined, over what follows.
    SIZE sz{0, 0};
    rt->MeasureText(composition_, composition_.GetLength(), &sz);
    const CRect back(cx, cy, cx + sz.cx, cy + lh);
    const COLORREF bk = style_.colorBkgnd.Get();
    rt->FillSolidRect(&back, bk != CR_INVALID ? bk : RGBA(0xFF, 0xFF, 0xFF, 0xFF));
    const COLORREF old = rt->SetTextColor(color);
    rt->TextOut(cx, cy, composition_, composition_.GetLength());
    rt->SetTextColor(old);
    const CRect underline(cx, cy + lh - 1, cx + sz.cx, cy + lh);
    rt->FillSolidRect(&underline, color);
    caret_x = cx + sz.cx;
  }
  if (caret_on_ && IsFocused()) {
    const CRect caret(caret_x, cy, caret_x + 1, cy + lh);
    rt->FillSolidRect(&caret, color);
  }
  rt->PopClip();
}

}  // namespace SOUI
