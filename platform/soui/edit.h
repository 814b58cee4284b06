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
// Attributes: multiLines, readOnly, password, passwordChar, number (digits
// only), maxBuf (characters, default 32767), wantReturn, wantTab, cueText,
// cueColor, vcenter. The cursor defaults to "ibeam".
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
  void MoveCaret(int pos, bool extend);
  void ShowCaretNow();
  // Paragraph index and column of a position.
  void Locate(int pos, int* para, int* col) const;
  int PosOf(int para, int col) const;
  const std::vector<int>& Extents(int para) const;
  int LineHeight() const;
  int XOf(int para, int col) const;
  int HitTest(CPoint pt) const;
  CRect TextRect() const;
  void EnsureCaretVisible();
  int WordStart(int pos) const;
  int WordEnd(int pos) const;
  std::wstring Display(int para) const;

  std::vector<std::wstring> paras_{std::wstring()};
  mutable std::vector<std::vector<int>> extents_{std::vector<int>()};
  mutable std::vector<bool> measured_{false};
  mutable int line_height_ = 0;
  int length_ = 0;
  int caret_ = 0, anchor_ = 0;
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
  int max_buf_ = kDefaultMaxBuf;
  SStringW cue_text_;
  ThemedColor cue_color_;
};

class SObjectFactory;
// Registers "edit".
void RegisterEditControls(SObjectFactory& factory);

}  // namespace SOUI
