// CQVEditPwd ("qv_editpwd"): a PIN field of separate cells, one digit each.
//
//   [ * ] [ * ] [ 7 ] [   ] [   ] [   ]     focused: the next cell to fill
//                                           shows the skin's pushed state
//
// Digits only; anything else typed, pasted or committed is dropped and
// raises "on_edit_input_error". Each digit fills the next cell; backspace
// empties the last filled one, so the focus moves back a cell. Ctrl+V takes a
// whole code: the clipboard, spaces removed, must be all digits and fit,
// and then replaces what was typed. When the last cell is filled the field
// raises "on_editpwd_complete" (EventQVEditPwdComplete) once; it is raised
// again only after a cell was emptied and the code completed anew.
// Cells are masked (a dot) unless mask="0"; the code is never copied out.
//
// Attributes:
//   qvstyle  PI1-PI3: cell width, cell height and font
//   length   number of cells, 1 to 12 (default 6; a shorter code is cut)
//   gap      space between cells (default "8dp")
//   mask     "0" shows the digits
//   skin     skin of each cell (default "skin_edit_std_input_normal")
//   code     the digits to start with (ignored unless all digits that fit)
#pragma once

#include "edits/qv_edit.h"
#include "soui/layout.h"
#include "soui/themed.h"

namespace QVStandardCtrls {

enum : int {
  EVT_QVEDITPWD_COMPLETE = 29201,
};

class QVSTDCTRLS_API EventQVEditPwdComplete : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVEDITPWD_COMPLETE, L"on_editpwd_complete")
 public:
  using EventArgs::EventArgs;
  SOUI::SStringW code;
};

class QVSTDCTRLS_API CQVEditPwd : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVEditPwd, SOUI::SWindow, L"qv_editpwd")
 public:
  static constexpr int kMaxCells = 12;

  CQVEditPwd();

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  UINT OnGetDlgCode() const override;
  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnChar(UINT ch, UINT repeat, UINT flags) override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnLButtonDown(UINT flags, SOUI::CPoint pt) override;

  const SOUI::SStringW& GetCode() const { return code_; }
  int GetLength() const { return cells_; }
  bool IsComplete() const { return code_.GetLength() == cells_; }
  // Replaces the code (digits only, cut to the cells); false and no change
  // for anything else. Completing it raises the completion event.
  bool SetCode(const SOUI::SStringW& code);
  void Clear() { SetCode(SOUI::SStringW()); }
  // Cell i in window coordinates.
  SOUI::CRect CellRect(int i) const;

 protected:
  SOUI::CSize MeasureContent(int width) override;
  virtual void NotifyFilterEvent();

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrLength(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrGap(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMask(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrSkin(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrCode(const SOUI::SStringW& value, BOOL loading);

 private:
  // Appends the digits of text; false (and nothing appended) when it holds
  // anything else.
  bool Append(const SOUI::SStringW& text);
  void Changed();

  SOUI::SStringW code_;
  int cells_ = 6;
  SOUI::SLayoutSize cell_w_, cell_h_, gap_;
  bool mask_ = true;
  bool completed_ = false;  // the event for the current full code was raised
  SOUI::ThemedSkin cell_skin_;
};

}  // namespace QVStandardCtrls
