#include "edits/qv_editpwd.h"

#include <algorithm>

#include "framework/style_tables.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

const wchar_t kDefaultCellSkin[] = L"skin_edit_std_input_normal";

bool AllDigits(const SStringW& s) {
  for (int i = 0; i < s.GetLength(); ++i) {
    if (s[i] < L'0' || s[i] > L'9') return false;
  }
  return true;
}

}  // namespace

CQVEditPwd::CQVEditPwd()
    : cell_w_(30.f, LayoutUnit::Dp), cell_h_(24.f, LayoutUnit::Dp), gap_(8.f, LayoutUnit::Dp) {
  focusable_ = TRUE;
  cell_skin_.Set(kDefaultCellSkin);
  SWindow::SetAttribute(L"colorText", kQVEditTextColor, TRUE);
  GetEventSet()->addEvent(EVT_QVEDIT_INPUT_ERROR, EventQVEditInputError::EventName());
  GetEventSet()->addEvent(EVT_QVEDITPWD_COMPLETE, EventQVEditPwdComplete::EventName());
}

HRESULT CQVEditPwd::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVEditPwd> kAttrs[] = {
      {L"qvstyle", &CQVEditPwd::OnAttrQVStyle}, {L"length", &CQVEditPwd::OnAttrLength},
      {L"gap", &CQVEditPwd::OnAttrGap},         {L"mask", &CQVEditPwd::OnAttrMask},
      {L"skin", &CQVEditPwd::OnAttrSkin},       {L"code", &CQVEditPwd::OnAttrCode},
  };
  static const QVAdmittedAttrs kAdmitted = {L"font", L"colorText", L"margin", L"padding", L"cursor"};
  return QVDispatchAttribute<CQVEditPwd, SWindow>(this, kAttrs, &kAdmitted, name, value, loading);
}

HRESULT CQVEditPwd::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  auto it = QVPwdCellStyles().find(value);
  if (it == QVPwdCellStyles().end()) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  cell_w_ = SLayoutSize::Parse(it->second.cell_size1);
  cell_h_ = SLayoutSize::Parse(it->second.cell_size2);
  SetAttribute(L"font", it->second.font, loading);
  RequestRelayout();
  return S_OK;
}

HRESULT CQVEditPwd::OnAttrLength(const SStringW& value, BOOL) {
  int n = 0;
  StrToIntExW(value, STIF_SUPPORT_HEX, &n);
  cells_ = std::max(1, std::min(n, kMaxCells));
  if (code_.GetLength() > cells_) code_ = code_.Left(cells_);
  RequestRelayout();
  Changed();
  return S_OK;
}

HRESULT CQVEditPwd::OnAttrGap(const SStringW& value, BOOL) {
  gap_ = SLayoutSize::Parse(value);
  RequestRelayout();
  return S_OK;
}

HRESULT CQVEditPwd::OnAttrMask(const SStringW& value, BOOL) {
  mask_ = QVParseBool(value);
  Invalidate();
  return S_OK;
}

HRESULT CQVEditPwd::OnAttrSkin(const SStringW& value, BOOL) {
  cell_skin_.Set(value);
  Invalidate();
  return S_OK;
}

HRESULT CQVEditPwd::OnAttrCode(const SStringW& value, BOOL) {
  SetCode(value);
  return S_OK;
}

UINT CQVEditPwd::OnGetDlgCode() const { return SC_WANTCHARS; }

CSize CQVEditPwd::MeasureContent(int width) {
  (void)width;
  const int scale = GetScale();
  const int w = std::max(0, cell_w_.toPixelSize(scale));
  const int g = std::max(0, gap_.toPixelSize(scale));
  return CSize(cells_ * w + (cells_ - 1) * g, std::max(0, cell_h_.toPixelSize(scale)));
}

CRect CQVEditPwd::CellRect(int i) const {
  const int scale = GetScale();
  const int w = std::max(0, cell_w_.toPixelSize(scale));
  const int h = std::max(0, cell_h_.toPixelSize(scale));
  const int g = std::max(0, gap_.toPixelSize(scale));
  const CRect rc = GetClientRect();
  const int x = rc.left + i * (w + g);
  const int y = rc.top + std::max(0, (rc.Height() - h) / 2);
  return CRect(x, y, x + w, y + h);
}

