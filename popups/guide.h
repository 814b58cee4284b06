// The guide: a sequence of bubbles, each pointing with its tail at one window
// of an owner host and saying what it is for, with "previous", "next" (or
// "done" on the last step) and a close button.
//
// The host calls IQVGuide::Start with the steps. The library keeps one guide
// per owner; a second Start on the same owner replaces the running guide
// (which ends with EVT_QVGUIDE_SKIPPED, reason Replaced). The bubble is a
// popup window owned by the owner host, shown without activation, so the
// owner keeps the keyboard; the guide watches the owner's keys:
//   Esc     skips the guide (as the close button does)
//   Enter   goes on: the next step, or done on the last one
// Every other key and every click reach the owner as usual; the guide is a
// hint, not a modal dialog.
//
// Steps (QVGuideStep):
//   anchor      the name of a window in the owner's tree; looked up again
//               every time the bubble is placed, so the guide never holds a
//               window that may go away
//   title       one bold line (wraps when long)
//   text        the explanation; wraps
//   image_skin  optional picture above the title, fitted to the bubble's
//               width keeping its proportions (at most kImageMaxH dp high)
//
// Placement: the first side with room for the bubble, in the order below,
// above, right, left of the anchor; when none has room, the side with the
// most. The bubble is centred on the anchor along that side, then kept
// inside the owner's window (kMargin dp off its edges). The tail stands on
// the edge facing the anchor and points at the anchor's middle, kept clear
// of the bubble's rounded corners. The bubble follows the anchor: at once
// when the owner moves or resizes, and within kFollowMs when the layout
// moves the anchor or the zoom changes. It hides while the owner is hidden.
//
//        anchor
//          ^            tail: kTail dp long, 2 * kTail wide at its base,
//      +--/ \--------------+  kGap dp short of the anchor's edge
//      | Title            x |
//      | text ...           |
//      | 2/3  [Prev] [Next] |
//      +--------------------+
//
// Events (fired on the owner host's root, so the host's event map and the
// root's subscribers see them; nameFrom is "qvguide"; AddEvents declares
// them on the root for subscribing before the first Start):
//   EVT_QVGUIDE_STEP_CHANGED  a step is shown: the first one on Start, then
//                             each move (step, previous: -1 on Start)
//   EVT_QVGUIDE_FINISHED      "done" on the last step (step: the last)
//   EVT_QVGUIDE_SKIPPED       the guide ended any other way (step: the step
//                             showing, reason says how)
// A host remembers the guide was seen on either end event. When the owner
// host itself is destroyed the guide ends without an event: nothing is left
// to receive it.
//
// Bad input, each answered with a clear result and one log line:
//   null or dead owner, an empty step list, a first step out of range,
//   no step whose anchor exists      Start returns false, nothing shows
//   a step whose anchor is missing   passed over in the direction of travel
//                                    (forward from Start and "next",
//                                    backward from "previous"); "next"
//                                    with no later step that can show
//                                    finishes the guide
//   the anchor destroyed (or hidden) while its step shows
//                                    the guide moves on to the next step
//                                    with an anchor; past the last one it
//                                    ends with SKIPPED, reason AnchorLost
//   the bubble's window destroyed by someone else
//                                    the guide ends with SKIPPED, reason
//                                    Stopped
//
// Look: colours from the theme table style_qv_guide (bg, border, shadow,
// title, text, counter, close, close_hover, button_bg, button_text,
// button_hover, secondary_border, secondary_text, secondary_hover; the
// shadow's alpha is that of each of its stacked rings), sizes in dp at the
// application zoom, strings @string\qvguide_prev, qvguide_next,
// qvguide_done.
#pragma once

#include <memory>
#include <vector>

#include "framework/qv_export.h"
#include "soui/events.h"
#include "soui/hostwnd.h"

