// The toast: a short message with an icon that slides down from the top edge
// of an owner window, stays a while and slides back up.
//
// The host calls IQVToast::TrackPopupToast. The library keeps one toast
// window per owner (ms_mapToastWnd) and restarts it for every later toast of
// that owner, whatever state it is in. The window is disabled as soon as it
// exists, so it never takes input, and is shown without activation.
//
// Timeline of one toast (ticks of 20 ms; p is the slide progress):
//
//   start ── show timer 123 ──> p = 0, .488, .784, .936, .992, 1
//         ── stay timer 124 (stay time, 0 allowed) ──>
//         ── hide timer 125 ──> p = .992, .936, .784, .488, 0 ── hidden
//
// Placement over the owner's rectangle R (m = top margin, d = slide distance,
// h = toast height):
//
//   y = m + (d + h - 2m) * p - h
//   y < 1:  window top = R.top, content shifted up inside it by the element
//           offset y / (h - 2m) (only its lower part shows)
//   else:   window top = R.top + y
//   centred on R horizontally; the caller's vertical offset added to the top.
//
// Size (pixels at 100 %, scaled by the zoom): paddings 12 | icon 24 | 8 |
// text | 12, the text 56 to 334 wide (wider text wraps); 40 high for one line,
// 51 or what the lines need when wrapped, plus the top margin above and below.
//
// Two opt-in options (IQVToast::SetToastOptions; both off by default):
//   pause on hover  the window takes the mouse (never the focus) and its stay
//                   time runs only while the mouse is elsewhere
//   coalesce        the same text and icon again while the toast is up shows
//                   once with a count ("Order filled ×3") and starts its stay
//                   again, sliding back in if it was leaving, instead of
//                   restarting from the top
//
// An entry never outlives its owner: the registry listens for destroyed
// handles and drops the owner's toast, so a later window that happens to get
// the same handle value starts afresh.
#pragma once

#include <map>
#include <memory>

#include "framework/ctrl_attr_base.h"
#include "soui/hostwnd.h"

namespace QVStandardCtrls {

enum EnQVToastIconType {
  QVToastIcon_Tip = 1,
  QVToastIcon_Warning = 2,
  QVToastIcon_Success = 3,
  QVToastIcon_Error = 4,
};

struct QVSTDCTRLS_API QVToastOptions {
  bool pause_on_hover = false;
  bool coalesce = false;
};

class QVSTDCTRLS_API CQVToastWnd : public SOUI::SHostWnd {
 public:
  static constexpr int kShowTimerId = 123;
  static constexpr int kStayTimerId = 124;
  static constexpr int kHideTimerId = 125;

  CQVToastWnd();
  ~CQVToastWnd() override;

  // Creates the window from "LAYOUT:qvtoast" at (0, 0) with owner as its
  // owner. Null when the layout cannot be had.
  HWND CreateForOwner(HWND owner);
  // Back to the per-call defaults: stay 2000 ms, no offset, tip icon, no
  // skin, no text.
  void ResetToastSetting();
  void SetIconType(int type);
  // Empty stands for "skin_toast_bg".
  void SetIconSkin(const SOUI::SStringW& skin);
  void SetText(const SOUI::SStringW& text) { text_ = text; }
  void SetVerticalOffset(int px) { offset_y_ = px; }
  void SetStayTime(unsigned int ms) { stay_time_ = ms; }

  // Hides a running toast (timers killed) and slides this one in.
  void Start();
  // Off the screen at once, timers killed.
  void Hide();
  // Places the window for the current progress over the owner.
  void Reposition();
  void OnTimer(int id) override;
  // With coalescing: counts a repeat of the toast that is up (same icon and
  // text) and keeps it up. False when the toast is hidden or differs.
  bool Coalesce(bool use_type, int type, const SOUI::SStringW& icon_skin, const SOUI::SStringW& text);
  void SetOptions(const QVToastOptions& options);
  // Repeats counted by coalescing (1: shown once).
  int GetRepeatCount() const { return repeat_; }

  // Ease-out cubic of step / steps, 0 at step 0 and 1 at the last step.
  static double Progress(int step, int steps);

