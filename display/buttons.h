// The button family: CQVButton ("qv_button"), QVIconButton
// ("qv_icon_button") and QVSwitchButton ("qv_switch_button"), built on
// CQVButtonBase (style codes, admitted attributes, 4dp side paddings) and
// CQVIconButtonBase (icon-button style codes, centred icon).
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "framework/style_tables.h"
#include "soui/stdctrls.h"
#include "soui/themed.h"

namespace QVStandardCtrls {

// Stores "qvstyle" while loading and applies it when InitFromXml ends, so in
// a button loaded from XML the style wins over the element's own values of
// the attributes it carries; outside loading it applies at once. Every
// button of the family ends loading with 4dp left and right paddings.
class QVSTDCTRLS_API CQVButtonBase : public SOUI::SButton {
 public:
  CQVButtonBase();
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL InitFromXml(pugi::xml_node node) override;

  const SOUI::SStringW& GetQVStyle() const { return style_code_; }
  // The record last applied; null before any known code was applied.
  const QVButtonStylePtr& GetAppliedStyle() const { return applied_style_; }
  // A painting colour of the applied style (QVButtonColorSlot), resolved
  // against the current theme; CR_INVALID when the slot is unset.
  COLORREF GetStyleColor(int slot) const;

 protected:
  // Looks the stored code up in this family's table and applies it; an
  // unknown or empty code changes nothing.
  virtual void ApplyStyle();
  // A size of the applied style in pixels at the window's scale (0 without one).
  int StyleSizePx(int index) const;
  // The icon given by "button_icon" ("icon" for icon buttons).
  SOUI::ISkinObj* GetIcon() const { return icon_.Get(GetScale()); }
  void SetIconSkin(const SOUI::SStringW& name) { icon_.Set(name); }

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrButtonIcon(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrPos(const SOUI::SStringW& value, BOOL loading);

  SOUI::SStringW style_code_;
  QVButtonStylePtr applied_style_;
  // Kept themed rather than as fixed values so that a light/dark switch
  // recolours the text without re-applying the style.
  SOUI::ThemedColor colors_[kQVColorSlotCount];

 private:
  SOUI::ThemedSkin icon_;
};

// A text button painted with its style's state colours.
// Sizes 2-4 of the style: size 2 is the minimum width of a content-sized
// button, sizes 3 and 4 the least left and right space around the text (the
// larger of them and the window's padding is used).
class QVSTDCTRLS_API CQVButton : public CQVButtonBase {
  SOUI_CLASS_NAME(CQVButton, CQVButtonBase, L"qv_button")
 public:
  using SOUI::SWindow::GetDesiredSize;
  SOUI::CSize GetDesiredSize(int width, int height) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;

 protected:
  // The client area less the text insets described above.
  SOUI::CRect GetTextRect() const;
};

// Base of the icon buttons: "qvstyle" takes icon-button codes (IB...) and
// "icon" names a skin drawn centred over the background.
class QVSTDCTRLS_API CQVIconButtonBase : public CQVButtonBase {
 public:
  using StyleInfo = QVIconButtonStyleInfo;

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  using SOUI::SWindow::GetDesiredSize;
  SOUI::CSize GetDesiredSize(int width, int height) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;

 protected:
  void ApplyStyle() override;
  // Draws skin centred at its natural size in rc (state clamped to its states).
  void DrawCentred(SOUI::IRenderTarget* rt, SOUI::ISkinObj* skin, const SOUI::CRect& rc, int state) const;
  HRESULT OnAttrIcon(const SOUI::SStringW& value, BOOL loading);
};

// An icon button; with enable_select each click toggles its selected
// (checked) state.
class QVSTDCTRLS_API QVIconButton : public CQVIconButtonBase {
  SOUI_CLASS_NAME(QVIconButton, CQVIconButtonBase, L"qv_icon_button")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;

  void SetIsSelected(bool selected) { SetCheck(selected ? TRUE : FALSE); }
  bool GetIsSelected() const { return IsChecked() != FALSE; }

 protected:
  HRESULT OnAttrEnableSelect(const SOUI::SStringW& value, BOOL loading);

 private:
  bool enable_select_ = false;
};

// A two-state switch: the open icon when open, the close icon when closed,
// over the background skin. Each click flips it.
class QVSTDCTRLS_API QVSwitchButton : public CQVIconButtonBase {
  SOUI_CLASS_NAME(QVSwitchButton, CQVIconButtonBase, L"qv_switch_button")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  using SOUI::SWindow::GetDesiredSize;
  // The current state's icon plus padding; the toolkit's size without one.
  SOUI::CSize GetDesiredSize(int width, int height) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;

  // No-op when unchanged; relayout when content-sized (the icons may differ
  // in size), otherwise a repaint.
  void SetIsOpen(bool open);
  bool GetIsOpen() const { return open_; }

 protected:
  HRESULT OnAttrOpenIcon(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrCloseIcon(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrIgnoredIcon(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrOpen(const SOUI::SStringW& value, BOOL loading);

 private:
  HRESULT AfterIconChange(BOOL loading);
  bool IsContentSized() const;
  SOUI::ISkinObj* CurrentIcon() const;

  SOUI::ThemedSkin open_icon_;
  SOUI::ThemedSkin close_icon_;
  bool open_ = false;
};

}  // namespace QVStandardCtrls
