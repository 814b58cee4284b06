// Time: the application clock with its timer queue, the frame timeline that
// animations hang on, interpolators and the animator.
//
// Everything runs on the UI thread. In tests the clock is manual and only
// moves when the test advances it; timers then fire in due order, each with
// the clock set to its own due time. With nothing animating, nothing ticks.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <vector>

#include "soui/sstring.h"

namespace SOUI {

class SClock {
 public:
  using TimerId = uint64_t;

  // Manual clocks start at 0 and move only through Advance().
  explicit SClock(bool manual = true);

  bool IsManual() const { return manual_; }
  uint64_t Now() const;  // milliseconds
  uint32_t GetTickCount() const { return static_cast<uint32_t>(Now()); }

  // Calls fn after interval ms, and again every interval when repeat.
  // An interval of 0 fires at the next RunDue(). Returns a non-zero id.
  TimerId SetTimer(uint32_t interval_ms, std::function<void()> fn, bool repeat = true);
  void KillTimer(TimerId id);
  bool HasTimer(TimerId id) const;
  size_t PendingTimers() const { return timers_.size(); }

  // Fires every timer due by Now(), in due order (ties in creation order),
  // each at most once; timers created meanwhile wait for the next call.
  // Returns the number fired.
  int RunDue();
  // Manual clock: moves time forward to now+ms, stopping at each instant a
  // timer is due (Now() is that instant while it fires), work posted there
  // included. A timer fires at most once per instant, so a 0 ms repeating
  // timer cannot hang Advance. On a real clock this only runs RunDue().
  void Advance(uint32_t ms);
  // Due time of the earliest timer, or UINT64_MAX.
  uint64_t NextDue() const;

 private:
  struct Timer {
    uint64_t due;
    uint32_t interval;
    bool repeat;
    std::function<void()> fn;
  };
  // Bounds a chain of 0 ms tasks that keep posting each other.
  static constexpr int kMaxPassesPerInstant = 64;
  int RunPass(std::vector<TimerId>* fired);
  void RunInstant();

  bool manual_;
  uint64_t manual_now_ = 0;
  uint64_t real_origin_ = 0;
  TimerId next_id_ = 1;
  std::map<TimerId, Timer> timers_;
};

// Win32 GetTickCount, from the application's clock.
uint32_t GetTickCount();

class ITimelineHandler {
 public:
  virtual ~ITimelineHandler() = default;
  virtual void OnNextFrame() = 0;
};

class ITimelineHandlersMgr {
 public:
  virtual ~ITimelineHandlersMgr() = default;
  // FALSE when already registered (or not registered, for Unregister).
  virtual BOOL RegisterTimelineHandler(ITimelineHandler* handler) = 0;
  virtual BOOL UnregisterTimelineHandler(ITimelineHandler* handler) = 0;
};

// Ticks its handlers from one clock timer that exists only while a handler
// is registered. Handlers run from a copy of the list, so (un)registering
// inside OnNextFrame is safe; a handler removed during a frame is not called.
class STimelineManager : public ITimelineHandlersMgr {
 public:
  explicit STimelineManager(SClock* clock, uint32_t frame_ms = 16);
  ~STimelineManager() override;
  BOOL RegisterTimelineHandler(ITimelineHandler* handler) override;
  BOOL UnregisterTimelineHandler(ITimelineHandler* handler) override;
  size_t HandlerCount() const { return handlers_.size(); }
  bool IsTicking() const { return timer_ != 0; }
  void OnFrame();

 private:
  SClock* clock_;
  uint32_t frame_ms_;
  SClock::TimerId timer_ = 0;
  std::vector<ITimelineHandler*> handlers_;
  std::shared_ptr<bool> alive_;  // lets OnFrame notice its own destruction
};

class IInterpolator {
 public:
  virtual ~IInterpolator() = default;
  virtual float getInterpolation(float t) const = 0;
};
using IInterpolatorPtr = std::shared_ptr<IInterpolator>;

// "Linear", "Accelerate", "Decelerate", "AccelerateDecelerate" (case-sensitive);
// null for an unknown name. factor applies to Accelerate/Decelerate.
IInterpolatorPtr CreateInterpolator(const SStringW& name, float factor = 1.f);

// Maps elapsed time to progress in thousandths (0..1000) through an
// interpolator. Start reports 0 at once; Update reports the progress and,
// when the time is up, 1000 exactly once before going idle (earlier frames
// are capped at 999); Stop on a busy animator reports -1. A callback may
// restart, stop or delete the animator. With a timeline manager the animator registers itself
// while busy, so it is ticked only while it runs.
class SAnimator : public ITimelineHandler {
 public:
  using Callback = std::function<void(int progress)>;

  SAnimator() = default;
  explicit SAnimator(Callback cb) : callback_(std::move(cb)) {}
  ~SAnimator() override;
  SAnimator(const SAnimator&) = delete;
  SAnimator& operator=(const SAnimator&) = delete;

  void SetCallback(Callback cb) { callback_ = std::move(cb); }
  void SetInterpolator(IInterpolatorPtr interp) { interpolator_ = std::move(interp); }
  // When set, Start registers with mgr and the end or Stop unregisters.
  void SetTimelineManager(ITimelineHandlersMgr* mgr);

  void Start(uint32_t duration_ms);
  // Returns FALSE when idle; the call that reports 1000 still returns TRUE.
  BOOL Update();
  void Stop();
  bool IsBusy() const { return busy_; }
  uint32_t GetDuration() const { return duration_; }

  void OnNextFrame() override { Update(); }

 protected:
  virtual void OnAnimatorState(int progress);

 private:
  void Register();
  void Unregister();

  Callback callback_;
  IInterpolatorPtr interpolator_;
  ITimelineHandlersMgr* mgr_ = nullptr;
  bool registered_ = false;
  bool busy_ = false;
  uint32_t start_ = 0;
  uint32_t duration_ = 0;
};

}  // namespace SOUI
