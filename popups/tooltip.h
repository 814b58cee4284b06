// CQVToolTip ("qv_tooltip"): an inline notice bar in the window tree. A
// coloured band with an optional icon on the left, a message, an optional
// link after it and an optional close button on the right:
//
//   | [icon]  message text message text  link |  [x] |
//     12dp    30dp with icon, else 12dp        -40dp with close, else -12dp
//
// Attributes:
//   qvstyle   "TD" (default), "TC" (caution), "TW" (warn): text and band
//             colours; an unknown code leaves them as they are
//   iconskin  skin of the icon, which then shows; empty is ignored (the icon
//             stays as it was)
//   closebtn  "0"/"false" hides the close button, anything else shows it
//   tiptext   the message
//   linktext  the link after the message (its colour and link data are fixed)
//   pos       placed as any window
// Each rebuilds only what it affects once the bar exists.
//
// Height: 28dp while the message (and link) fit on one line, 44dp from two
// lines on; the bar asks its parent for that height as the width changes.
//
// Events: "on_qvtooltip_link_clicked" (a click on the link run) and
// "on_qvtooltip_close_clicked" (a click on the close button). The bar never
// hides itself; the host decides.
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/events.h"
#include "soui/swnd.h"

namespace SOUI {
class QVRichText;
}

namespace QVStandardCtrls {

enum : int {
  EVT_QVTOOLTIP_LINK_CLICKED = 29110,
  EVT_QVTOOLTIP_CLOSE_CLICKED = 29111,
};

class QVSTDCTRLS_API EventQVToolTipLinkClicked : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTOOLTIP_LINK_CLICKED, L"on_qvtooltip_link_clicked")
 public:
  using EventArgs::EventArgs;
  SOUI::SStringW linkData;
};

class QVSTDCTRLS_API EventQVToolTipCloseClicked : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVTOOLTIP_CLOSE_CLICKED, L"on_qvtooltip_close_clicked")
 public:
  using EventArgs::EventArgs;
};

class QVSTDCTRLS_API CQVToolTip : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVToolTip, SOUI::SWindow, L"qv_tooltip")
 public:
  // The link run's fixed look and data, whatever the kind.
  static constexpr const wchar_t* kLinkColor = L"#4F9BFF";
  static constexpr const wchar_t* kLinkData = L"08182";

  CQVToolTip();

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  // Builds the inner tree from the template, then the common set-up.
  BOOL InitFromXml(pugi::xml_node node) override;
  // The width asked for (or the text's own), 28dp or 44dp high by lines.
  SOUI::CSize GetDesiredSize(int width, int height) override;

  const SOUI::SStringW& GetTextColor() const { return text_color_; }
  const SOUI::SStringW& GetBkgndColor() const { return bkgnd_color_; }
  int GetLineCount() const { return line_count_; }
  // The three paragraphs the rich text receives, in order.
  SOUI::SStringW TipParagraph() const;
  static SOUI::SStringW BlankParagraph();
  SOUI::SStringW LinkParagraph() const;

 protected:
  virtual void InitCommStyle();
  void ReBuildContent();
  void UpdateIconSkin();
  void UpdateLinkText();
  void UpdateCloseBtnVisible();
  void OnRichTextClick(SOUI::QVRichText* rich, int snippet_type, const SOUI::SStringW& link_data);

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrIconSkin(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrCloseBtn(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrTipText(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrLinkText(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrPos(const SOUI::SStringW& value, BOOL loading);

 private:
  // Places the text between icon and close button.
  void UpdateTextPos();
  bool Built() const { return text_link_ != nullptr; }

  SOUI::SStringW link_text_;
  SOUI::SStringW tip_text_;
  SOUI::SStringW text_color_;
  SOUI::SStringW bkgnd_color_;
  SOUI::SStringW icon_skin_;
  bool close_shown_ = false;
  bool icon_shown_ = false;
  int line_count_ = 0;
  SOUI::QVRichText* text_link_ = nullptr;
  SOUI::SWindow* root_ = nullptr;
  SOUI::SWindow* icon_ = nullptr;
  SOUI::SWindow* close_ = nullptr;
};

}  // namespace QVStandardCtrls
