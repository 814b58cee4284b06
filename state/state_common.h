// Internal to the state controls: the frame ticker they animate with and
// small helpers they share.
#pragma once

#include <functional>

#include "framework/qv_export.h"
#include "soui/render.h"
#include "soui/sstring.h"

#include "soui/swnd.h"
#include "soui/timeline.h"

namespace QVStandardCtrls {

// Repaints a control every frame from the host's timeline, registered only
// while the control animates and can be seen, so an idle or hidden control
// costs no frame. The control calls Update after anything that may change
// either (its state, OnShowWindow, OnCreate, OnPaint: a paint is the first
// sign that a hidden ancestor showed again) and Stop in OnDestroy.
// Exported: the sanitizer build checks its dynamic type in the tests.
class QVSTDCTRLS_API QVFrameTicker : public SOUI::ITimelineHandler {
 public:
  // animating: whether the control has something moving, visibility aside.
  explicit QVFrameTicker(std::function<bool()> animating) : animating_(std::move(animating)) {}
  ~QVFrameTicker() override { Stop(); }
  QVFrameTicker(const QVFrameTicker&) = delete;
  QVFrameTicker& operator=(const QVFrameTicker&) = delete;

  // Registers on wnd's host when wnd animates and shows; stops otherwise.
  void Update(SOUI::SWindow* wnd);
  void Stop();
  bool IsRunning() const { return mgr_ != nullptr; }
  // Stops when the window left the host it registered on (that host may be
  // going), stopped animating or cannot be seen; otherwise repaints it.
  void OnNextFrame() override;

  // Whether wnd can be seen: it and its ancestors visible, in view of every
  // scroll view around it, in a host that is shown.
  static bool IsShowing(const SOUI::SWindow* wnd);

 private:
  bool Wanted(const SOUI::SWindow* wnd) const { return animating_ && animating_() && IsShowing(wnd); }

  std::function<bool()> animating_;
  SOUI::SWindow* wnd_ = nullptr;
  SOUI::ITimelineHandlersMgr* mgr_ = nullptr;
};

// The show delay and minimum showing time of a busy state (a spinner, a
// loading line), for a control that shows one state at a time:
//   asked busy       the idle state shows at once, busy after show_delay
//                    (at once when 0); asked something else meanwhile, busy
//                    never shows
//   busy shown       it stays min_show ms; a state asked earlier waits, the
//                    latest one asked wins, and busy asked again cancels it
//   anything else    shows at once
// Timers are the window's (ids kDelayTimer and kMinShowTimer), so a
// destroyed window takes them along.
class QVSTDCTRLS_API QVStateGate {
 public:
  static constexpr int kDelayTimer = 0x51A1;
  static constexpr int kMinShowTimer = 0x51A2;

  // show(state) is called whenever the shown state changes.
  QVStateGate(SOUI::SWindow* wnd, int busy, int idle, std::function<void(int)> show);
  void Request(int state);
  // For the control's own moves (a fade that ended): shown and asked at once.
  void Force(int state);
  // True when id was one of the gate's timers.
  bool OnTimer(int id);
  int Requested() const { return requested_; }
  int Shown() const { return shown_; }
  // When busy last showed (the application clock).
  uint32_t BusySince() const { return busy_since_; }

  int show_delay = 200;
  int min_show = 400;

 private:
  void Apply();
  void SetShown(int state);

  SOUI::SWindow* wnd_;
  int busy_, idle_;
  std::function<void(int)> show_;
  int requested_, shown_;
  uint32_t busy_since_ = 0;
  bool min_wait_ = false;
};

// The part of line an indeterminate sweep covers elapsed ms after it
// started: a segment 3/10 of the line wide, eased from just off the left end
// to just off the right one every period ms, clipped to the line.
SOUI::CRect QVSweepSegment(const SOUI::CRect& line, uint32_t elapsed, uint32_t period);

// Runs fill with a solid brush of colour c selected, then puts the old
// brush back; WithPen does the same with a solid pen.
template <class Fn>
void QVWithBrush(SOUI::IRenderTarget* rt, COLORREF c, Fn fill) {
  SOUI::IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(c));
  fill();
  rt->SelectBrush(old);
}

template <class Fn>
void QVWithPen(SOUI::IRenderTarget* rt, COLORREF c, int width, Fn draw, int style = SOUI::PS_SOLID) {
  SOUI::IPenPtr old = rt->SelectPen(rt->CreatePen(style, c, width < 1 ? 1 : width));
  draw();
  rt->SelectPen(old);
}

// A duration or count attribute: a decimal or hex integer clamped into
// [lo, hi]; def when it does not parse.
int QVParseBoundedInt(const SOUI::SStringW& value, int def, int lo, int hi);

// c with its alpha scaled by alpha / 255.
COLORREF QVFadeColor(COLORREF c, int alpha);

}  // namespace QVStandardCtrls
