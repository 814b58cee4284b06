#include "display/buttons.h"

#include <algorithm>

#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

const QVAdmittedAttrs& ButtonAdmittedAttrs() {
  static const QVAdmittedAttrs kSet = {
      L"skin",         L"focusSkin",   L"colorBkgnd",    L"colorBorder",    L"margin",
      L"margin-x",     L"margin-y",    L"inset",         L"padding",        L"padding_left",
      L"padding_top",  L"padding_right", L"padding_bottom", L"valign",     L"align",
      L"height",       L"font"};
  return kSet;
}

int ClampState(const ISkinObj* skin, int state) { return state < skin->GetStates() ? state : 0; }

}  // namespace

// ---- CQVButtonBase ------------------------------------------------------------------

CQVButtonBase::CQVButtonBase() {
  // The toolkit button's system skin is not part of the house look: a text
  // button without a style paints no frame, and styles bring their own skin.
  skin_.Clear();
}

HRESULT CQVButtonBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  // qvstyle and button_icon are unknown to the toolkit button, so they stop
  // here; pos goes on to the toolkit layout.
  static const QVAttrEntry<CQVButtonBase> kAttrs[] = {
      {L"qvstyle", &CQVButtonBase::OnAttrQVStyle},
      {L"button_icon", &CQVButtonBase::OnAttrButtonIcon},
      {L"pos", &CQVButtonBase::OnAttrPos, true},
  };
  return QVDispatchAttribute<CQVButtonBase, SButton>(this, kAttrs, &ButtonAdmittedAttrs(), name, value, loading);
}

BOOL CQVButtonBase::InitFromXml(pugi::xml_node node) {
  const BOOL result = SButton::InitFromXml(node);
  ApplyStyle();
  // Always 4dp after loading, whatever the element or the style said.
  SWindow::SetAttribute(L"padding_left", L"4dp", FALSE);
  SWindow::SetAttribute(L"padding_right", L"4dp", FALSE);
  return result;
}

HRESULT CQVButtonBase::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  style_code_ = value;
  if (loading || style_code_.IsEmpty()) return S_FALSE;
  ApplyStyle();
  RequestRelayout();
  return S_OK;
}

HRESULT CQVButtonBase::OnAttrButtonIcon(const SStringW& value, BOOL loading) {
  icon_.Set(value);
  if (!loading) RequestRelayout();
  return S_OK;
}

HRESULT CQVButtonBase::OnAttrPos(const SStringW& value, BOOL loading) {
  (void)value;
  (void)loading;
  // Placement itself is the toolkit layout's; the entry is here so that the
  // family's handler set stays the published one.
  return S_FALSE;
}

void CQVButtonBase::ApplyStyle() {
  const SStringW code = style_code_;
  if (code.IsEmpty()) return;
  QVButtonStylePtr rec = FindQVButtonStyle(code);
  if (!rec) return;
  ApplyQVButtonStyleAttributes(this, *rec);
  if (!rec->keep_colors) {
    for (int i = 0; i < kQVColorSlotCount; ++i) {
      if (rec->colors[i].IsEmpty() || !colors_[i].Set(rec->colors[i])) colors_[i].Clear();
    }
  }
  applied_style_ = std::move(rec);
}

COLORREF CQVButtonBase::GetStyleColor(int slot) const {
  if (slot < 0 || slot >= kQVColorSlotCount || !colors_[slot].IsSet()) return CR_INVALID;
  return colors_[slot].Get();
}

int CQVButtonBase::StyleSizePx(int index) const {
  if (!applied_style_ || index < 0 || index > 3) return 0;
  return SLayoutSize(static_cast<float>(applied_style_->sizes[index]), LayoutUnit::Dp).toPixelSize(GetScale());
}

// ---- CQVButton ------------------------------------------------------------------------

namespace {
// Space between the icon and the caption, at 100 %.
constexpr int kIconGapDp = 4;
}  // namespace

CRect CQVButton::GetTextRect() const {
  CRect rc = GetClientRect();
  const CRect pad = style_->GetPadding(GetScale());
  rc.left += std::max<int>(pad.left, StyleSizePx(2));
  rc.right -= std::max<int>(pad.right, StyleSizePx(3));
  rc.top += pad.top;
  rc.bottom -= pad.bottom;
  if (rc.right < rc.left) rc.right = rc.left;
  return rc;
}

