// Composite edits: CQVEditCom ("qv_editcom"), CQVEditMultiCom ("qv_editmcom")
// and CQVEditMulti ("qv_editm").
//
// A composite is a styled frame around an inner "qv_edit" (named
// "qv_editcom_edit"), with an optional leading icon, trailing unit text and
// clear button:
//
//   +--------------------------------------------+
//   | [icon] edit ...................  unit  [x] |
//   +--------------------------------------------+
//
// The frame takes the skin, height and padding of its style code and shows
// the pushed state of its skin while the inner edit has the focus. The
// clear button shows only while there is text to clear and the edit is
// writable; clicking it empties the text (one undo step) and focuses the
// edit.
//
// The bases are deliberately not symmetric and are kept so: the multi-line
// edit derives from the multi-line composite, which derives from the
// single-line composite.
//
// Attributes:
//   qvstyle    NIC1-3, UIC1-3, MIC1-3, MICW1-3 (single-line); NIMC, UIMC,
//              MIMC (multi-line). Unknown codes change nothing.
//   icon       skin of the leading icon ("" hides it)
//   unit       trailing text ("" hides it)
//   clearbtn   "1" shows the clear button while there is text
//   showcount  multi-line only: "1" shows "length/maxBuf" under the text
//              (qv_editm shows it by default)
//   filter, text, cueText, maxBuf, readOnly, number, password, font,
//   colorText   go to the inner edit.
// Events: "on_edit_input_error" (EventQVEditInputError) is raised by the
// composite itself; the inner edit's own one stops there.
#pragma once

#include <utility>
#include <vector>

#include "edits/qv_edit.h"
#include "framework/style_tables.h"
#include "soui/stdctrls.h"

namespace QVStandardCtrls {

class QVSTDCTRLS_API CQVEditCom : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVEditCom, SOUI::SWindow, L"qv_editcom")
 public:
  CQVEditCom();

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL CreateChildren(pugi::xml_node node) override;
  int OnCreate() override;
  void UpdateChildrenPosition() override;
  // The frame is the skin; the text is the inner edit's to draw.
  void OnPaint(SOUI::IRenderTarget* rt) override { (void)rt; }
  SOUI::SStringW GetWindowText(BOOL raw = FALSE) const override;
  void SetWindowText(const SOUI::SStringW& text) override;

  // The filter of the inner edit (see CQVEdit): true rejects.
  void SetFilter(QVEditFilter filter);
  void RemoveFilter() { SetFilter(nullptr); }

  // Null before the composite is created.
  CQVEdit* GetEdit() const { return edit_; }
  SOUI::SWindow* GetClearButton() const { return clear_; }

 protected:
  // Raises "on_edit_input_error" on the composite.
  virtual void NotifyFilterEvent();
  // Multi-line composites say so; the inner edit is built to match.
  virtual bool IsMultiLine() const { return false; }
  virtual const QVEditStyle* FindStyle(const SOUI::SStringW& code) const;

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrIcon(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrUnit(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrClearBtn(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrShowCount(const SOUI::SStringW& value, BOOL loading);
  // Everything that belongs to the inner edit.
  HRESULT OnAttrForEdit(const SOUI::SStringW& name, const SOUI::SStringW& value);

  bool show_count_ = false;

 private:
  void EnsureChildren();
  void SyncDecorations();
  bool OnEditNotify(SOUI::EventArgs* evt);

  CQVEdit* edit_ = nullptr;
  SOUI::SImageWnd* icon_ = nullptr;
  SOUI::SStatic* unit_ = nullptr;
  SOUI::SButton* clear_ = nullptr;
  SOUI::SStatic* count_ = nullptr;
  SOUI::SStringW icon_skin_;
  SOUI::SStringW unit_text_;
  bool clear_button_ = false;
  // Attributes for the inner edit that came before it existed, in order.
  std::vector<std::pair<SOUI::SStringW, SOUI::SStringW>> pending_;
  QVEditFilter pending_filter_;
};

class QVSTDCTRLS_API CQVEditMultiCom : public CQVEditCom {
  SOUI_CLASS_NAME(CQVEditMultiCom, CQVEditCom, L"qv_editmcom")
 protected:
  bool IsMultiLine() const override { return true; }
  const QVEditStyle* FindStyle(const SOUI::SStringW& code) const override;
};

class QVSTDCTRLS_API CQVEditMulti : public CQVEditMultiCom {
  SOUI_CLASS_NAME(CQVEditMulti, CQVEditMultiCom, L"qv_editm")
 public:
  CQVEditMulti() { show_count_ = true; }
};

}  // namespace QVStandardCtrls
