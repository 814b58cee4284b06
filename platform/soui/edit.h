// SEdit ("edit"): the toolkit's text box, single- or multi-line.
//
// Text is kept as paragraphs (lines split at '\n') with the character
// extents of each measured once and kept until that paragraph changes, so a
// keystroke costs the edited line, not the whole text. Positions are
// character indices into GetWindowText() (paragraphs joined by '\n').
//
// Input paths:
//   OnChar (virtual)     typed characters; backspace (0x08) deletes, '\r'
//                        breaks the line when multiLines and wantReturn are
//                        set, other control characters are ignored; any
//                        other character goes to InsertText(kTyped)
//   InsertText (virtual) the one insertion point of typed characters, paste
//                        and committed input-method text; derived edits
//                        judge or rewrite the text here
//   ReplaceSel           programmatic replacement, bypassing InsertText
// Every change of the text fires EventRENotify (EVT_RE_NOTIFY,
// "on_re_notify") with iNotify EN_CHANGE; an insertion cut by maxBuf also
// fires one with EN_MAXTEXT.
//
// Multi-line text wraps to the control's width (autoHscroll="1" turns that
// off and scrolls sideways instead): lines break where pango's line
// breaking allows (after spaces, between CJK characters), a word wider than
// the line breaks between characters, and white space at a line's end hangs
// past the edge. Each paragraph keeps its wrapped lines with its measure,
// so typing re-wraps one paragraph. Up/Down move by visual line keeping the
// caret's x, Home/End go to the visual line's ends, Page Up/Down by a view
// of lines; the view scrolls to keep the caret in sight. Ctrl+Left/Right
// stop where a word or a run of punctuation starts (pango's word
// boundaries) and between CJK characters (where pango allows a line break).
//
// Attributes: multiLines, readOnly, password, passwordChar, number (digits
// only), maxBuf (characters, default 32767), wantReturn, wantTab, cueText,
// cueColor, vcenter, autoHscroll. Colours (values or theme references):
//   colorSelBkgnd  selection background; default translucent blue, which
//                  reads on light and dark backgrounds alike
//   colorSelText   selected text; default the text colour
//   colorImeLine   the input-method composition's underline; default the
//                  text colour
// The cursor defaults to "ibeam". While focused, the edit tells the host
// where its caret is (ISwndContainer::OnCaretRect), so that a real window can
// place the input method's candidate list next to it.
#pragma once

#include <string>
#include <vector>

#include "soui/swnd.h"

namespace SOUI {

class SEdit : public SWindow {
  SOUI_CLASS_NAME(SEdit, SWindow, L"edit")
 public:
  enum class InsertSource { kTyped, kPaste, kIme };
  static constexpr int kDefaultMaxBuf = 32767;
  static constexpr int kCaretTimerId = 0x7E01;
  static constexpr UINT kCaretBlinkMs = 530;

  SEdit();

  // ---- text and selection ----
  SStringW GetWindowText(BOOL raw = FALSE) const override;
  // Replaces all the text (cut to maxBuf; the undo history is cleared).
  void SetWindowText(const SStringW& text) override;
  int GetTextLength() const { return length_; }
  // Selection as [start, end), start <= end.
  void GetSel(long& start, long& end) const;
  // Caret at end, anchor at start; out-of-range values are clamped and -1
  // means the end of the text.
  void SetSel(long start, long end);
  // Replaces the selection (nothing for a read-only edit), with an undo step
  // when can_undo.
  void ReplaceSel(const SStringW& text, BOOL can_undo = TRUE);
  BOOL CanUndo() const { return !undo_.empty(); }
  BOOL CanRedo() const { return !redo_.empty(); }
  void Undo();
  void Redo();
  void Copy();
  void Cut();
  void Paste();
  void SelectAll() { SetSel(0, -1); }
  BOOL IsCaretShown() const { return caret_on_; }
  const SStringW& GetComposition() const { return composition_; }
  // Visual lines (wrapped lines of every paragraph) at the current width.
  int GetLineCount() const { return TotalLines(); }
  // The first visible pixel column (single-line) or row (multi-line).
  int GetScrollX() const { return scroll_x_; }
  int GetScrollY() const { return scroll_y_; }

  // ---- SWindow ----
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;
  UINT OnGetDlgCode() const override;
  void OnPaint(IRenderTarget* rt) override;
  void OnLButtonDown(UINT flags, CPoint pt) override;
  void OnLButtonDblClk(UINT flags, CPoint pt) override;
  void OnLButtonUp(UINT flags, CPoint pt) override;
  void OnMouseMove(UINT flags, CPoint pt) override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnChar(UINT ch, UINT repeat, UINT flags) override;
  void OnSetFocus() override;
  void OnKillFocus() override;
  void OnTimer(int id) override;
  void OnSize(UINT type, CSize size) override;

