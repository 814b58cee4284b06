// CQVComboBox ("qv_combobox"): the toolkit combo box in the library's look,
// for choices a trader must not change by accident (order type, account,
// validity).
//
//   box      framed by an edit style's skin (the library's input look):
//            normal, hover, and the accent frame while focused or open
//   list     the theme's list colours (style_qv_state list_bg, list_hover,
//            list_sel) whatever the page's listStyle says
//
// Keys on the closed box: Up/Down step, Home/End jump to the first and last
// item, a letter picks the next item starting with it, F4 and Alt+Down
// open; while open the list takes them (see SComboBox). Every user pick
// raises the toolkit's "on_cb_sel_change".
//
// The mouse wheel over the closed box steps the selection only while the
// box (or its edit) has the focus, so a wheel meant for the page never flips
// an order type; over an unfocused box it scrolls the page as if the box
// were not there. wheelalways="1" lets it step without the focus.
//
// Attributes:
//   qvstyle      an edit style code (NI1-3, UI1-3, MI1-3, NIO1-3; default
//                NI2): skin, height, font and padding of the box, the font
//                of its edit part; another code changes nothing (logged)
//   wheelalways  see above
// The toolkit's dropDown, dropHeight, curSel, btnSkin and animateTime are
// admitted, and the items, editStyle and listStyle children work as there.
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/combobox.h"

namespace QVStandardCtrls {

class QVSTDCTRLS_API CQVComboBox : public SOUI::SComboBox {
  SOUI_CLASS_NAME(CQVComboBox, SOUI::SComboBox, L"qv_combobox")
 public:
  CQVComboBox();

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  BOOL OnMouseWheel(UINT flags, short delta, SOUI::CPoint pt) override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnEraseBkgnd(SOUI::IRenderTarget* rt) override;
  void OnCreateDropDown(SOUI::SDropDownWnd* dropdown) override;

  const SOUI::SStringW& GetQVStyle() const { return style_code_; }
  bool IsWheelAlways() const { return wheel_always_; }
  // The box or its edit part has the keyboard focus.
  bool HasFocusInside() const;

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrWheelAlways(const SOUI::SStringW& value, BOOL loading);

 private:
  SOUI::SStringW style_code_;
  bool wheel_always_ = false;
};

}  // namespace QVStandardCtrls
