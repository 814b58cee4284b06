// The text family: CQVStatic ("qv_text"), CQVLink ("qv_link"),
// CQVMultiLink ("qv_multilink"), CQVCheck ("qv_check") and CQVRadio
// ("qv_radio").
//
// Every member takes "qvstyle" and applies it at once, also while loading,
// so an explicit "font" or "colorText" standing after it in the XML wins:
//
//   control        qvstyle table               look it sets
//   qv_text        text styles (HR1, T2, ...)  font, colorText
//   qv_multilink   text styles                 font, colorText (runs without a style)
//   qv_link        link fonts (B1-B5);         font; underlined font while hovered
//                  then text styles            (a text code sets font and colour)
//   qv_check/radio check styles (CB1, CB2)     font, colorText
//
// Events (ids of the library, house names):
//   on_qvlink_click (29200)  qv_link clicked; carries the link's text
//   on_rdt_click             qv_multilink: a run with link data clicked
//   on_state_changed         qv_check/qv_radio: the Check bit changed
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "framework/style_tables.h"
#include "soui/checkctrls.h"
#include "soui/events.h"
#include "soui/qvrichtext.h"
#include "soui/themed.h"

namespace QVStandardCtrls {

constexpr int EVT_QV_LINK_CLICK = 29200;

// Raised after the toolkit's on_command when a qv_link is clicked.
class QVSTDCTRLS_API EventQVLinkClick : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QV_LINK_CLICK, L"on_qvlink_click")
 public:
  using SOUI::EventArgs::EventArgs;
  SOUI::SStringW text;  // the link's text as shown (translated)
};

// Check and radio looks: a font and a colour, as text styles are.
QVSTDCTRLS_API const QVTextStyle* FindQVCheckStyle(const SOUI::SStringW& code);

// A wrapping label over the extension's multi-line static.
class QVSTDCTRLS_API CQVStatic : public SOUI::SStaticMultiLines {
  SOUI_CLASS_NAME(CQVStatic, SOUI::SStaticMultiLines, L"qv_text")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  const QVTextStyle& GetAppliedStyle() const { return applied_; }

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);

 private:
  QVTextStyle applied_;
};

// A one-line link. Painted in the link colour unless "colorText" says
// otherwise; underlined while hovered (the link font's underlined twin, or
// the plain font underlined when the style is not a link font).
class QVSTDCTRLS_API CQVLink : public SOUI::SLink {
  SOUI_CLASS_NAME(CQVLink, SOUI::SLink, L"qv_link")
 public:
  CQVLink();
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;
  // Its own on_command is followed by on_qvlink_click.
  BOOL FireEvent(SOUI::EventArgs& evt) override;

  const SOUI::SStringW& GetQVStyle() const { return style_code_; }
  // The font description used while hovered (empty: underline the plain one).
  const SOUI::SStringW& GetHoverFont() const { return hover_font_.Source(); }

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);

 private:
  SOUI::SStringW style_code_;
  SOUI::ThemedFont hover_font_;
  SOUI::ThemedColor link_color_;
};

// Rich text whose paragraphs may hold links. "text" replaces the content
// with one plain paragraph; AppendParagraph adds a "<RichEditContent>"
// paragraph. A click on a run with link data raises on_rdt_click.
class QVSTDCTRLS_API CQVMultiLink : public SOUI::QVRichText {
  SOUI_CLASS_NAME(CQVMultiLink, SOUI::QVRichText, L"qv_multilink")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  // False (content unchanged, one log line) for XML that does not parse.
  bool AppendParagraph(const SOUI::SStringW& rich_edit_content) { return AppendContent(rich_edit_content); }
  // Replaces the content with the text as one paragraph (markup escaped).
  void SetPlainText(const SOUI::SStringW& text);

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrText(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrIgnored(const SOUI::SStringW& value, BOOL loading);
};

// A check box; IsChecked() reads its state.
class QVSTDCTRLS_API CQVCheck : public SOUI::SCheckBox {
  SOUI_CLASS_NAME(CQVCheck, SOUI::SCheckBox, L"qv_check")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
};

// A radio button; radios under one parent with the same "group" exclude
// each other.
class QVSTDCTRLS_API CQVRadio : public SOUI::SRadioBox {
  SOUI_CLASS_NAME(CQVRadio, SOUI::SRadioBox, L"qv_radio")
 public:
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
};

// Escapes &, <, >, " and ' for use inside rich-text XML.
QVSTDCTRLS_API SOUI::SStringW QVEscapeXml(const SOUI::SStringW& text);

}  // namespace QVStandardCtrls