CSize CQVButton::GetDesiredSize(int width, int height) {
  CSize size = CQVButtonBase::GetDesiredSize(width, height);
  if (!layout_param_.IsWrapContent(Orientation::Horz)) return size;
  const int scale = GetScale();
  const CRect pad = style_->GetPadding(scale);
  const CRect margin = style_->GetMargin(scale);
  int content = MeasureContent(-1).cx;
  if (ISkinObj* icon = GetIcon()) {
    content += icon->GetSkinSize().cx;
    if (!GetWindowText().IsEmpty()) content += SLayoutSize(kIconGapDp, LayoutUnit::Dp).toPixelSize(scale);
  }
  const int insets = std::max<int>(pad.left, StyleSizePx(2)) + std::max<int>(pad.right, StyleSizePx(3));
  size.cx = std::max(content + insets + margin.left + margin.right, StyleSizePx(1));
  return size;
}

void CQVButton::OnPaint(IRenderTarget* rt) {
  const int state = GetStateIndex();
  CRect rc = GetTextRect();
  const SStringW text = GetWindowText();
  ISkinObj* icon = GetIcon();
  if (icon) {
    // Icon and caption are centred together.
    const CSize isz(icon->GetSkinSize().cx, icon->GetSkinSize().cy);
    const int gap = text.IsEmpty() ? 0 : SLayoutSize(kIconGapDp, LayoutUnit::Dp).toPixelSize(GetScale());
    int text_w = 0;
    if (!text.IsEmpty()) {
      SIZE ts{0, 0};
      rt->MeasureText(text, text.GetLength(), &ts);
      text_w = ts.cx;
    }
    const int group = std::min<int>(isz.cx + gap + text_w, rc.Width());
    const int x = rc.left + (rc.Width() - group) / 2;
    const int y = rc.top + (rc.Height() - isz.cy) / 2;
    const CRect irc(x, y, x + isz.cx, y + isz.cy);
    icon->DrawByIndex(rt, &irc, ClampState(icon, state));
    rc.left = std::min<int>(irc.right + gap, rc.right);
    rc.right = std::min<int>(rc.left + text_w, rc.right);
  }
  if (text.IsEmpty()) return;
  COLORREF color = GetStyleColor(kQVColorTextNormal + state);
  if (color == CR_INVALID) color = GetPaintTextColor();
  const COLORREF old = rt->SetTextColor(color);
  const UINT align = icon ? DT_LEFT : (GetTextAlign() & (DT_CENTER | DT_RIGHT));
  DrawText(rt, text, text.GetLength(), &rc, align | DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS);
  rt->SetTextColor(old);
}

// ---- CQVIconButtonBase ------------------------------------------------------------------

HRESULT CQVIconButtonBase::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVIconButtonBase> kAttrs[] = {
      {L"icon", &CQVIconButtonBase::OnAttrIcon},
  };
  // The button base filters what is left.
  return QVDispatchAttribute<CQVIconButtonBase, CQVButtonBase>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT CQVIconButtonBase::OnAttrIcon(const SStringW& value, BOOL loading) {
  SetIconSkin(value);
  if (!loading) RequestRelayout();
  return S_OK;
}

void CQVIconButtonBase::ApplyStyle() {
  // Icon buttons have their own table: a text-button code finds nothing here.
  if (style_code_.IsEmpty()) return;
  QVIconButtonStylePtr rec = FindQVIconButtonStyle(style_code_);
  if (!rec) return;
  SWindow::SetAttribute(L"skin", rec->skin, FALSE);
}

void CQVIconButtonBase::DrawCentred(IRenderTarget* rt, ISkinObj* skin, const CRect& rc, int state) const {
  const SIZE sz = skin->GetSkinSize();
  if (sz.cx <= 0 || sz.cy <= 0) {
    skin->DrawByIndex(rt, &rc, ClampState(skin, state));
    return;
  }
  const int x = rc.left + (rc.Width() - sz.cx) / 2;
  const int y = rc.top + (rc.Height() - sz.cy) / 2;
  const CRect dst(x, y, x + sz.cx, y + sz.cy);
  skin->DrawByIndex(rt, &dst, ClampState(skin, state));
}

CSize CQVIconButtonBase::GetDesiredSize(int width, int height) {
  ISkinObj* icon = GetIcon();
  const SouiLayoutParam* p = GetLayoutParam();
  CSize size = CQVButtonBase::GetDesiredSize(width, height);
  if (!icon) return size;
  const SIZE sz = icon->GetSkinSize();
  const CRect pad = style_->GetPadding(GetScale());
  if (p->IsWrapContent(Orientation::Horz) && sz.cx > 0) size.cx = sz.cx + pad.left + pad.right;
  if (p->IsWrapContent(Orientation::Vert) && sz.cy > 0) size.cy = sz.cy + pad.top + pad.bottom;
  return size;
}

