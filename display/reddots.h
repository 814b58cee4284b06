// Red-dot badges placed on the corner of another element: CQVRedDot
// ("qv_reddot", a plain dot), CQVNUmberRedDot ("qv_number_reddot", a count)
// and CQVLableRedDot ("qv_lable_reddot", "HOT"/"NEW"). The misspelt names
// are the published ones. A badge never takes part in its parent's flow: it
// places itself on its anchor point ("pos", by default the parent's top-right
// corner) and takes its size from its style code.
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {

class QVSTDCTRLS_API CQVRedDot : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVRedDot, SOUI::SWindow, L"qv_reddot")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL InitFromXml(pugi::xml_node node) override;
  SOUI::SStringW GetWindowText(BOOL raw = FALSE) const override;
  void OnEraseBkgnd(SOUI::IRenderTarget* rt) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;

  const SOUI::SStringW& GetQVStyle() const { return style_code_; }
  using SOUI::SWindow::DrawText;

 protected:
  // Sets "offset" and "pos" (anchor point plus the code's size).
  virtual void DoSetPos();
  // The size text a code appends to the anchor; empty for a code this class
  // does not know.
  virtual SOUI::SStringW SizeSuffix() const;
  // font, colours and paddings every badge shares.
  void SetFixedAttribute();
  virtual void DrawRedDot(SOUI::IRenderTarget* rt);
  virtual SOUI::CRect GetRedDotRect() const { return GetWindowRect(); }
  // The plain dot has no text.
  virtual void DrawText(SOUI::IRenderTarget* rt);
  // Centred inside the paddings, for the badges that carry a text.
  void DrawBadgeText(SOUI::IRenderTarget* rt);
  // The anchor: the stored "pos", or the parent's top-right corner.
  SOUI::SStringW AnchorPos() const;

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrPos(const SOUI::SStringW& value, BOOL loading);

  SOUI::SStringW style_code_ = L"RD1";
  SOUI::SStringW pos_text_;
};

class QVSTDCTRLS_API CQVNUmberRedDot : public CQVRedDot {
  SOUI_CLASS_NAME(CQVNUmberRedDot, CQVRedDot, L"qv_number_reddot")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL InitFromXml(pugi::xml_node node) override;
  SOUI::SStringW GetWindowText(BOOL raw = FALSE) const override;

  // Store the value, hide the badge when it is below 1 and rebuild the text.
  // Neither shows the badge again: that is the caller's business.
  void SetNumber(int number);
  void SetMaxNumber(int max_number);
  int GetNumber() const { return number_; }
  int GetMaxNumber() const { return max_number_; }
  const SOUI::SStringW& GetExtendDirection() const { return extend_direction_; }
  using CQVRedDot::DrawText;

 protected:
  void DoSetPos() override;
  SOUI::SStringW SizeSuffix() const override;
  void DrawText(SOUI::IRenderTarget* rt) override;
  // "99+" above the maximum.
  void UpdateNumberText();

  HRESULT OnAttrNumber(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMaxNumber(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrExtendDirection(const SOUI::SStringW& value, BOOL loading);

 private:
  int number_ = 0;
  int max_number_ = 99;
  SOUI::SStringW extend_direction_ = L"right";
  SOUI::SStringW shown_text_;
};

class QVSTDCTRLS_API CQVLableRedDot : public CQVRedDot {
  SOUI_CLASS_NAME(CQVLableRedDot, CQVRedDot, L"qv_lable_reddot")
 public:
  BOOL InitFromXml(pugi::xml_node node) override;
  SOUI::SStringW GetWindowText(BOOL raw = FALSE) const override;
  using CQVRedDot::DrawText;

 protected:
  SOUI::SStringW SizeSuffix() const override;
  void DrawText(SOUI::IRenderTarget* rt) override;
};

}  // namespace QVStandardCtrls
