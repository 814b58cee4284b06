// SEdit implementation.
//
// Sections: construction and attributes · text model · editing · input.
// Measuring, wrapping, hit testing and painting are in edit_layout.cpp.
#include "soui/edit.h"

#include <algorithm>

#include "soui/sapp.h"

namespace SOUI {
namespace {

BOOL ParseIntFlag(const SStringW& v) {
  int n = 0;
  StrToIntExW(v, STIF_SUPPORT_HEX, &n);
  return n != 0 ? TRUE : FALSE;
}

}  // namespace

// ---- construction and attributes ---------------------------------------------------

SEdit::SEdit() {
  focusable_ = TRUE;
  static const SwndStyle& style = SwndStyle::LeftAligned(L"ibeam");
  UseClassStyle(style);
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
  else if (is(L"autoHscroll")) auto_hscroll_ = ParseIntFlag(value);
  else if (is(L"colorSelBkgnd") || is(L"colorSelText") || is(L"colorImeLine")) {
    ThemedColor& c = is(L"colorSelBkgnd") ? sel_bkgnd_ : is(L"colorSelText") ? sel_text_ : ime_line_;
    if (!c.Set(value)) return E_FAIL;
  }
  else if (is(L"maxBuf")) {
    int n = 0;
    StrToIntExW(value, STIF_SUPPORT_HEX, &n);
    max_buf_ = n > 0 ? n : kDefaultMaxBuf;
  } else if (is(L"cueText")) {
    SApplication* app = SApplication::getSingletonPtr();
    cue_text_ = app ? app->GetResProvider().ResolveString(value) : value;
  } else if (is(L"cueColor")) {
    if (!cue_color_.Set(value)) return E_FAIL;
  } else if (is(L"autoVscroll") || is(L"transparent")) {
    // Scrolling follows the caret always; the background is the window's.
  } else {
    const HRESULT hr = SWindow::SetAttribute(name, value, loading);
    if (is(L"font")) {
      for (ParaLayout& lay : layouts_) lay.measured = false;
      line_height_ = 0;
    }
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
  layouts_.erase(layouts_.begin() + first, layouts_.begin() + last);
  paras_.insert(paras_.begin() + first, lines.begin(), lines.end());
  layouts_.insert(layouts_.begin() + first, lines.size(), ParaLayout());
  length_ += static_cast<int>(text.size()) - (end - start);
  joined_valid_ = false;
  caret_line_end_ = false;
  goal_x_ = -1;
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
  caret_line_end_ = false;
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

void SEdit::MoveCaret(int pos, bool extend, bool line_end) {
  caret_ = std::max(0, std::min(pos, length_));
  caret_line_end_ = line_end;
  goal_x_ = -1;
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
  EnsureCaretVisible();  // also tells the host where the caret is
}

void SEdit::OnKillFocus() {
  KillTimer(kCaretTimerId);
  caret_on_ = false;
  dragging_ = false;
  composition_.Empty();
  SWindow::OnKillFocus();
}

void SEdit::OnSize(UINT type, CSize size) {
  SWindow::OnSize(type, size);
  EnsureCaretVisible();  // lines re-wrap: the old scroll may show nothing
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
  bool line_end = false;
  const int pos = HitTest(pt, &line_end);
  MoveCaret(pos, (flags & MK_SHIFT) != 0, line_end);
}

void SEdit::OnLButtonDblClk(UINT flags, CPoint pt) {
  (void)flags;
  bool line_end = false;
  int s = 0, e = 0;
  WordAt(HitTest(pt, &line_end), &s, &e);
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
  if (!dragging_ || !(flags & MK_LBUTTON)) return;
  bool line_end = false;
  const int pos = HitTest(pt, &line_end);
  MoveCaret(pos, true, line_end);
}

void SEdit::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  const bool ctrl = GetKeyState(VK_CONTROL) < 0, shift = GetKeyState(VK_SHIFT) < 0;
  long s = 0, e = 0;
  GetSel(s, e);
  switch (vk) {
    case VK_LEFT:
      if (!shift && s != e && !ctrl) MoveCaret(static_cast<int>(s), false);
      else MoveCaret(ctrl ? WordStart(caret_) : caret_ - 1, shift);
      return;
    case VK_RIGHT:
      if (!shift && s != e && !ctrl) MoveCaret(static_cast<int>(e), false);
      else MoveCaret(ctrl ? WordEnd(caret_) : caret_ + 1, shift);
      return;
    case VK_HOME:
      if (ctrl) MoveCaret(0, shift);
      else MoveToLineEdge(false, shift);
      return;
    case VK_END:
      if (ctrl) MoveCaret(length_, shift);
      else MoveToLineEdge(true, shift);
      return;
    case VK_PRIOR:
    case VK_NEXT:
      if (!multi_lines_) break;  // a single line leaves page keys to the view around it
      MoveLines((vk == VK_PRIOR ? -1 : 1) * std::max(1, GetChildrenLayoutRect().Height() / LineHeight()), shift);
      return;
    case VK_UP:
    case VK_DOWN:
      if (multi_lines_) MoveLines(vk == VK_UP ? -1 : 1, shift);
      return;
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

}  // namespace SOUI
