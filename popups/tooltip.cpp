#include "popups/tooltip.h"

#include <algorithm>
#include <map>

#include "qvhost/zoom.h"
#include "soui/qvrichtext.h"
#include "templates/popup_templates.h"

namespace QVStandardCtrls {

using SOUI::CSize;
using SOUI::SStringW;

namespace {

struct ToolTipKind {
  const wchar_t* text_color;
  const wchar_t* bkgnd_color;
};

// The bar's own kinds, filled once.
const std::map<SStringW, ToolTipKind>& ToolTipKinds() {
  static const std::map<SStringW, ToolTipKind> kinds = {
      {L"TD", {L"@color\\style_qv_tooltip\\skin_text_tips_default", L"@color\\style_qv_tooltip\\skin_bg_tips_default"}},
      {L"TC", {L"@color\\style_qv_tooltip\\skin_text_tips_caution", L"@color\\style_qv_tooltip\\skin_bg_tips_caution"}},
      {L"TW", {L"@color\\style_qv_tooltip\\skin_text_tips_warn", L"@color\\style_qv_tooltip\\skin_bg_tips_warn"}},
  };
  return kinds;
}

// Heights of the bar for one line and for more.
constexpr int kOneLineHeight = 28;
constexpr int kTallHeight = 44;

}  // namespace

CQVToolTip::CQVToolTip() {
  const ToolTipKind& td = ToolTipKinds().at(L"TD");
  text_color_ = td.text_color;
  bkgnd_color_ = td.bkgnd_color;
  GetEventSet()->addEvent(EventQVToolTipLinkClicked::EventID, EventQVToolTipLinkClicked::EventName());
  GetEventSet()->addEvent(EventQVToolTipCloseClicked::EventID, EventQVToolTipCloseClicked::EventName());
}

HRESULT CQVToolTip::SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) {
  static const QVAttrEntry<CQVToolTip> kAttrs[] = {
      {L"qvstyle", &CQVToolTip::OnAttrQVStyle},   {L"iconskin", &CQVToolTip::OnAttrIconSkin},
      {L"closebtn", &CQVToolTip::OnAttrCloseBtn}, {L"tiptext", &CQVToolTip::OnAttrTipText},
      {L"linktext", &CQVToolTip::OnAttrLinkText}, {L"pos", &CQVToolTip::OnAttrPos, true},
  };
  static const QVAdmittedAttrs kAdmitted = {};
  return QVDispatchAttribute<CQVToolTip, SOUI::SWindow>(this, kAttrs, &kAdmitted, name, value, loading);
}

BOOL CQVToolTip::InitFromXml(pugi::xml_node node) {
  const BOOL result = SWindow::InitFromXml(node);
  if (!Built()) {
    CreateChildren(kQVToolTipXml);
    root_ = FindChildByName(L"tooltiproot");
    icon_ = FindChildByName(L"icon");
    close_ = FindChildByName(L"close");
    text_link_ = FindChildByName2<SOUI::QVRichText>(L"text_link");
    if (close_) {
      close_->subscribeEvent(SOUI::EVT_CMD, [this](SOUI::EventArgs*) {
        EventQVToolTipCloseClicked evt(this);
        FireEvent(evt);
        return true;
      });
    }
    InitCommStyle();
  }
  return result;
}

void CQVToolTip::InitCommStyle() {
  SWindow::SetAttribute(L"colorBkgnd", bkgnd_color_, FALSE);
  UpdateIconSkin();
  UpdateCloseBtnVisible();
  UpdateTextPos();
  if (text_link_) {
    text_link_->SetClickCallback([this](int type, const SStringW& data) { OnRichTextClick(text_link_, type, data); });
  }
  ReBuildContent();
}

SStringW CQVToolTip::TipParagraph() const {
  return SStringW::Format2(
      L"<RichEditContent><text name=\"tip\" color=\"%s\" font=\"size:12dp\" >%s</text></RichEditContent>",
      text_color_.c_str(), tip_text_.c_str());
}

SStringW CQVToolTip::BlankParagraph() {
  return L"<RichEditContent><text name=\"blank\" font=\"size:12dp\">&#160;&#160;</text></RichEditContent>";
}

SStringW CQVToolTip::LinkParagraph() const {
  return SStringW::Format2(
      L"<RichEditContent><text name=\"link\" color=\"%s\" cursor=\"hand\" link-data=\"%s\" font=\"size:12dp\">%s"
      L"</text></RichEditContent>",
      kLinkColor, kLinkData, link_text_.c_str());
}

void CQVToolTip::ReBuildContent() {
  if (!text_link_) return;
  text_link_->Clear();
  text_link_->SetAttribute(L"colorBkgnd", bkgnd_color_, FALSE);
  // Texts go into the markup as given, as the published paragraphs do; one
  // that breaks the XML loses its paragraph (logged by the rich text).
  text_link_->AppendContent(TipParagraph());
  text_link_->AppendContent(BlankParagraph());
  text_link_->AppendContent(LinkParagraph());
  RequestRelayout();
}

