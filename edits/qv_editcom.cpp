#include "edits/qv_editcom.h"

#include <algorithm>

#include "framework/style_tables.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

int Dp(int v, int scale) { return v * scale / 100; }

// The inner edit's attributes; the composite answers for them.
const wchar_t* const kEditAttrs[] = {L"filter",   L"text",   L"cueText",  L"cueColor", L"maxBuf",   L"readOnly",
                                     L"number",   L"password", L"passwordChar", L"font", L"colorText"};

bool IsEditAttr(const SStringW& name) {
  for (const wchar_t* n : kEditAttrs) {
    if (name.CompareNoCase(n) == 0) return true;
  }
  return false;
}

}  // namespace

CQVEditCom::CQVEditCom() { GetEventSet()->addEvent(EVT_QVEDIT_INPUT_ERROR, EventQVEditInputError::EventName()); }

HRESULT CQVEditCom::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (IsEditAttr(name)) return AfterAttribute(name, value, loading, OnAttrForEdit(name, value));
  QVListOwnNames(kEditAttrs, sizeof(kEditAttrs) / sizeof(kEditAttrs[0]));
  static const QVAttrEntry<CQVEditCom> kAttrs[] = {
      {L"qvstyle", &CQVEditCom::OnAttrQVStyle},   {L"icon", &CQVEditCom::OnAttrIcon},
      {L"unit", &CQVEditCom::OnAttrUnit},         {L"clearbtn", &CQVEditCom::OnAttrClearBtn},
      {L"showcount", &CQVEditCom::OnAttrShowCount},
  };
  static const QVAdmittedAttrs kAdmitted = {
      L"skin",        L"focusSkin",    L"colorBkgnd",    L"colorBorder",    L"margin", L"margin-x",
      L"margin-y",    L"inset",        L"padding",       L"padding_left",   L"padding_top",
      L"padding_right", L"padding_bottom", L"height"};
  return QVDispatchAttribute<CQVEditCom, SWindow>(this, kAttrs, &kAdmitted, name, value, loading);
}

const QVEditStyle* CQVEditCom::FindStyle(const SStringW& code) const { return FindQVEditComStyle(code); }

const QVEditStyle* CQVEditMultiCom::FindStyle(const SStringW& code) const {
  auto it = QVEditMultiStyles().find(code);
  return it == QVEditMultiStyles().end() ? nullptr : &it->second;
}

HRESULT CQVEditCom::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  const QVEditStyle* style = FindStyle(value);
  if (!style) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  SetAttribute(L"skin", style->skin, loading);
  if (!style->height.IsEmpty()) SetAttribute(L"height", style->height, loading);
  SetAttribute(L"padding", style->padding, loading);
  // Composite records of the normal and underline kinds carry no font.
  if (!style->font.IsEmpty()) SetAttribute(L"font", style->font, loading);
  return S_OK;
}

HRESULT CQVEditCom::OnAttrIcon(const SStringW& value, BOOL) {
  icon_skin_ = value;
  SyncDecorations();
  return S_OK;
}

HRESULT CQVEditCom::OnAttrUnit(const SStringW& value, BOOL) {
  unit_text_ = value;
  SyncDecorations();
  return S_OK;
}

HRESULT CQVEditCom::OnAttrClearBtn(const SStringW& value, BOOL) {
  clear_button_ = QVParseBool(value);
  SyncDecorations();
  return S_OK;
}

HRESULT CQVEditCom::OnAttrShowCount(const SStringW& value, BOOL) {
  show_count_ = QVParseBool(value);
  SyncDecorations();
  return S_OK;
}

HRESULT CQVEditCom::OnAttrForEdit(const SStringW& name, const SStringW& value) {
  if (!edit_) {
    pending_.emplace_back(name, value);
    return S_OK;
  }
  const HRESULT hr = edit_->SetAttribute(name, value, FALSE);
  SyncDecorations();
  return hr;
}

void CQVEditCom::SetFilter(QVEditFilter filter) {
  if (edit_) edit_->SetFilter(std::move(filter));
  else pending_filter_ = std::move(filter);
}

SStringW CQVEditCom::GetWindowText(BOOL raw) const {
  if (edit_) return edit_->GetWindowText(raw);
  for (auto it = pending_.rbegin(); it != pending_.rend(); ++it) {
    if (it->first.CompareNoCase(L"text") == 0) return it->second;
  }
  return SStringW();
}

void CQVEditCom::SetWindowText(const SStringW& text) { OnAttrForEdit(L"text", text); }

BOOL CQVEditCom::CreateChildren(pugi::xml_node node) {
  EnsureChildren();
  return SWindow::CreateChildren(node);
}

int CQVEditCom::OnCreate() {
  EnsureChildren();
  return SWindow::OnCreate();
}

