#include "soui/checkctrls.h"

#include <algorithm>

#include "soui/render.h"
#include "soui/sobject.h"

namespace SOUI {
namespace {

int ParseInt(const SStringW& value, int def) {
  int v = def;
  return StrToIntExW(value, STIF_SUPPORT_HEX, &v) ? v : def;
}

}  // namespace

// ---- SCheckBox --------------------------------------------------------------------

SCheckBox::SCheckBox() {
  focusable_ = TRUE;
  static const SwndStyle& style = SwndStyle::LeftAligned(L"arrow");
  UseClassStyle(style);
  skin_.Set(L"_skin.sys.checkbox");
}

int SCheckBox::GetDrawState() const {
  int base = 0;
  if (IsDisabled(TRUE)) base = 3;
  else if (state_ & WndState_PushDown) base = 2;
  else if (state_ & WndState_Hover) base = 1;
  return base + (IsChecked() ? 4 : 0);
}

void SCheckBox::SetCheck(BOOL checked) {
  if (checked) ModifyState(WndState_Check, 0, TRUE);
  else ModifyState(0, WndState_Check, TRUE);
}

HRESULT SCheckBox::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"checked") == 0) {
    SetCheck(ParseBool(value));
    return AfterAttribute(name, value, loading, S_OK);
  }
  return SWindow::SetAttribute(name, value, loading);
}

CSize SCheckBox::BoxSize() const {
  if (ISkinObj* skin = GetBkgndSkin()) {
    const SIZE s = skin->GetSkinSize();
    if (s.cx > 0 && s.cy > 0) return CSize(s);
  }
  const int side = 13 * GetScale() / 100;
  return CSize(side, side);
}

CSize SCheckBox::MeasureContent(int width) {
  const CSize box = BoxSize();
  const SStringW text = GetWindowText();
  const CSize t = text.IsEmpty() ? CSize() : MeasureTextExtent(text, -1, DT_SINGLELINE);
  (void)width;
  return CSize(box.cx + 4 + t.cx, std::max(box.cy, t.cy));
}

void SCheckBox::OnEraseBkgnd(IRenderTarget* rt) {
  // The skin is the box, drawn by OnPaint; only a background colour fills.
  const COLORREF bk = style_->colorBkgnd.Get();
  if (bk == CR_INVALID) return;
  const CRect rc = GetClientRect();
  rt->FillSolidRect(&rc, bk);
}

void SCheckBox::OnPaint(IRenderTarget* rt) {
  const CRect client = GetChildrenLayoutRect();
  const CSize box = BoxSize();
  CRect rc_box(client.left, client.top + (client.Height() - box.cy) / 2, client.left + box.cx,
               client.top + (client.Height() - box.cy) / 2 + box.cy);
  if (ISkinObj* skin = GetBkgndSkin()) {
    int state = GetDrawState();
    if (state >= skin->GetStates()) state = state >= 4 && skin->GetStates() > 4 ? 4 : 0;
    skin->DrawByIndex(rt, &rc_box, state);
  } else {
    // No skin in the theme: an outline, filled inside when checked.
    // Radios round both the outline and the mark.
    const COLORREF c = rt->GetTextColor();
    const bool round = IsClass(L"radio") != FALSE;
    IPenPtr old_pen = rt->SelectPen(rt->CreatePen(PS_SOLID, c, 1));
    if (round) rt->DrawRoundRect(&rc_box, CPoint(box.cx / 2, box.cy / 2));
    else rt->DrawRectangle(&rc_box);
    rt->SelectPen(old_pen);
    if (IsChecked()) {
      CRect in = rc_box;
      in.DeflateRect(3, 3);
      IBrushPtr old_brush = rt->SelectBrush(rt->CreateSolidColorBrush(c));
      if (round) rt->FillRoundRect(&in, CPoint(in.Width() / 2, in.Height() / 2));
      else rt->FillRectangle(&in);
      rt->SelectBrush(old_brush);
    }
  }
  const SStringW text = GetWindowText();
  if (text.IsEmpty()) return;
  CRect rc_text(rc_box.right + 4, client.top, client.right, client.bottom);
  DrawText(rt, text, text.GetLength(), &rc_text, DT_SINGLELINE | DT_VCENTER | DT_LEFT);
}

void SCheckBox::OnActivate() { SetCheck(!IsChecked()); }

void SCheckBox::OnLButtonUp(UINT flags, CPoint pt) {
  // The state changes before on_command, so handlers see the new state.
  const bool click = (state_ & WndState_PushDown) && rect_.PtInRect(pt) && !IsDisabled(TRUE);
  if (click) OnActivate();
  SWindow::OnLButtonUp(flags, pt);
}

void SCheckBox::OnKeyDown(UINT vk, UINT repeat, UINT flags) {
  if (vk == VK_SPACE && !IsDisabled(TRUE)) {
    OnActivate();
    FireCommand();
    return;
  }
  SWindow::OnKeyDown(vk, repeat, flags);
}

void SCheckBox::OnChar(UINT ch, UINT repeat, UINT flags) {
  if (ch == L' ') return;  // the key-down already toggled
  SWindow::OnChar(ch, repeat, flags);
}