void CQVEditPwd::OnPaint(IRenderTarget* rt) {
  const int scale = GetScale();
  ISkinObj* skin = cell_skin_.Get(scale);
  const bool focused = IsFocused();
  const int active = std::min(code_.GetLength(), cells_ - 1);
  const COLORREF ink = rt->GetTextColor();
  for (int i = 0; i < cells_; ++i) {
    CRect cell = CellRect(i);
    if (skin) skin->DrawByIndex(rt, &cell, focused && i == active ? 2 : 0);
    if (i >= code_.GetLength()) continue;
    if (mask_) {
      const int d = std::max(4, cell.Height() / 4);
      const CRect dot(cell.CenterPoint().x - d / 2, cell.CenterPoint().y - d / 2,
                      cell.CenterPoint().x - d / 2 + d, cell.CenterPoint().y - d / 2 + d);
      IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(ink));
      rt->FillEllipse(&dot);
      rt->SelectBrush(old);
    } else {
      const wchar_t digit = code_[i];
      DrawText(rt, &digit, 1, &cell, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    }
  }
}

void CQVEditPwd::OnChar(UINT ch, UINT repeat, UINT flags) {
  (void)repeat;
  (void)flags;
  if (GetKeyState(VK_CONTROL) < 0) return;  // shortcuts are keys
  if (ch == 0x08) {
    if (code_.IsEmpty()) return;
    code_ = code_.Left(code_.GetLength() - 1);
    Changed();
    return;
  }
  if (ch < 0x20 || ch == 0x7F) return;
  if (ch > 0xFFFF || !Append(SStringW(static_cast<wchar_t>(ch)))) NotifyFilterEvent();
}

void CQVEditPwd::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  if (vk == 'V' && GetKeyState(VK_CONTROL) < 0) {
    SApplication* app = SApplication::getSingletonPtr();
    if (!app) return;
    SStringW text = app->GetClipboard().GetText();
    SStringW digits;
    for (int i = 0; i < text.GetLength() && digits.GetLength() <= cells_; ++i) {
      if (text[i] != L' ' && text[i] != L'\t' && text[i] != L'\r' && text[i] != L'\n') digits += SStringW(text[i]);
    }
    // A whole code or nothing: a paste that does not fit is not a code.
    if (digits.IsEmpty() || digits.GetLength() > cells_ || !SetCode(digits)) NotifyFilterEvent();
    return;
  }
  SWindow::OnKeyDown(vk, repeat, flags);
}

void CQVEditPwd::OnLButtonDown(UINT flags, CPoint pt) {
  SWindow::OnLButtonDown(flags, pt);
  SetFocus();
}

BOOL CQVEditPwd::ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) {
  if (msg == WM_IME_COMPOSITION) {
    // Committed text is taken like typed digits; a composition is not shown.
    const ImeText* ime = reinterpret_cast<const ImeText*>(lp);
    result = 0;
    if (ime && (wp & GCS_RESULTSTR) && !ime->text.IsEmpty() && !Append(ime->text)) NotifyFilterEvent();
    return TRUE;
  }
  return SWindow::ProcessSwndMessage(msg, wp, lp, result);
}

bool CQVEditPwd::Append(const SStringW& text) {
  if (!AllDigits(text) || code_.GetLength() + text.GetLength() > cells_) return false;
  code_ += text;
  Changed();
  return true;
}

bool CQVEditPwd::SetCode(const SStringW& code) {
  if (!AllDigits(code) || code.GetLength() > cells_) return false;
  if (code == code_) return true;
  code_ = code;
  Changed();
  return true;
}

void CQVEditPwd::Changed() {
  Invalidate();
  if (!IsComplete()) {
    completed_ = false;
    return;
  }
  if (completed_) return;
  completed_ = true;
  EventQVEditPwdComplete evt(this);
  evt.code = code_;
  FireEvent(evt);
}

void CQVEditPwd::NotifyFilterEvent() {
  EventQVEditInputError evt(this);
  FireEvent(evt);
}

}  // namespace QVStandardCtrls