 protected:
  // Inserts text at the selection after the edit's own rules (read-only,
  // number, single-line cut at the first line break, control characters
  // dropped, maxBuf). Override to filter; call the base to insert.
  virtual void InsertText(const SStringW& text, InsertSource source);
  CSize MeasureContent(int width) override;

 private:
  struct UndoStep {
    int pos;
    std::wstring removed, inserted;
    int caret_before, anchor_before;
    bool typing;
  };
  // The text an insertion keeps under the edit's rules.
  std::wstring Sanitize(const std::wstring& in) const;
  // Replaces [start, end) by text; returns false when nothing changed.
  bool Replace(int start, int end, std::wstring text, bool can_undo, bool typing);
  void ApplyReplace(int start, int end, const std::wstring& text);
  std::wstring TextRange(int start, int end) const;
  void Notify(UINT code);
  void MoveCaret(int pos, bool extend, bool line_end = false);
  void ShowCaretNow();
  // Paragraph index and column of a position.
  void Locate(int pos, int* para, int* col) const;
  int PosOf(int para, int col) const;
  // One paragraph's measure, break flags and wrapped lines, kept until the
  // paragraph, the font or the wrap width changes.
  struct ParaLayout {
    std::vector<int> ends;              // x after each character
    std::vector<unsigned char> breaks;  // TextBreak flags, one per position
    std::vector<int> starts{0};         // first column of each visual line
    int wrap_width = -1;
    bool measured = false;
  };
  const ParaLayout& Layout(int para) const;
  const ParaLayout& Layout(int para, int wrap_width) const;
  // The width lines wrap at; -1 when they do not.
  int WrapWidth() const;
  int LineHeight() const;
  // End column of a visual line (the next line's start, or the length).
  int LineEnd(int para, int line) const;
  // x of a column relative to its visual line's start.
  int LineX(int para, int line, int col) const;
  // The caret's visual line (a caret at a wrap point shows at the end of
  // the upper line after End or a click past it).
  void CaretLine(int* para, int* line) const;
  int LineIndex(int para, int line) const;
  void LineFromIndex(int index, int* para, int* line) const;
  int TotalLines() const;
  // The column nearest x on a visual line; *line_end when it is the end of
  // a line that wraps.
  int ColumnAt(int para, int line, int x, bool* line_end) const;
  int HitTest(CPoint pt, bool* line_end) const;
  void EnsureCaretVisible();
  void MoveLines(int delta, bool extend);
  void MoveToLineEdge(bool end, bool extend);
  // Word stops: where a word or a run of punctuation starts.
  int WordStart(int pos) const;
  int WordEnd(int pos) const;
  void WordAt(int pos, int* start, int* end) const;
  const std::wstring& Display(int para, std::wstring* buffer) const;
  COLORREF BackgroundColor() const;
  void PaintLine(IRenderTarget* rt, int para, int line, CPoint at, int pos, const std::wstring& text) const;
  void ReportCaret(const CRect& caret);

  std::vector<std::wstring> paras_{std::wstring()};
  mutable std::vector<ParaLayout> layouts_{ParaLayout()};
  mutable int line_height_ = 0;
  int length_ = 0;
  int caret_ = 0, anchor_ = 0;
  bool caret_line_end_ = false;
  int goal_x_ = -1;  // the x Up/Down keep, -1 when a new move starts
  int scroll_x_ = 0, scroll_y_ = 0;
  bool caret_on_ = false;
  bool dragging_ = false;
  std::vector<UndoStep> undo_, redo_;
  SStringW composition_;
  mutable SStringW joined_;
  mutable bool joined_valid_ = true;

  BOOL multi_lines_ = FALSE;
  BOOL read_only_ = FALSE;
  BOOL password_ = FALSE;
  wchar_t password_char_ = L'*';
  BOOL number_ = FALSE;
  BOOL want_return_ = FALSE;
  BOOL want_tab_ = FALSE;
  BOOL vcenter_ = FALSE;
  BOOL auto_hscroll_ = FALSE;
  ThemedColor sel_bkgnd_, sel_text_, ime_line_;
  int max_buf_ = kDefaultMaxBuf;
  SStringW cue_text_;
  ThemedColor cue_color_;
};

class SObjectFactory;
// Registers "edit".
void RegisterEditControls(SObjectFactory& factory);

}  // namespace SOUI