void CQVToolTip::UpdateIconSkin() {
  if (!icon_ || icon_skin_.IsEmpty()) return;
  icon_->SetAttribute(L"skin", icon_skin_, FALSE);
  icon_->SetVisible(TRUE, TRUE);
}

void CQVToolTip::UpdateLinkText() { ReBuildContent(); }

void CQVToolTip::UpdateCloseBtnVisible() {
  if (!close_) return;
  // The mark takes the message colour so that it reads on every band.
  close_->SetAttribute(L"colorText", text_color_, FALSE);
  close_->SetVisible(close_shown_ ? TRUE : FALSE, TRUE);
}

void CQVToolTip::UpdateTextPos() {
  if (!text_link_) return;
  text_link_->SetAttribute(L"pos",
                           SStringW::Format2(L"%s, 0dp, %s, -0dp", icon_shown_ ? L"30dp" : L"12dp",
                                             close_shown_ ? L"-40dp" : L"-12dp"),
                           FALSE);
}

void CQVToolTip::OnRichTextClick(SOUI::QVRichText* rich, int snippet_type, const SStringW& link_data) {
  (void)rich;
  (void)snippet_type;
  EventQVToolTipLinkClicked evt(this);
  evt.linkData = link_data;
  FireEvent(evt);
}

CSize CQVToolTip::GetDesiredSize(int width, int height) {
  if (!Built()) return SWindow::GetDesiredSize(width, height);
  const SOUI::SouiLayoutParam* lp = GetLayoutParam();
  const int scale = GetScale();
  int bar_w = -1;
  if (lp->IsSpecifiedSize(SOUI::Orientation::Horz)) {
    bar_w = lp->GetSpecifiedSize(SOUI::Orientation::Horz).toPixelSize(scale);
  } else if (width >= 0) {
    bar_w = width;
  }
  // The text's share of the bar: the paddings, plus room for the close
  // button and the icon when they show.
  const int extra = ZPixel(24) + (close_shown_ ? ZPixel(28) : 0) + (icon_shown_ ? ZPixel(20) : 0);
  const int text_w = bar_w >= 0 ? std::max(1, bar_w - extra) : -1;
  const int lines = text_link_->GetLineCount(text_w);
  if (lines != line_count_) {
    line_count_ = lines;
    if (root_) {
      root_->SetAttribute(L"pos", lines <= 1 ? L"0dp,0dp,-0dp,@28dp" : L"0dp,0dp,-0dp,@44dp", FALSE);
    }
  }
  if (bar_w < 0) bar_w = text_link_->GetContentWidth(-1) + extra;
  int bar_h = ZPixel(line_count_ <= 1 ? kOneLineHeight : kTallHeight);
  if (lp->IsSpecifiedSize(SOUI::Orientation::Vert)) {
    bar_h = lp->GetSpecifiedSize(SOUI::Orientation::Vert).toPixelSize(scale);
  }
  (void)height;
  return CSize(bar_w, bar_h);
}

HRESULT CQVToolTip::OnAttrQVStyle(const SStringW& value, BOOL loading) {
  (void)loading;
  auto it = ToolTipKinds().find(value);
  if (it == ToolTipKinds().end()) {
    QVLogBadValue(this, L"qvstyle", value);
    return S_OK;
  }
  text_color_ = it->second.text_color;
  bkgnd_color_ = it->second.bkgnd_color;
  if (Built()) {
    SWindow::SetAttribute(L"colorBkgnd", bkgnd_color_, FALSE);
    UpdateCloseBtnVisible();
    ReBuildContent();
  }
  return S_OK;
}

HRESULT CQVToolTip::OnAttrIconSkin(const SStringW& value, BOOL loading) {
  (void)loading;
  if (value.IsEmpty()) return S_OK;
  icon_skin_ = value;
  icon_shown_ = true;
  if (Built()) {
    UpdateIconSkin();
    UpdateTextPos();
    RequestRelayout();
  }
  return S_OK;
}

HRESULT CQVToolTip::OnAttrCloseBtn(const SStringW& value, BOOL loading) {
  (void)loading;
  close_shown_ = QVParseBool(value);
  if (Built()) {
    UpdateCloseBtnVisible();
    UpdateTextPos();
    RequestRelayout();
  }
  return S_OK;
}

HRESULT CQVToolTip::OnAttrTipText(const SStringW& value, BOOL loading) {
  (void)loading;
  tip_text_ = value;
  if (Built()) ReBuildContent();
  return S_OK;
}

HRESULT CQVToolTip::OnAttrLinkText(const SStringW& value, BOOL loading) {
  (void)loading;
  link_text_ = value;
  if (Built()) UpdateLinkText();
  return S_OK;
}

HRESULT CQVToolTip::OnAttrPos(const SStringW& value, BOOL loading) {
  (void)value;
  (void)loading;
  return S_OK;
}

}  // namespace QVStandardCtrls
