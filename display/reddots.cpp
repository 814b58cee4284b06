#include "display/reddots.h"

#include "qvhost/zoom.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

const wchar_t kSkinSmallDot[] = L"skin_Icon_Litter_RedPoint";  // spelt so in the skin resources
const wchar_t kSkinDot[] = L"skin_icon_redpoint";
const wchar_t kSkinBadge[] = L"skin_Icon_BitRedPoint";

SStringW LookUpString(const SStringW& value) {
  SApplication* app = SApplication::getSingletonPtr();
  return app ? app->GetResProvider().ResolveString(value) : value;
}

// A page may give its own skin and the colour of the skinless fallback.
const QVAdmittedAttrs& RedDotAdmittedAttrs() {
  static const QVAdmittedAttrs kSet = {L"skin", L"colorBkgnd"};
  return kSet;
}

}  // namespace

// ---- CQVRedDot ----------------------------------------------------------------------

HRESULT CQVRedDot::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVRedDot> kAttrs[] = {
      {L"qvstyle", &CQVRedDot::OnAttrQVStyle},
      {L"pos", &CQVRedDot::OnAttrPos},
  };
  return QVDispatchAttribute<CQVRedDot, SWindow>(this, kAttrs, &RedDotAdmittedAttrs(), name, value, loading);
}

HRESULT CQVRedDot::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  (void)loading;
  // Takes effect at the next positioning.
  style_code_ = LookUpString(value);
  return S_OK;
}

HRESULT CQVRedDot::OnAttrPos(const SStringW& value, BOOL loading) {
  (void)loading;
  pos_text_ = value;
  DoSetPos();
  return S_OK;
}

BOOL CQVRedDot::InitFromXml(pugi::xml_node node) {
  const BOOL result = SWindow::InitFromXml(node);
  SetFixedAttribute();
  if (style_code_ == L"RD1") SWindow::SetAttribute(L"skin", kSkinSmallDot, FALSE);
  else if (style_code_ == L"RD2") SWindow::SetAttribute(L"skin", kSkinDot, FALSE);
  DoSetPos();
  return result;
}

void CQVRedDot::SetFixedAttribute() {
  SWindow::SetAttribute(L"clipClient", L"0", FALSE);
  SWindow::SetAttribute(L"font", L"size:10dp", FALSE);
  SWindow::SetAttribute(L"colorText", L"@color\\style_reddot\\text_color", FALSE);
  SWindow::SetAttribute(L"padding_left", L"3dp", FALSE);
  SWindow::SetAttribute(L"padding_right", L"3dp", FALSE);
}

SStringW CQVRedDot::AnchorPos() const { return pos_text_.IsEmpty() ? SStringW(L"-0dp, 0dp") : pos_text_; }

SStringW CQVRedDot::SizeSuffix() const {
  if (style_code_ == L"RD1") return L",@6dp, @6dp";
  if (style_code_ == L"RD2") return L",@8dp, @8dp";
  return SStringW();
}

void CQVRedDot::DoSetPos() {
  // Centred on the anchor point.
  SWindow::SetAttribute(L"offset", L"-0.5,-0.5", FALSE);
  SWindow::SetAttribute(L"pos", AnchorPos() + SizeSuffix(), FALSE);
}

SStringW CQVRedDot::GetWindowText(BOOL raw) const {
  (void)raw;
  return SStringW();
}

void CQVRedDot::OnEraseBkgnd(IRenderTarget* rt) {
  // The badge paints its own background in DrawRedDot.
  (void)rt;
}

void CQVRedDot::OnPaint(IRenderTarget* rt) {
  DrawRedDot(rt);
  DrawText(rt);
}

void CQVRedDot::DrawRedDot(IRenderTarget* rt) {
  const CRect rc = GetRedDotRect();
  if (!rt || rc.IsRectEmpty()) return;
  if (ISkinObj* skin = GetBkgndSkin()) {
    skin->DrawByIndex(rt, &rc, 0);
    return;
  }
  // Without a skin: a pill in the background colour (none set, nothing shows).
  const COLORREF bk = style_->colorBkgnd.Get();
  if (bk == CR_INVALID) return;
  IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(bk));
  const POINT radius{ZPixel(10), ZPixel(10)};
  rt->FillRoundRect(&rc, radius);
  rt->SelectBrush(old);
}

void CQVRedDot::DrawText(IRenderTarget* rt) { (void)rt; }