void CQVEditCom::EnsureChildren() {
  if (edit_) return;
  icon_ = new SImageWnd();
  unit_ = new SStatic();
  clear_ = new SButton();
  count_ = new SStatic();
  auto* edit = new CQVEdit();
  edit->SetAttribute(L"name", L"qv_editcom_edit", TRUE);
  // Normal and underline records carry no font: the house text size, in dp
  // so it follows the zoom.
  edit->SetAttribute(L"font", L"size:12dp", TRUE);
  for (SWindow* w : {static_cast<SWindow*>(unit_), static_cast<SWindow*>(clear_), static_cast<SWindow*>(count_)}) {
    w->SetAttribute(L"font", L"size:12dp", TRUE);
  }
  if (IsMultiLine()) {
    edit->SetAttribute(L"multiLines", L"1", TRUE);
    edit->SetAttribute(L"wantReturn", L"1", TRUE);
    edit->SetAttribute(L"vcenter", L"0", TRUE);
  }
  icon_->SetAttribute(L"name", L"qv_editcom_icon", TRUE);
  icon_->SetAttribute(L"width", L"-1", TRUE);  // the skin's size
  icon_->SetAttribute(L"height", L"-1", TRUE);
  unit_->SetAttribute(L"name", L"qv_editcom_unit", TRUE);
  unit_->SetAttribute(L"colorText", kQVEditCueColor, TRUE);
  clear_->SetAttribute(L"name", L"qv_editcom_clear", TRUE);
  clear_->SetAttribute(L"colorText", kQVEditCueColor, TRUE);
  clear_->SetAttribute(L"focusable", L"0", TRUE);
  clear_->SetWindowText(L"\x00D7");  // a multiplication sign reads as "clear"
  count_->SetAttribute(L"name", L"qv_editcom_count", TRUE);
  count_->SetAttribute(L"colorText", kQVEditCueColor, TRUE);
  for (SWindow* w : {static_cast<SWindow*>(icon_), static_cast<SWindow*>(edit), static_cast<SWindow*>(unit_),
                     static_cast<SWindow*>(clear_), static_cast<SWindow*>(count_)}) {
    InsertChild(w);
  }
  edit_ = edit;
  for (const auto& a : pending_) edit_->SetAttribute(a.first, a.second, FALSE);
  pending_.clear();
  if (pending_filter_) edit_->SetFilter(std::move(pending_filter_));
  pending_filter_ = nullptr;

  // The inner edit's errors are the composite's: raised once, by it.
  edit_->GetEventSet()->subscribeEvent(EVT_QVEDIT_INPUT_ERROR, [this](EventArgs* evt) {
    evt->bubbleUp = false;
    NotifyFilterEvent();
    return true;
  });
  edit_->GetEventSet()->subscribeEvent(EVT_RE_NOTIFY, [this](EventArgs* evt) { return OnEditNotify(evt); });
  edit_->GetEventSet()->subscribeEvent(EVT_SETFOCUS, [this](EventArgs*) {
    ModifyState(WndState_PushDown, 0, TRUE);
    return false;
  });
  edit_->GetEventSet()->subscribeEvent(EVT_KILLFOCUS, [this](EventArgs*) {
    ModifyState(0, WndState_PushDown, TRUE);
    return false;
  });
  clear_->GetEventSet()->subscribeEvent(EVT_CMD, [this](EventArgs* evt) {
    evt->bubbleUp = false;
    edit_->SetSel(0, -1);
    edit_->ReplaceSel(L"", TRUE);
    edit_->SetFocus();
    return true;
  });
  SyncDecorations();
}

bool CQVEditCom::OnEditNotify(EventArgs* evt) {
  (void)evt;
  SyncDecorations();
  return false;
}

void CQVEditCom::SyncDecorations() {
  if (!edit_) return;
  icon_->SetAttribute(L"skin", icon_skin_, FALSE);
  icon_->SetVisible(!icon_skin_.IsEmpty() ? TRUE : FALSE);
  unit_->SetWindowText(unit_text_);
  unit_->SetVisible(!unit_text_.IsEmpty() ? TRUE : FALSE);
  const bool writable = !edit_->IsReadOnly() && !IsDisabled(TRUE);
  clear_->SetVisible(clear_button_ && writable && edit_->GetTextLength() > 0 ? TRUE : FALSE);
  const bool count = show_count_ && IsMultiLine();
  if (count) count_->SetWindowText(SStringW().Format2(L"%d/%d", edit_->GetTextLength(), edit_->GetMaxBuf()));
  count_->SetVisible(count ? TRUE : FALSE);
  RequestRelayout();
  Invalidate();
}

void CQVEditCom::UpdateChildrenPosition() {
  if (!edit_) {
    SWindow::UpdateChildrenPosition();
    return;
  }
  const int scale = GetScale();
  const int gap = Dp(4, scale);
  CRect rc = GetChildrenLayoutRect();
  // A multi-line composite keeps its decorations on the first line and its
  // counter under the text.
  auto place = [&](SWindow* w, bool at_left) {
    if (!w->IsVisible()) return;
    const CSize sz = w->GetDesiredSize(-1, -1);
    const int top = IsMultiLine() ? rc.top : rc.top + (rc.Height() - sz.cy) / 2;
    const int x = at_left ? rc.left : rc.right - sz.cx;
    w->OnRelayout(CRect(x, top, x + sz.cx, top + sz.cy));
    if (at_left) rc.left = std::min(rc.right, rc.left + sz.cx + gap);
    else rc.right = std::max(rc.left, rc.right - sz.cx - gap);
  };
  if (count_->IsVisible()) {
    const CSize sz = count_->GetDesiredSize(-1, -1);
    const CRect box(std::max(rc.left, rc.right - sz.cx), std::max(rc.top, rc.bottom - sz.cy), rc.right, rc.bottom);
    count_->OnRelayout(box);
    rc.bottom = box.top;
  }
  place(icon_, true);
  place(clear_, false);
  place(unit_, false);
  edit_->OnRelayout(rc);
}

void CQVEditCom::NotifyFilterEvent() {
  EventQVEditInputError evt(this);
  FireEvent(evt);
}

}  // namespace QVStandardCtrls
