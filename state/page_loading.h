// QVPageLoadingCtrl ("qv_pageloadingctrl"): a panel laid over a page's
// content while the page has nothing to show.
//
//   none      nothing shows; input reaches the page beneath
//   loading   a spinner (and the loading text, when there is one)
//   empty     a picture and the empty text
//   fail      a picture with a warning mark, the fail text and a refresh
//             button, whose click raises EventQVPageLoadingRefresh (29101)
// The three panel states cover the page and take its input. Their content
// stands as one block centred in the panel:
//
//   [spinner | picture]
//         12dp
//        text
//         16dp
//      [Refresh]        fail only
//
// The spinner waits for the show delay and stays its minimum time as the
// loading bars do (see QVStateGate); it turns on the host's timeline only
// while it can be seen.
//
// Attributes:
//   state        none | loading | empty | fail (any case); another word
//                changes nothing (logged)
//   qvstyle      PL1 (a page, default), PL2 (a smaller panel); another code
//                changes nothing (logged)
//   loadingtext, emptytext, failtext, refreshtext   the texts
//   emptyskin, failskin   skins drawn instead of the built-in pictures
//   showdelay, minshowtime   milliseconds (200, 400)
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "framework/style_tables.h"
#include "soui/events.h"
#include "soui/swnd.h"
#include "state/state_common.h"

namespace QVStandardCtrls {

class CQVButton;

enum EnQVPageLoadingState {
  QVPageLoading_None = 0,
  QVPageLoading_Loading = 1,
  QVPageLoading_Empty = 2,
  QVPageLoading_Fail = 3,
};

enum : int {
  EVT_QVPAGELOADING_REFRESH = 29101,
};

class QVSTDCTRLS_API EventQVPageLoadingRefresh : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVPAGELOADING_REFRESH, L"on_qvpageloading_refresh")
 public:
  using EventArgs::EventArgs;
};

class QVSTDCTRLS_API QVPageLoadingCtrl : public SOUI::SWindow {
  SOUI_CLASS_NAME(QVPageLoadingCtrl, SOUI::SWindow, L"qv_pageloadingctrl")
 public:
  QVPageLoadingCtrl();
  ~QVPageLoadingCtrl() override;

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;

  // A value outside the enumeration is logged and changes nothing.
  void SetPageState(int state);
  EnQVPageLoadingState GetPageState() const { return static_cast<EnQVPageLoadingState>(gate_.Requested()); }
  EnQVPageLoadingState GetShownState() const { return shown_; }
  bool IsAnimating() const { return ticker_.IsRunning(); }
  const QVPageLoadingCtrlStylePtr& GetStyleInfo() const { return style_info_; }
  CQVButton* GetRefreshButton() const { return refresh_; }

  // The spinner's or picture's square (host coordinates; empty for none).
  SOUI::CRect GetGraphicRect() const;
  // The text line under it (empty without a text).
  SOUI::CRect GetTextRect() const;
  // The lit dot of the spinner now (0-11, turning clockwise).
  int GetSpinnerStep() const;

  void OnEraseBkgnd(SOUI::IRenderTarget* rt) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;
  void UpdateChildrenPosition() override;
  SOUI::SWindow* SwndFromPoint(SOUI::CPoint pt, BOOL include_msg_transparent = FALSE) override;
  void OnTimer(int id) override;
  void OnShowWindow(BOOL show, UINT status) override;
  int OnCreate() override;
  void OnDestroy() override;

 protected:
  HRESULT OnAttrState(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  // A text under the picture: stored; the block is placed again.
  template <SOUI::SStringW QVPageLoadingCtrl::*Text>
  HRESULT OnAttrText(const SOUI::SStringW& value, BOOL loading) {
    (void)loading;
    this->*Text = value;
    RequestRelayout();
    return S_OK;
  }
  HRESULT OnAttrRefreshText(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrEmptySkin(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrFailSkin(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrShowDelay(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMinShowTime(const SOUI::SStringW& value, BOOL loading);

 private:
  struct Block {
    SOUI::CRect graphic, text, button;
  };
  // Where the parts go for the shown state.
  Block LayoutBlock() const;
  const SOUI::SStringW& Text() const;
  void Show(int state);
  void ApplyStyle(const QVPageLoadingCtrlStylePtr& rec);
  void DrawSpinner(SOUI::IRenderTarget* rt, const SOUI::CRect& rc) const;
  // The built-in pictures: an empty list card; with the mark, a failed one.
  void DrawPicture(SOUI::IRenderTarget* rt, const SOUI::CRect& rc, bool failed) const;

  EnQVPageLoadingState shown_ = QVPageLoading_None;
  QVStateGate gate_;
  SOUI::SStringW loading_text_;
  SOUI::SStringW empty_text_ = L"No data";
  SOUI::SStringW fail_text_ = L"Failed to load";
  QVPageLoadingCtrlStylePtr style_info_;
  SOUI::ThemedColor bkgnd_, spinner_, picture_line_, picture_fill_, fail_color_;
  SOUI::ThemedSkin empty_skin_, fail_skin_;
  CQVButton* refresh_ = nullptr;
  QVFrameTicker ticker_;
};

}  // namespace QVStandardCtrls
