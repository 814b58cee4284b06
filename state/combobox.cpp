#include "state/combobox.h"

#include <algorithm>

#include "framework/style_tables.h"
#include "soui/dropdown.h"
#include "soui/edit.h"
#include "state/state_common.h"

namespace QVStandardCtrls {

using SOUI::CPoint;
using SOUI::SStringW;

CQVComboBox::CQVComboBox() {
  SWindow::SetAttribute(L"colorText", L"@color\\style_skin_qv_text\\text_h1", FALSE);
  OnAttrQVStyle(L"NI2", FALSE);
}

HRESULT CQVComboBox::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVComboBox> kAttrs[] = {
      {L"qvstyle", &CQVComboBox::OnAttrQVStyle},
      {L"wheelalways", &CQVComboBox::OnAttrWheelAlways},
  };
  static const QVAdmittedAttrs kAdmitted = {L"dropDown", L"dropHeight", L"curSel", L"btnSkin",
                                            L"animateTime", L"autoFitDropBtn", L"height", L"margin"};
  return QVDispatchAttribute<CQVComboBox, SOUI::SComboBox>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT CQVComboBox::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  const QVEditStyle* style = FindQVEditStyle(value);
  if (!style) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  style_code_ = value;
  // Straight to the toolkit: these are looks the filter keeps from pages.
  SWindow::SetAttribute(L"skin", style->skin, loading);
  SWindow::SetAttribute(L"height", style->height, loading);
  SWindow::SetAttribute(L"font", style->font, loading);
  SWindow::SetAttribute(L"padding", style->padding, loading);
  if (!loading) RequestRelayout();
  return S_OK;
}

HRESULT CQVComboBox::OnAttrWheelAlways(const SStringW& value, BOOL) {
  wheel_always_ = QVParseBool(value);
  return S_OK;
}

bool CQVComboBox::HasFocusInside() const {
  if (IsFocused()) return true;
  const SOUI::SEdit* edit = GetEdit();
  return edit && edit->IsFocused();
}

BOOL CQVComboBox::OnMouseWheel(UINT flags, short delta, CPoint pt) {
  // Unfocused, the wheel belongs to the page: not handled, so it scrolls on.
  if (IsDropdown() || delta == 0 || !(wheel_always_ || HasFocusInside()) || GetCount() == 0) {
    return SComboBox::OnMouseWheel(flags, delta, pt);
  }
  const int cur = GetCurSel();
  const int next = cur < 0 ? 0 : std::clamp(cur + (delta > 0 ? -1 : 1), 0, GetCount() - 1);
  if (next != cur) OnUserPick(next, false);
  return TRUE;
}

void CQVComboBox::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  if (!IsDropdown() && !GetEdit() && (vk == VK_HOME || vk == VK_END) && GetCount() > 0) {
    const int next = vk == VK_HOME ? 0 : GetCount() - 1;
    if (next != GetCurSel()) OnUserPick(next, false);
    return;
  }
  SComboBox::OnKeyDown(vk, repeat, flags);
}

void CQVComboBox::OnEraseBkgnd(SOUI::IRenderTarget* rt) {
  SOUI::ISkinObj* skin = GetBkgndSkin();
  if (!skin) {
    SComboBox::OnEraseBkgnd(rt);
    return;
  }
  // The skin's pushed frame is the input look's focus frame.
  int state = IsDisabled(TRUE) ? 3 : (IsDropdown() || HasFocusInside()) ? 2 : (GetState() & SOUI::WndState_Hover) ? 1 : 0;
  if (state >= skin->GetStates()) state = 0;
  const SOUI::CRect rc = GetClientRect();
  skin->DrawByIndex(rt, &rc, state);
}

void CQVComboBox::OnCreateDropDown(SOUI::SDropDownWnd* dropdown) {
  SComboBox::OnCreateDropDown(dropdown);
  if (SOUI::SComboListBox* list = GetListBox()) {
    list->SetAttribute(L"colorBkgnd", L"@color\\style_qv_state\\list_bg", FALSE);
    list->SetAttribute(L"colorHoverBkgnd", L"@color\\style_qv_state\\list_hover", FALSE);
    list->SetAttribute(L"colorSelBkgnd", L"@color\\style_qv_state\\list_sel", FALSE);
    list->Invalidate();
  }
}

}  // namespace QVStandardCtrls