void CQVRedDot::DrawBadgeText(IRenderTarget* rt) {
  const SStringW text = GetWindowText();
  if (!rt || text.IsEmpty()) return;
  CRect rc = GetClientRect();
  rc.DeflateRect(style_->GetPadding(GetScale()));
  SWindow::DrawText(rt, text, text.GetLength(), &rc, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

// ---- CQVNUmberRedDot ------------------------------------------------------------------

HRESULT CQVNUmberRedDot::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVNUmberRedDot> kAttrs[] = {
      {L"number", &CQVNUmberRedDot::OnAttrNumber},
      {L"max_number", &CQVNUmberRedDot::OnAttrMaxNumber},
      {L"extend_direction", &CQVNUmberRedDot::OnAttrExtendDirection},
  };
  return QVDispatchAttribute<CQVNUmberRedDot, CQVRedDot>(this, kAttrs, nullptr, name, value, loading);
}

BOOL CQVNUmberRedDot::InitFromXml(pugi::xml_node node) {
  const BOOL result = SWindow::InitFromXml(node);
  DoSetPos();
  SetFixedAttribute();
  if (style_code_ == L"RD3") SWindow::SetAttribute(L"skin", kSkinBadge, FALSE);
  UpdateNumberText();
  SetVisible(number_ >= 1 && max_number_ >= 1 ? TRUE : FALSE);
  return result;
}

HRESULT CQVNUmberRedDot::OnAttrNumber(const SStringW& value, BOOL loading) {
  (void)loading;
  int v = 0;
  StrToIntExW(value, STIF_SUPPORT_HEX, &v);
  SetNumber(v);
  return S_OK;
}

HRESULT CQVNUmberRedDot::OnAttrMaxNumber(const SStringW& value, BOOL loading) {
  (void)loading;
  int v = 0;
  StrToIntExW(value, STIF_SUPPORT_HEX, &v);
  SetMaxNumber(v);
  return S_OK;
}

HRESULT CQVNUmberRedDot::OnAttrExtendDirection(const SStringW& value, BOOL loading) {
  (void)loading;
  extend_direction_ = LookUpString(value);
  return S_OK;
}

void CQVNUmberRedDot::SetNumber(int number) {
  number_ = number;
  if (number_ < 1) SetVisible(FALSE, TRUE);
  UpdateNumberText();
}

void CQVNUmberRedDot::SetMaxNumber(int max_number) {
  max_number_ = max_number;
  if (max_number_ < 1) SetVisible(FALSE, TRUE);
  UpdateNumberText();
}

void CQVNUmberRedDot::UpdateNumberText() {
  SStringW text = SStringW::Format2(L"%d", number_ > max_number_ ? max_number_ : number_);
  if (number_ > max_number_) text += L"+";
  if (text == shown_text_) return;
  shown_text_ = text;
  // The width follows the text.
  RequestRelayout();
  Invalidate();
}

SStringW CQVNUmberRedDot::GetWindowText(BOOL raw) const {
  (void)raw;
  return shown_text_;
}

SStringW CQVNUmberRedDot::SizeSuffix() const { return style_code_ == L"RD3" ? SStringW(L",@-1, @12dp") : SStringW(); }

void CQVNUmberRedDot::DoSetPos() {
  // The badge grows away from its anchor, centred on it vertically. The
  // 6dp inward shift some hosts apply as a margin is left to the page.
  if (extend_direction_ == L"right") SWindow::SetAttribute(L"offset", L"0,-0.5", FALSE);
  else if (extend_direction_ == L"left") SWindow::SetAttribute(L"offset", L"-1,-0.5", FALSE);
  SWindow::SetAttribute(L"pos", AnchorPos() + SizeSuffix(), FALSE);
}

void CQVNUmberRedDot::DrawText(IRenderTarget* rt) { DrawBadgeText(rt); }

// ---- CQVLableRedDot -------------------------------------------------------------------

BOOL CQVLableRedDot::InitFromXml(pugi::xml_node node) {
  const BOOL result = SWindow::InitFromXml(node);
  SetFixedAttribute();
  SWindow::SetAttribute(L"skin", kSkinBadge, FALSE);
  DoSetPos();
  return result;
}

SStringW CQVLableRedDot::GetWindowText(BOOL raw) const {
  (void)raw;
  if (style_code_ == L"RD4") return L"HOT";
  if (style_code_ == L"RD5") return L"NEW";
  return SStringW();
}

SStringW CQVLableRedDot::SizeSuffix() const {
  return style_code_ == L"RD4" || style_code_ == L"RD5" ? SStringW(L",@30dp, @12dp") : SStringW();
}

void CQVLableRedDot::DrawText(IRenderTarget* rt) { DrawBadgeText(rt); }

}  // namespace QVStandardCtrls