namespace QVStandardCtrls {

enum : int {
  EVT_QVGUIDE_STEP_CHANGED = 29120,
  EVT_QVGUIDE_FINISHED = 29121,
  EVT_QVGUIDE_SKIPPED = 29122,
};

struct QVSTDCTRLS_API QVGuideStep {
  SOUI::SStringW anchor;
  SOUI::SStringW title;
  SOUI::SStringW text;
  SOUI::SStringW image_skin;
};

// How a guide ended without "done".
enum class EnQVGuideSkip {
  User,        // the close button or Esc
  AnchorLost,  // the anchor went and no later step had one
  Replaced,    // a second Start on the same owner
  Stopped,     // IQVGuide::Stop
};

class QVSTDCTRLS_API EventQVGuideStepChanged : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVGUIDE_STEP_CHANGED, L"on_qvguide_step_changed")
 public:
  using EventArgs::EventArgs;
  int step = 0;
  int previous = -1;
  int count = 0;
};

class QVSTDCTRLS_API EventQVGuideFinished : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVGUIDE_FINISHED, L"on_qvguide_finished")
 public:
  using EventArgs::EventArgs;
  int step = 0;
  int count = 0;
};

class QVSTDCTRLS_API EventQVGuideSkipped : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVGUIDE_SKIPPED, L"on_qvguide_skipped")
 public:
  using EventArgs::EventArgs;
  int step = 0;
  int count = 0;
  EnQVGuideSkip reason = EnQVGuideSkip::User;
};

// The side of the anchor the bubble stands on.
enum class EnQVGuideSide { Below, Above, Right, Left };

// The parts of a bubble a click can reach.
enum class EnQVGuidePart { None, Close, Previous, Next };

class CQVGuideView;

// The bubble's window: a popup owned by the owner host. Made and destroyed by
// the guide; hosts and tests reach it through IQVGuide::GetGuideWnd.
class QVSTDCTRLS_API CQVGuideWnd : public SOUI::SHostWnd {
 public:
  CQVGuideWnd();
  ~CQVGuideWnd() override;
  bool IsPopupWindow() const override { return true; }

  // Where the bubble stands now, in screen coordinates.
  SOUI::CRect GetBubbleRect() const;
  // The tail's point, in screen coordinates.
  SOUI::CPoint GetTailTip() const;
  EnQVGuideSide GetSide() const;
  // A part's rectangle in this window's client coordinates (empty when the
  // step does not show it: no "previous" on the first step).
  SOUI::CRect GetPartRect(EnQVGuidePart part) const;

 private:
  friend class QVGuideRun;
  CQVGuideView* view_ = nullptr;
};

class QVSTDCTRLS_API IQVGuide {
 public:
  // Sizes in dp.
  static constexpr int kBubbleW = 296;
  static constexpr int kMargin = 8;
  static constexpr int kTail = 8;
  static constexpr int kGap = 2;
  static constexpr int kImageMaxH = 120;
  // How often the bubble checks whether its anchor moved.
  static constexpr unsigned kFollowMs = 50;

  // Starts steps on owner at step first, replacing a guide already running
  // there. False (and a log line) for a dead owner, no steps, first out of
  // range or no step with an anchor from first on.
  static bool Start(HWND owner, const std::vector<QVGuideStep>& steps, int first = 0);
  // Ends owner's guide as skipped (reason Stopped); nothing when none runs.
  static void Stop(HWND owner);
  // "next" and "previous" as the buttons do; false when no guide runs or
  // there is no previous step.
  static bool Next(HWND owner);
  static bool Previous(HWND owner);

  static bool IsRunning(HWND owner);
  // The step showing, -1 when no guide runs on owner.
  static int GetStep(HWND owner);
  // The bubble of owner's guide; null when none runs.
  static CQVGuideWnd* GetGuideWnd(HWND owner);
  // Owners with a running guide (tests, soak).
  static size_t RunningCount();
  // Declares the guide's events on wnd so that they can be subscribed to
  // there; Start does it for the owner's root.
  static void AddEvents(SOUI::SWindow* wnd);
};

}  // namespace QVStandardCtrls