// ---- SRadioBox --------------------------------------------------------------------

SRadioBox::SRadioBox() { skin_.Set(L"_skin.sys.radio"); }

HRESULT SRadioBox::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"group") == 0) {
    group_ = value;
    return AfterAttribute(name, value, loading, S_OK);
  }
  return SCheckBox::SetAttribute(name, value, loading);
}

void SRadioBox::OnActivate() { SetCheck(TRUE); }

void SRadioBox::SetCheck(BOOL checked) {
  SCheckBox::SetCheck(checked);
  if (!checked || !GetParent()) return;
  for (SWindow* w = GetParent()->GetWindow(GSW_FIRSTCHILD); w; w = w->GetWindow(GSW_NEXTSIBLING)) {
    if (w == this || !w->IsClass(SRadioBox::GetClassName())) continue;
    auto* other = static_cast<SRadioBox*>(w);
    if (other->group_ == group_ && other->IsChecked()) other->SCheckBox::SetCheck(FALSE);
  }
}

// ---- SLink ------------------------------------------------------------------------

SLink::SLink() {
  static const SwndStyle& style = SwndStyle::LeftAligned(L"hand");
  UseClassStyle(style);
}

HRESULT SLink::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"href") == 0) {
    href_ = value;
    return AfterAttribute(name, value, loading, S_OK);
  }
  return SWindow::SetAttribute(name, value, loading);
}

void SLink::OnPaint(IRenderTarget* rt) {
  IFontPtr old;
  const bool hover = (state_ & WndState_Hover) != 0;
  if (hover && rt->GetCurrentFont()) {
    FontDesc d = rt->GetCurrentFont()->Desc();
    d.underline = true;
    old = rt->SelectFont(rt->CreateFont(d));
  }
  SWindow::OnPaint(rt);
  if (old) rt->SelectFont(old);
}

// ---- SProgress --------------------------------------------------------------------

SProgress::SProgress() { msg_transparent_ = TRUE; }

void SProgress::SetRange(int min, int max) {
  max = std::max(min, max);
  if (min == min_ && max == max_) return;
  min_ = min;
  max_ = max;
  value_ = std::clamp(value_, min_, max_);
  Invalidate();
}

void SProgress::SetValue(int value) {
  value = std::clamp(value, min_, max_);
  if (value == value_) return;
  value_ = value;
  Invalidate();
}

int SProgress::FilledWidth(int width) const {
  if (max_ <= min_ || width <= 0) return 0;
  return static_cast<int>(static_cast<long long>(width) * (value_ - min_) / (static_cast<long long>(max_) - min_));
}

HRESULT SProgress::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  if (name.CompareNoCase(L"min") == 0) {
    SetRange(ParseInt(value, 0), std::max(ParseInt(value, 0), max_));
  } else if (name.CompareNoCase(L"max") == 0) {
    SetRange(min_, ParseInt(value, 100));
  } else if (name.CompareNoCase(L"value") == 0) {
    SetValue(ParseInt(value, 0));
  } else if (name.CompareNoCase(L"showPercent") == 0) {
    show_percent_ = ParseBool(value);
    Invalidate();
  } else if (name.CompareNoCase(L"bkgndSkin") == 0) {
    bkgnd_skin_.Set(value);
    Invalidate();
  } else if (name.CompareNoCase(L"posSkin") == 0) {
    pos_skin_.Set(value);
    Invalidate();
  } else if (name.CompareNoCase(L"colorPos") == 0) {
    color_pos_.Set(value);
    Invalidate();
  } else {
    return SWindow::SetAttribute(name, value, loading);
  }
  return AfterAttribute(name, value, loading, S_OK);
}

void SProgress::OnEraseBkgnd(IRenderTarget* rt) {
  const CRect rc = GetClientRect();
  if (ISkinObj* skin = bkgnd_skin_.Get(GetScale())) skin->DrawByIndex(rt, &rc, 0);
  else SWindow::OnEraseBkgnd(rt);
}

void SProgress::OnPaint(IRenderTarget* rt) {
  const CRect rc = GetClientRect();
  CRect filled = rc;
  filled.right = rc.left + FilledWidth(rc.Width());
  if (!filled.IsRectEmpty()) {
    if (ISkinObj* skin = pos_skin_.Get(GetScale())) skin->DrawByIndex(rt, &filled, 0);
    else if (color_pos_.Get() != CR_INVALID) rt->FillSolidRect(&filled, color_pos_.Get());
  }
  if (!show_percent_) return;
  SStringW pct;
  pct.Format(L"%d%%", max_ > min_ ? static_cast<int>(100LL * (value_ - min_) / (static_cast<long long>(max_) - min_)) : 0);
  CRect text_rc = rc;
  DrawText(rt, pct, pct.GetLength(), &text_rc, DT_SINGLELINE | DT_CENTER | DT_VCENTER | DT_NOPREFIX);
}

void RegisterCheckControls(SObjectFactory& factory) {
  factory.RegisterWindowClass<SCheckBox>();
  factory.RegisterWindowClass<SRadioBox>();
  factory.RegisterWindowClass<SLink>();
  factory.RegisterWindowClass<SProgress>();
}

}  // namespace SOUI
