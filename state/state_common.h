// Internal to the state controls: the frame ticker they animate with and
// small helpers they share.
#pragma once

#include <functional>

#include "soui/sstring.h"

#include "soui/swnd.h"
#include "soui/timeline.h"

namespace QVStandardCtrls {

// A frame callback that hangs on the host's timeline only while a control
// animates and shows, so an idle or hidden control costs no frame.
class QVFrameTicker : public SOUI::ITimelineHandler {
 public:
  // on_frame runs once per frame and returns false to stop ticking.
  explicit QVFrameTicker(std::function<bool()> on_frame) : on_frame_(std::move(on_frame)) {}
  ~QVFrameTicker() override { Stop(); }
  QVFrameTicker(const QVFrameTicker&) = delete;
  QVFrameTicker& operator=(const QVFrameTicker&) = delete;

  // Registers on wnd's host; nothing without a host or when running.
  void Start(SOUI::SWindow* wnd);
  void Stop();
  bool IsRunning() const { return mgr_ != nullptr; }
  // Stops when the window left the host it registered on, before asking
  // on_frame: that host may be going.
  void OnNextFrame() override;

  // Whether wnd can be seen: it and its ancestors visible, in a host that
  // is shown.
  static bool IsShowing(const SOUI::SWindow* wnd);

 private:
  std::function<bool()> on_frame_;
  SOUI::SWindow* wnd_ = nullptr;
  SOUI::ITimelineHandlersMgr* mgr_ = nullptr;
};

// A duration or count attribute: a decimal or hex integer clamped into
// [lo, hi]; def when it does not parse.
int QVParseBoundedInt(const SOUI::SStringW& value, int def, int lo, int hi);

// c with its alpha scaled by alpha / 255.
COLORREF QVFadeColor(COLORREF c, int alpha);

// One warning line naming the control, the attribute and the value.
void QVLogBadValue(const SOUI::SWindow* wnd, const wchar_t* attr, const SOUI::SStringW& value);

}  // namespace QVStandardCtrls
