// Loading bars: QVTopLoadingBar ("qv_toploadingbar") and QVBottomLoadingBar
// ("qv_bottomloadingbar"), a thin strip along the top or bottom edge of a
// panel that tells how the panel's data is doing.
//
//   empty     nothing shows; input passes through
//   loading   a segment sweeps along the edge line, over and over
//   complete  the whole line, fading out by itself; then empty
//   remind    a band with a message and a clickable part ("Refresh")
//   fail      a band with a message and a clickable part ("Retry")
// Only the band states take input; a click on the clickable part raises
// EventQVLoadingBarClick (29100) with the state shown.
//
// Timing (all on the application clock):
//   showdelay    a load that ends within this time never shows the line
//                (200 ms); a "complete" before it shows nothing at all
//   minshowtime  once shown, the line stays at least this long (400 ms);
//                a later state waits for it
//   fadetime     length of the complete fade (400 ms)
// The sweep and the fade repaint from the host's timeline only while the bar
// can be seen; timers alone move the states, so a hidden bar still ends up
// where it should.
//
// Attributes:
//   state        empty | remind | loading | complete | fail (any case);
//                another word changes nothing (logged)
//   qvstyle      LB1 (2dp line, default), LB2 (3dp line); another code
//                changes nothing (logged)
//   remindtext, remindlink   the remind band's message and clickable part
//   failtext, faillink       the fail band's
//   showdelay, minshowtime, fadetime   milliseconds, as above
// The band is as tall as the bar (28dp when the layout does not say).
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "framework/style_tables.h"
#include "soui/events.h"
#include "soui/swnd.h"
#include "state/state_common.h"

namespace QVStandardCtrls {

enum EnQVLoadingBarState {
  QVLoadingBar_Empty = 0,
  QVLoadingBar_Remind = 1,
  QVLoadingBar_Loading = 2,
  QVLoadingBar_Complete = 3,
  QVLoadingBar_Fail = 4,
};

// "empty", "remind", ...; false for another word (any case accepted).
QVSTDCTRLS_API bool ParseQVLoadingBarState(const SOUI::SStringW& word, EnQVLoadingBarState* out);
QVSTDCTRLS_API const wchar_t* QVLoadingBarStateName(EnQVLoadingBarState state);

enum : int {
  EVT_QVLOADINGBAR_CLICK = 29100,
};

class QVSTDCTRLS_API EventQVLoadingBarClick : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVLOADINGBAR_CLICK, L"on_qvloadingbar_click")
 public:
  using EventArgs::EventArgs;
  int state = QVLoadingBar_Empty;  // remind or fail
};

// What both bars share; the edge is the only difference.
class QVSTDCTRLS_API QVLoadingBarBase : public SOUI::SWindow {
 public:
  static constexpr int kFadeTimer = 3;

  QVLoadingBarBase();
  ~QVLoadingBarBase() override;

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;

  // Asks for a state (see the header for delays). Unchanged: no-op; a value
  // outside the enumeration: logged, no change.
  void SetLoadingState(int state);
  // The state last asked for (empty again once a complete faded).
  EnQVLoadingBarState GetLoadingState() const { return static_cast<EnQVLoadingBarState>(gate_.Requested()); }
  // The state on screen, which lags behind during delays.
  EnQVLoadingBarState GetShownState() const { return shown_; }
  bool IsAnimating() const { return ticker_.IsRunning(); }
  const QVLoadingBarStylePtr& GetStyleInfo() const { return style_info_; }

  // Where the clickable part of the band is (empty outside remind/fail).
  SOUI::CRect GetLinkRect() const;
  // The edge line (loading, complete) in host coordinates.
  SOUI::CRect GetLineRect() const;
  // The sweeping segment at the current time (loading only).
  SOUI::CRect GetSegmentRect() const;

  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnEraseBkgnd(SOUI::IRenderTarget* rt) override;
  SOUI::SWindow* SwndFromPoint(SOUI::CPoint pt, BOOL include_msg_transparent = FALSE) override;
  SOUI::SStringW GetCursorName(SOUI::CPoint pt) const override;
  void OnLButtonDown(UINT flags, SOUI::CPoint pt) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;
  void OnTimer(int id) override;
  void OnShowWindow(BOOL show, UINT status) override;
  int OnCreate() override;
  void OnDestroy() override;

 protected:
  virtual bool AtBottom() const = 0;
  SOUI::CSize MeasureContent(int width) override;

  HRESULT OnAttrState(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  // A text of the bands: stored and repainted.
  template <SOUI::SStringW QVLoadingBarBase::*Text>
  HRESULT OnAttrText(const SOUI::SStringW& value, BOOL loading) {
    (void)loading;
    this->*Text = value;
    Invalidate();
    return S_OK;
  }
  HRESULT OnAttrShowDelay(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMinShowTime(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrFadeTime(const SOUI::SStringW& value, BOOL loading);

 private:
  bool IsBand() const { return shown_ == QVLoadingBar_Remind || shown_ == QVLoadingBar_Fail; }
  const SOUI::SStringW& Message() const { return shown_ == QVLoadingBar_Fail ? fail_text_ : remind_text_; }
  const SOUI::SStringW& Link() const { return shown_ == QVLoadingBar_Fail ? fail_link_ : remind_link_; }
  // The gate moved the screen.
  void Show(int state);
  void ApplyStyle(const QVLoadingBarStylePtr& rec);
  // The message and link widths in the window's font.
  SOUI::CSize TextExtent(const SOUI::SStringW& text) const;

  EnQVLoadingBarState shown_ = QVLoadingBar_Empty;
  QVStateGate gate_;
  uint32_t fade_start_ = 0;
  bool press_on_link_ = false;
  int fade_time_ = 400;
  SOUI::SStringW remind_text_ = L"New data is available";
  SOUI::SStringW remind_link_ = L"Refresh";
  SOUI::SStringW fail_text_ = L"Loading failed";
  SOUI::SStringW fail_link_ = L"Retry";
  QVLoadingBarStylePtr style_info_;
  SOUI::ThemedColor line_color_, track_color_, remind_bkgnd_, fail_bkgnd_, link_color_;
  QVFrameTicker ticker_;
};

class QVSTDCTRLS_API QVTopLoadingBar : public QVLoadingBarBase {
  SOUI_CLASS_NAME(QVTopLoadingBar, SOUI::SWindow, L"qv_toploadingbar")
 protected:
  bool AtBottom() const override { return false; }
};

class QVSTDCTRLS_API QVBottomLoadingBar : public QVLoadingBarBase {
  SOUI_CLASS_NAME(QVBottomLoadingBar, SOUI::SWindow, L"qv_bottomloadingbar")
 protected:
  bool AtBottom() const override { return true; }
};

}  // namespace QVStandardCtrls
