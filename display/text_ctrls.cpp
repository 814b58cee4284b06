#include "display/text_ctrls.h"

#include <map>

#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

// What page authors may still set on text controls beside the structural
// attributes: their text look and the extension's own spacing.
const QVAdmittedAttrs& TextAdmittedAttrs() {
  static const QVAdmittedAttrs kSet = {
      L"font",        L"colorText",   L"colorTextHover", L"colorTextDisable", L"colorBkgnd",
      L"align",       L"valign",      L"dotted",         L"lineSpacing",      L"interHeight",
      L"multiLines",  L"padding",     L"padding_left",   L"padding_top",      L"padding_right",
      L"padding_bottom", L"margin",   L"height",         L"cursor",           L"paraSpacing",
      L"inlineParagraphs", L"href",   L"checked",        L"group",            L"skin",
      L"maxWidth"};
  return kSet;
}

const wchar_t kLinkColor[] = L"@color\\style_skin_qv_text\\text_link_normal";

HRESULT ApplyCheckStyle(SWindow* ctrl, const SStringW& code, BOOL loading) {
  const QVTextStyle* style = FindQVCheckStyle(code);
  if (!style) return S_OK;
  ctrl->SetAttribute(L"font", style->font, loading);
  ctrl->SetAttribute(L"colorText", style->color, loading);
  // A disabled choice reads as unavailable, not as another caption.
  ctrl->SetAttribute(L"colorTextDisable", L"@color\\style_skin_qv_text\\text_disable", loading);
  return S_OK;
}

}  // namespace

const QVTextStyle* FindQVCheckStyle(const SStringW& code) {
  static const std::map<SStringW, QVTextStyle> kTable = {
      {L"CB1", {L"size:12dp", L"@color\\style_skin_qv_text\\text_h2"}},
      {L"CB2", {L"size:14dp", L"@color\\style_skin_qv_text\\text_h1"}},
  };
  auto it = kTable.find(code);
  return it == kTable.end() ? nullptr : &it->second;
}

SStringW QVEscapeXml(const SStringW& text) {
  SStringW out;
  for (int i = 0; i < text.GetLength(); ++i) {
    const wchar_t c = text.GetAt(i);
    switch (c) {
      case L'&': out += L"&amp;"; break;
      case L'<': out += L"&lt;"; break;
      case L'>': out += L"&gt;"; break;
      case L'"': out += L"&quot;"; break;
      case L'\'': out += L"&apos;"; break;
      default: out += c;
    }
  }
  return out;
}

// ---- CQVStatic ------------------------------------------------------------------------

HRESULT CQVStatic::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVStatic> kAttrs[] = {{L"qvstyle", &CQVStatic::OnAttrQVStyle}};
  return QVDispatchAttribute<CQVStatic, SStaticMultiLines>(this, kAttrs, &TextAdmittedAttrs(), name, value,
                                                           loading);
}

HRESULT CQVStatic::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  return ApplyQVTextStyle(this, value, loading, &applied_);
}

// ---- CQVLink --------------------------------------------------------------------------

CQVLink::CQVLink() { GetEventSet()->addEvent(EventQVLinkClick::EventID, EventQVLinkClick::EventName()); }

HRESULT CQVLink::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVLink> kAttrs[] = {{L"qvstyle", &CQVLink::OnAttrQVStyle}};
  return QVDispatchAttribute<CQVLink, SLink>(this, kAttrs, &TextAdmittedAttrs(), name, value, loading);
}

HRESULT CQVLink::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  style_code_ = value;
  if (const QVLinkStyle* link = FindQVLinkStyle(value)) {
    SetAttribute(L"font", link->font, loading);
    hover_font_.Set(link->underline_font);
    return S_OK;
  }
  // A text code (the dialogs' "B2") brings its colour too; hovering then
  // underlines the plain font.
  hover_font_.Clear();
  return ApplyQVTextStyle(this, value, loading);
}

void CQVLink::OnPaint(IRenderTarget* rt) {
  const bool hover = (GetState() & WndState_Hover) != 0;
  COLORREF old_color = CR_INVALID;
  if (!GetStyle().HasTextColor()) {
    if (!link_color_.IsSet()) link_color_.Set(kLinkColor);
    if (link_color_.IsSet()) old_color = rt->SetTextColor(link_color_.Get());
  }
  if (hover && hover_font_.IsSet()) {
    // The hovered twin is already underlined: draw as a plain static would,
    // without SLink adding a second underline.
    IFontPtr old = rt->SelectFont(hover_font_.Get(GetScale()));
    SWindow::OnPaint(rt);
    rt->SelectFont(old);
  } else {
    SLink::OnPaint(rt);
  }
  if (old_color != CR_INVALID) rt->SetTextColor(old_color);
}

BOOL CQVLink::FireEvent(EventArgs& evt) {
  const bool own_click = evt.GetID() == EVT_CMD && evt.sender == this;
  const BOOL handled = SLink::FireEvent(evt);
  if (!own_click) return handled;
  EventQVLinkClick click(this);
  click.text = GetWindowText();
  return SLink::FireEvent(click) || handled;
}

// ---- CQVMultiLink ---------------------------------------------------------------------

HRESULT CQVMultiLink::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVMultiLink> kAttrs[] = {
      {L"qvstyle", &CQVMultiLink::OnAttrQVStyle},
      {L"text", &CQVMultiLink::OnAttrText},
      // Rich text always wraps and has no focus ring to extend; the names
      // stay accepted so that the dialogs' layouts load unchanged.
      {L"multiLines", &CQVMultiLink::OnAttrIgnored},
      {L"focusMoreContent", &CQVMultiLink::OnAttrIgnored},
  };
  return QVDispatchAttribute<CQVMultiLink, QVRichText>(this, kAttrs, &TextAdmittedAttrs(), name, value, loading);
}

HRESULT CQVMultiLink::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  return ApplyQVTextStyle(this, value, loading);
}

HRESULT CQVMultiLink::OnAttrText(const SStringW& value, BOOL loading) {
  SetPlainText(value);
  if (!loading) RequestRelayout();
  return S_OK;
}

HRESULT CQVMultiLink::OnAttrIgnored(const SStringW& value, BOOL loading) {
  (void)value;
  (void)loading;
  return S_FALSE;
}

void CQVMultiLink::SetPlainText(const SStringW& text) {
  Clear();
  if (text.IsEmpty()) return;
  SApplication* app = SApplication::getSingletonPtr();
  const SStringW shown = app ? app->tr(app->GetResProvider().ResolveString(text), SStringW()) : text;
  AppendContent(L"<RichEditContent><text>" + QVEscapeXml(shown) + L"</text></RichEditContent>");
}

// ---- CQVCheck / CQVRadio --------------------------------------------------------------

HRESULT CQVCheck::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVCheck> kAttrs[] = {{L"qvstyle", &CQVCheck::OnAttrQVStyle}};
  return QVDispatchAttribute<CQVCheck, SCheckBox>(this, kAttrs, &TextAdmittedAttrs(), name, value, loading);
}

HRESULT CQVCheck::OnAttrQVStyle(const SStringW& value, BOOL loading) { return ApplyCheckStyle(this, value, loading); }

HRESULT CQVRadio::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVRadio> kAttrs[] = {{L"qvstyle", &CQVRadio::OnAttrQVStyle}};
  return QVDispatchAttribute<CQVRadio, SRadioBox>(this, kAttrs, &TextAdmittedAttrs(), name, value, loading);
}

HRESULT CQVRadio::OnAttrQVStyle(const SStringW& value, BOOL loading) { return ApplyCheckStyle(this, value, loading); }

}  // namespace QVStandardCtrls