  HWND GetToastOwner() const { return owner_; }
  bool IsToastVisible() const { return visible_; }
  double GetProgress() const { return progress_; }
  int GetToastWidth() const { return width_; }
  int GetToastHeight() const { return height_; }
  unsigned int GetStayTime() const { return stay_time_; }
  const SOUI::SStringW& GetText() const { return text_; }
  // The skin the icon element gets for the current settings.
  SOUI::SStringW IconSkinName() const;
  // The rich-text paragraph of the current text.
  SOUI::SStringW ContentXml() const;

 private:
  // Measures the text, sizes the toast and fills icon and text elements.
  void BuildContent();
  void KillAllTimers();

  // Settings, in their published order; pixels at 100 % zoom.
  HWND owner_ = nullptr;
  bool visible_ = false;
  double progress_ = 1.0;
  int top_margin_ = 11;
  int slide_distance_ = 42;
  int min_text_width_ = 56;
  int max_text_width_ = 334;
  int icon_size_ = 24;
  int padding_left_ = 12, padding_mid_ = 8, padding_right_ = 12;
  int line_height_ = 40;
  int spare_[3] = {20, 51, 40};  // [1]: the height of wrapped text
  int width_ = 0, height_ = 0;
  int offset_y_ = 0;
  int show_timer_ = kShowTimerId, show_interval_ = 20;
  int show_length_ = 100;
  int show_steps_ = 5, show_step_ = 0;
  int stay_timer_ = kStayTimerId;
  unsigned int stay_time_ = 3000;
  int hide_timer_ = kHideTimerId, hide_interval_ = 20;
  int hide_length_ = 100;
  int hide_steps_ = 5, hide_step_ = 0;
  bool use_icon_type_ = true;
  int icon_type_ = QVToastIcon_Tip;
  SOUI::SStringW icon_skin_;
  SOUI::SStringW text_;
  int zoom_ = 100;
  SOUI::SStringW card_offset_;  // last "offset" given to the card

  // The opt-in options and their state.
  QVToastOptions options_;
  enum class Phase { kHidden, kSlidingIn, kStaying, kSlidingOut };
  Phase phase_ = Phase::kHidden;
  int repeat_ = 1;
  unsigned int stayed_ms_ = 0;  // pause on hover: stay time run so far
};

class QVSTDCTRLS_API IQVToast {
 public:
  // Shows text with a built-in icon over owner, offset_y pixels lower than
  // the usual place, for stay_ms once slid in. False (and a log line) for a
  // null or dead owner or when no toast window can be had.
  static bool TrackPopupToast(HWND owner, const EnQVToastIconType& type, const wchar_t* text, int offset_y,
                              unsigned int stay_ms);
  // The same with the icon given by skin name; empty or null means
  // "skin_toast_bg". A null text shows an empty toast.
  static bool TrackPopupToast(HWND owner, const wchar_t* icon_skin, const wchar_t* text, int offset_y,
                              unsigned int stay_ms);

  // The opt-in options for every later toast; the defaults are both off.
  static void SetToastOptions(const QVToastOptions& options) { ms_options = options; }
  static const QVToastOptions& GetToastOptions() { return ms_options; }

  // The owner's toast window if it has one; never creates one.
  static std::shared_ptr<CQVToastWnd> FindToastWnd(HWND owner);
  // Number of owners with a toast window (tests, soak).
  static size_t ToastWndCount() { return ms_mapToastWnd.size(); }

 protected:
  // The owner's toast window, created and registered on first use.
  static std::shared_ptr<CQVToastWnd> GetToastWnd(HWND owner);
  // Drops the owner's entry; the window goes with its last reference.
  static void DeleteToastWnd(HWND owner);

  static std::map<HWND, std::shared_ptr<CQVToastWnd>> ms_mapToastWnd;
  static QVToastOptions ms_options;

 private:
  static bool Track(HWND owner, bool use_type, int type, const wchar_t* icon_skin, const wchar_t* text,
                    int offset_y, unsigned int stay_ms);
  friend class ToastRegistryGuard;
};

}  // namespace QVStandardCtrls