void CQVIconButtonBase::OnPaint(IRenderTarget* rt) {
  ISkinObj* icon = GetIcon();
  if (!icon) {
    CQVButtonBase::OnPaint(rt);
    return;
  }
  DrawCentred(rt, icon, GetChildrenLayoutRect(), GetStateIndex());
}

// ---- QVIconButton ------------------------------------------------------------------------

HRESULT QVIconButton::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<QVIconButton> kAttrs[] = {
      {L"enable_select", &QVIconButton::OnAttrEnableSelect, true},
  };
  return QVDispatchAttribute<QVIconButton, CQVIconButtonBase>(this, kAttrs, nullptr, name, value, loading);
}

HRESULT QVIconButton::OnAttrEnableSelect(const SStringW& value, BOOL loading) {
  (void)loading;
  enable_select_ = QVParseBool(value);
  return S_FALSE;
}

void QVIconButton::OnLButtonUp(UINT flags, CPoint pt) {
  // The toolkit fires the click first, so a handler sees the old selection.
  CQVIconButtonBase::OnLButtonUp(flags, pt);
  if (enable_select_) SetCheck(IsChecked() ? FALSE : TRUE);
}

// ---- QVSwitchButton ---------------------------------------------------------------------

HRESULT QVSwitchButton::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<QVSwitchButton> kAttrs[] = {
      {L"open_icon", &QVSwitchButton::OnAttrOpenIcon, true},
      {L"close_icon", &QVSwitchButton::OnAttrCloseIcon, true},
      {L"icon", &QVSwitchButton::OnAttrIgnoredIcon, true},
      {L"open", &QVSwitchButton::OnAttrOpen, true},
  };
  return QVDispatchAttribute<QVSwitchButton, CQVIconButtonBase>(this, kAttrs, nullptr, name, value, loading);
}

bool QVSwitchButton::IsContentSized() const {
  const SouiLayoutParam* p = GetLayoutParam();
  return p->IsWrapContent(Orientation::Horz) || p->IsWrapContent(Orientation::Vert);
}

HRESULT QVSwitchButton::AfterIconChange(BOOL loading) {
  if (loading) return S_FALSE;
  if (IsContentSized()) RequestRelayout();
  return S_OK;
}

HRESULT QVSwitchButton::OnAttrOpenIcon(const SStringW& value, BOOL loading) {
  open_icon_.Set(value);
  return AfterIconChange(loading);
}

HRESULT QVSwitchButton::OnAttrCloseIcon(const SStringW& value, BOOL loading) {
  close_icon_.Set(value);
  return AfterIconChange(loading);
}

HRESULT QVSwitchButton::OnAttrIgnoredIcon(const SStringW& value, BOOL loading) {
  (void)value;
  (void)loading;
  return S_FALSE;
}

HRESULT QVSwitchButton::OnAttrOpen(const SStringW& value, BOOL loading) {
  (void)loading;
  open_ = QVParseBool(value);
  return S_OK;
}

ISkinObj* QVSwitchButton::CurrentIcon() const {
  // An open switch without an open icon shows none: no fallback to the
  // close icon.
  return open_ ? open_icon_.Get(GetScale()) : close_icon_.Get(GetScale());
}

void QVSwitchButton::SetIsOpen(bool open) {
  if (open == open_) return;
  open_ = open;
  if (IsContentSized()) RequestRelayout();
  else Invalidate();
}

CSize QVSwitchButton::GetDesiredSize(int width, int height) {
  ISkinObj* icon = CurrentIcon();
  const SIZE sz = icon ? icon->GetSkinSize() : SIZE{0, 0};
  if (sz.cx <= 0 || sz.cy <= 0) return SButton::GetDesiredSize(width, height);
  const CRect pad = style_->GetPadding(GetScale());
  return CSize(sz.cx + pad.left + pad.right, sz.cy + pad.top + pad.bottom);
}

void QVSwitchButton::OnPaint(IRenderTarget* rt) {
  // The background skin is painted by state index in OnEraseBkgnd.
  if (ISkinObj* icon = CurrentIcon()) DrawCentred(rt, icon, GetChildrenLayoutRect(), 0);
}

void QVSwitchButton::OnLButtonUp(UINT flags, CPoint pt) {
  CQVIconButtonBase::OnLButtonUp(flags, pt);
  SetIsOpen(!open_);
}

}  // namespace QVStandardCtrls
