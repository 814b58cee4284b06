// SEdit: measuring and wrapping paragraphs, visual lines, hit testing,
// word stops and painting.
//
// Sections: paragraphs · visual lines · caret movement · words · painting.
#include <algorithm>
#include <climits>

#include "soui/edit.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

namespace SOUI {
namespace {

// Fills lines greedily: each line takes characters while they fit and ends
// at the last break opportunity, or between characters when there is none.
// White space may hang past the edge rather than start a line.
std::vector<int> WrapLines(const std::vector<int>& ends, const std::vector<unsigned char>& breaks, int width) {
  std::vector<int> starts{0};
  const int n = static_cast<int>(ends.size());
  if (width <= 0) return starts;
  int start = 0, base = 0, last_break = -1;
  for (int i = 0; i < n; ++i) {
    if (i > start && (breaks[static_cast<size_t>(i)] & kBreakLine)) last_break = i;
    if (i == start || ends[static_cast<size_t>(i)] - base <= width) continue;
    if (breaks[static_cast<size_t>(i)] & kBreakWhite) continue;
    int brk = last_break > start ? last_break : i;
    // Never inside a cluster (a base and its marks).
    while (brk > start + 1 && !(breaks[static_cast<size_t>(brk)] & kBreakCursor)) --brk;
    starts.push_back(brk);
    start = brk;
    base = ends[static_cast<size_t>(brk - 1)];
    last_break = -1;
    i = brk;  // the loop's ++ moves past the line's first character
  }
  return starts;
}

// What a character is for word stops.
enum class CharKind { kWhite, kWord, kOther };

}  // namespace

// ---- paragraphs ---------------------------------------------------------------------------

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

const std::wstring& SEdit::Display(int para, std::wstring* buffer) const {
  const std::wstring& t = paras_[static_cast<size_t>(para)];
  if (!password_) return t;
  buffer->assign(t.size(), password_char_);
  return *buffer;
}

int SEdit::WrapWidth() const {
  // Not laid out yet: no width to wrap at.
  const int width = GetChildrenLayoutRect().Width();
  return multi_lines_ && !auto_hscroll_ && width > 0 ? width : -1;
}

const SEdit::ParaLayout& SEdit::Layout(int para) const { return Layout(para, WrapWidth()); }

const SEdit::ParaLayout& SEdit::Layout(int para, int width) const {
  ParaLayout& lay = layouts_[static_cast<size_t>(para)];
  if (!lay.measured) {
    std::wstring buffer;
    const std::wstring& text = Display(para, &buffer);
    const int n = static_cast<int>(text.size());
    lay.ends.assign(text.size(), 0);
    lay.breaks.assign(text.size() + 1, kBreakCursor);
    SApplication* app = SApplication::getSingletonPtr();
    IRenderTarget* rt = app ? app->GetMeasureTarget() : nullptr;
    if (rt && n > 0) {
      IFontPtr old = rt->SelectFont(GetPaintFont(rt));
      rt->MeasureCharExtents(text.c_str(), n, lay.ends.data());
      rt->SelectFont(old);
      // Past what a backend shapes, characters advance by the average so far.
      if (n > kMaxRenderTextLength) {
        const int m = kMaxRenderTextLength;
        const int avg = std::max(1, lay.ends[static_cast<size_t>(m - 1)] / m);
        for (int i = m; i < n; ++i) lay.ends[static_cast<size_t>(i)] = lay.ends[static_cast<size_t>(i - 1)] + avg;
      }
    }
    if (app && app->GetRenderFactory() && n > 0) app->GetRenderFactory()->TextBreaks(text.c_str(), n, lay.breaks.data());
    lay.measured = true;
    lay.wrap_width = -2;
  }
  if (lay.wrap_width != width) {
    lay.starts = WrapLines(lay.ends, lay.breaks, width);
    lay.wrap_width = width;
  }
  return lay;
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

CSize SEdit::MeasureContent(int width) {
  (void)width;
  return CSize(0, LineHeight() * (multi_lines_ ? TotalLines() : 1));
}

// ---- visual lines ------------------------------------------------------------------------

int SEdit::LineEnd(int para, int line) const {
  const ParaLayout& lay = Layout(para);
  const size_t next = static_cast<size_t>(line) + 1;
  return next < lay.starts.size() ? lay.starts[next] : static_cast<int>(lay.ends.size());
}

int SEdit::LineX(int para, int line, int col) const {
  const ParaLayout& lay = Layout(para);
  const int start = lay.starts[static_cast<size_t>(line)];
  auto x = [&](int c) { return c <= 0 || lay.ends.empty() ? 0 : lay.ends[static_cast<size_t>(std::min<int>(c, static_cast<int>(lay.ends.size())) - 1)]; };
  return x(col) - x(start);
}

void SEdit::CaretLine(int* para, int* line) const {
  int col = 0;
  Locate(caret_, para, &col);
  const std::vector<int>& starts = Layout(*para).starts;
  int k = static_cast<int>(std::upper_bound(starts.begin(), starts.end(), col) - starts.begin()) - 1;
  if (caret_line_end_ && k > 0 && starts[static_cast<size_t>(k)] == col) --k;
  *line = std::max(k, 0);
}

int SEdit::LineIndex(int para, int line) const {
  const int width = WrapWidth();
  int index = line;
  for (int p = 0; p < para; ++p) index += static_cast<int>(Layout(p, width).starts.size());
  return index;
}

void SEdit::LineFromIndex(int index, int* para, int* line) const {
  const int width = WrapWidth();
  const int last = static_cast<int>(paras_.size()) - 1;
  int p = 0;
  index = std::max(index, 0);
  for (; p < last; ++p) {
    const int lines = static_cast<int>(Layout(p, width).starts.size());
    if (index < lines) break;
    index -= lines;
  }
  *para = p;
  *line = std::min(index, static_cast<int>(Layout(p, width).starts.size()) - 1);
}

int SEdit::TotalLines() const { return LineIndex(static_cast<int>(paras_.size()) - 1, 0) + static_cast<int>(Layout(static_cast<int>(paras_.size()) - 1).starts.size()); }

int SEdit::ColumnAt(int para, int line, int x, bool* line_end) const {
  const ParaLayout& lay = Layout(para);
  const int start = lay.starts[static_cast<size_t>(line)], end = LineEnd(para, line);
  const bool wraps = static_cast<size_t>(line) + 1 < lay.starts.size();
  // The nearest boundary: before character i when x is left of its middle.
  int col = start;
  while (col < end) {
    const int left = LineX(para, line, col), right = LineX(para, line, col + 1);
    if (x < (left + right + 1) / 2) break;
    ++col;
  }
  *line_end = false;
  if (wraps && col == end) {
    // Past a wrapped line's end: before its hanging space, or at its end.
    if (end > start && (lay.breaks[static_cast<size_t>(end - 1)] & kBreakWhite)) --col;
    else *line_end = true;
  }
  return col;
}

int SEdit::HitTest(CPoint pt, bool* line_end) const {
  const CRect rc = GetChildrenLayoutRect();
  int para = 0, line = 0;
  if (multi_lines_) LineFromIndex((pt.y - rc.top + scroll_y_) / LineHeight(), &para, &line);
  return PosOf(para, ColumnAt(para, line, pt.x - rc.left + scroll_x_, line_end));
}

void SEdit::EnsureCaretVisible() {
  const CRect rc = GetChildrenLayoutRect();
  int para = 0, line = 0, col = 0;
  CaretLine(&para, &line);
  Locate(caret_, &para, &col);
  const int x = LineX(para, line, col);
  if (WrapWidth() > 0) {
    scroll_x_ = 0;
  } else if (x < scroll_x_) {
    scroll_x_ = std::max(0, x - rc.Width() / 4);
  } else if (x >= scroll_x_ + rc.Width()) {
    scroll_x_ = x - rc.Width() + 1;
  }
  if (!multi_lines_) {
    // No further than the text needs: a scroll set while the edit was
    // narrow (before its first layout) must not hide text that now fits.
    const int text_end = LineX(para, line, static_cast<int>(paras_[static_cast<size_t>(para)].size()));
    scroll_x_ = std::max(0, std::min(scroll_x_, text_end - rc.Width() + 1));
  }
  if (multi_lines_) {
    const int top = LineIndex(para, line) * LineHeight(), bottom = top + LineHeight();
    if (top < scroll_y_) scroll_y_ = top;
    else if (bottom > scroll_y_ + rc.Height()) scroll_y_ = bottom - rc.Height();
    // Nothing to scroll past the last line.
    scroll_y_ = std::max(0, std::min(scroll_y_, TotalLines() * LineHeight() - rc.Height()));
  }
  const int lh = LineHeight();
  const int y = multi_lines_ ? rc.top - scroll_y_ + LineIndex(para, line) * lh
                             : vcenter_ ? rc.top + (rc.Height() - lh) / 2 : rc.top;
  ReportCaret(CRect(rc.left - scroll_x_ + x, y, rc.left - scroll_x_ + x + 1, y + lh));
}

void SEdit::ReportCaret(const CRect& caret) {
  if (!IsFocused() || !GetContainer()) return;
  GetContainer()->OnCaretRect(this, caret);
}

// ---- caret movement -------------------------------------------------------------------------

void SEdit::MoveLines(int delta, bool extend) {
  int para = 0, line = 0, col = 0;
  CaretLine(&para, &line);
  Locate(caret_, &para, &col);
  const int x = goal_x_ >= 0 ? goal_x_ : LineX(para, line, col);
  const int index = std::max(0, std::min(LineIndex(para, line) + delta, TotalLines() - 1));
  LineFromIndex(index, &para, &line);
  bool line_end = false;
  const int target = ColumnAt(para, line, x, &line_end);
  MoveCaret(PosOf(para, target), extend, line_end);
  goal_x_ = x;  // kept through further Up/Down
}

void SEdit::MoveToLineEdge(bool end, bool extend) {
  int para = 0, line = 0;
  CaretLine(&para, &line);
  const ParaLayout& lay = Layout(para);
  if (!end) return MoveCaret(PosOf(para, lay.starts[static_cast<size_t>(line)]), extend);
  bool line_end = false;
  const int col = ColumnAt(para, line, INT_MAX / 2, &line_end);
  MoveCaret(PosOf(para, col), extend, line_end);
}

// ---- words ---------------------------------------------------------------------------------

namespace {

// Kinds of the characters of a paragraph, by its break flags: words run
// from a word start to the next word end.
std::vector<CharKind> Kinds(const std::vector<unsigned char>& breaks) {
  const size_t n = breaks.empty() ? 0 : breaks.size() - 1;
  std::vector<CharKind> kinds(n, CharKind::kOther);
  bool in_word = false;
  for (size_t i = 0; i < n; ++i) {
    if (breaks[i] & kBreakWordStart) in_word = true;
    else if (breaks[i] & kBreakWordEnd) in_word = false;
    kinds[i] = (breaks[i] & kBreakWhite) ? CharKind::kWhite : in_word ? CharKind::kWord : CharKind::kOther;
  }
  return kinds;
}

// A stop: a word or a run of punctuation starts at col. pango keeps a run
// of ideographs one word, yet allows a line break between any two of them:
// those count as stops too (no Latin word has a break inside).
bool IsStop(const std::vector<CharKind>& kinds, const std::vector<unsigned char>& breaks, int col) {
  const size_t i = static_cast<size_t>(col);
  if (i >= kinds.size() || kinds[i] == CharKind::kWhite) return false;
  return i == 0 || kinds[i - 1] != kinds[i] ||
         (kinds[i] == CharKind::kWord && (breaks[i] & (kBreakWordStart | kBreakLine)));
}

}  // namespace

int SEdit::WordStart(int pos) const {
  int para = 0, col = 0;
  Locate(pos, &para, &col);
  if (col == 0) {
    if (para == 0) return 0;
    --para;
    col = static_cast<int>(paras_[static_cast<size_t>(para)].size());
  }
  const ParaLayout& lay = Layout(para);
  const std::vector<CharKind> kinds = Kinds(lay.breaks);
  do --col;
  while (col > 0 && !IsStop(kinds, lay.breaks, col));
  return PosOf(para, std::max(col, 0));
}

int SEdit::WordEnd(int pos) const {
  int para = 0, col = 0;
  Locate(pos, &para, &col);
  const int len = static_cast<int>(paras_[static_cast<size_t>(para)].size());
  if (col >= len) {
    if (para + 1 >= static_cast<int>(paras_.size())) return length_;
    ++para;
    col = -1;  // the next paragraph's start may be a stop itself
  }
  const ParaLayout& lay = Layout(para);
  const std::vector<CharKind> kinds = Kinds(lay.breaks);
  const int n = static_cast<int>(kinds.size());
  do ++col;
  while (col < n && !IsStop(kinds, lay.breaks, col));
  return PosOf(para, std::min(col, n));
}

void SEdit::WordAt(int pos, int* start, int* end) const {
  int para = 0, col = 0;
  Locate(pos, &para, &col);
  const ParaLayout& lay = Layout(para);
  const std::vector<CharKind> kinds = Kinds(lay.breaks);
  const int n = static_cast<int>(kinds.size());
  if (n == 0) {
    *start = *end = pos;
    return;
  }
  // The run under the position (the one before it at a paragraph's end).
  const int at = std::min(col, n - 1);
  int s = at, e = at + 1;
  while (s > 0 && kinds[static_cast<size_t>(s - 1)] == kinds[static_cast<size_t>(at)] && !IsStop(kinds, lay.breaks, s)) --s;
  while (e < n && kinds[static_cast<size_t>(e)] == kinds[static_cast<size_t>(at)] && !IsStop(kinds, lay.breaks, e)) ++e;
  *start = PosOf(para, s);
  *end = PosOf(para, e);
}

// ---- painting -----------------------------------------------------------------------------------

COLORREF SEdit::BackgroundColor() const {
  for (const SWindow* w = this; w; w = w->GetParent()) {
    const COLORREF c = w->GetStyle().colorBkgnd.Get();
    if (c != CR_INVALID && GetAValue(c) == 0xFF) return c;
  }
  return RGBA(0xFF, 0xFF, 0xFF, 0xFF);
}

void SEdit::PaintLine(IRenderTarget* rt, int para, int line, CPoint at, int pos, const std::wstring& text) const {
  const int lh = LineHeight();
  const int start = Layout(para).starts[static_cast<size_t>(line)], end = LineEnd(para, line);
  const bool last_line = end == static_cast<int>(text.size());
  long s = 0, e = 0;
  GetSel(s, e);
  // The selection behind the text, with a stub for a selected line break.
  const int a = static_cast<int>(std::max<long>(s - pos, start)), b = static_cast<int>(std::min<long>(e - pos, end));
  const bool newline = last_line && para + 1 < static_cast<int>(paras_.size()) && s <= pos + end && e > pos + end;
  CRect sel;
  if (b > a || newline) {
    const int x0 = at.x + LineX(para, line, std::min(a, end)), x1 = at.x + LineX(para, line, std::max(b, a));
    sel = CRect(x0, at.y, x1 + (newline ? lh / 3 : 0), at.y + lh);
    const COLORREF bk = sel_bkgnd_.IsSet() ? sel_bkgnd_.Get() : RGBA(0x33, 0x8C, 0xFF, 0x66);
    if (!sel.IsRectEmpty()) rt->FillSolidRect(&sel, bk);
  }
  if (end <= start) return;
  const COLORREF color = GetPaintTextColor();
  const COLORREF old = rt->SetTextColor(color);
  rt->TextOut(at.x, at.y, text.c_str() + start, end - start);
  if (sel_text_.IsSet() && b > a) {
    // The selected part again, in its own colour.
    rt->PushClipRect(&sel);
    rt->SetTextColor(sel_text_.Get());
    rt->TextOut(at.x, at.y, text.c_str() + start, end - start);
    rt->PopClip();
  }
  rt->SetTextColor(old);
}

void SEdit::OnPaint(IRenderTarget* rt) {
  const CRect rc = GetChildrenLayoutRect();
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
  // From the first visible line down to the bottom.
  int index = multi_lines_ ? std::max(0, scroll_y_ / lh) : 0;
  int para = 0, line = 0;
  LineFromIndex(index, &para, &line);
  int pos = PosOf(para, 0);
  std::wstring buffer;
  for (; para < static_cast<int>(paras_.size()); ++para, line = 0) {
    const std::wstring& text = Display(para, &buffer);
    const int lines = static_cast<int>(Layout(para).starts.size());
    for (; line < lines && top + index * lh < rc.bottom; ++line, ++index) {
      PaintLine(rt, para, line, CPoint(rc.left - scroll_x_, top + index * lh), pos, text);
    }
    if (!multi_lines_ || top + index * lh >= rc.bottom) break;
    pos += static_cast<int>(text.size()) + 1;
  }
  int cp = 0, cl = 0, cc = 0;
  CaretLine(&cp, &cl);
  Locate(caret_, &cp, &cc);
  const int cx = rc.left - scroll_x_ + LineX(cp, cl, cc);
  const int cy = multi_lines_ ? top + LineIndex(cp, cl) * lh : top;
  int caret_x = cx;
  if (!composition_.IsEmpty()) {
    // The composition sits at the caret, underlined, over what follows.
    SIZE sz{0, 0};
    rt->MeasureText(composition_, composition_.GetLength(), &sz);
    const CRect back(cx, cy, cx + sz.cx, cy + lh);
    rt->FillSolidRect(&back, BackgroundColor());
    const COLORREF old = rt->SetTextColor(color);
    rt->TextOut(cx, cy, composition_, composition_.GetLength());
    rt->SetTextColor(old);
    const CRect underline(cx, cy + lh - 1, cx + sz.cx, cy + lh);
    rt->FillSolidRect(&underline, ime_line_.IsSet() ? ime_line_.Get() : color);
    caret_x = cx + sz.cx;
  }
  if (caret_on_ && IsFocused()) {
    const CRect caret(caret_x, cy, caret_x + 1, cy + lh);
    rt->FillSolidRect(&caret, color);
  }
  rt->PopClip();
}

}  // namespace SOUI
