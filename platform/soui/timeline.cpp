// The clock's timer queue, the frame timeline, interpolators and SAnimator.
//
// Timer queue rules (SClock):
//  - RunDue is one pass: it fires every timer due by Now() that existed when
//    it began, earliest first, ties by creation, each at most once. Timers
//    created by those callbacks (a 0 ms Post) wait for the next pass.
//  - A repeating timer is re-armed from its due time (no drift). When the
//    clock has already passed several periods (a real clock that stalled),
//    the missed periods are dropped rather than fired in a burst, as WM_TIMER
//    coalesces them.
//  - Advance stops at each instant some timer is due and runs passes there
//    until nothing new is due, so work posted at that instant runs at that
//    instant. A timer fires at most once per instant, so a 0 ms repeater
//    cannot hang Advance; a chain of 0 ms tasks re-posting each other is cut
//    after kMaxPassesPerInstant passes and resumes at the next stop.
//  - The callback runs from a copy, so it may kill or replace its own timer.
#include "soui/timeline.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <limits>

#include "soui/sapp.h"

namespace SOUI {

namespace {

uint64_t SteadyMs() {
  using namespace std::chrono;
  return static_cast<uint64_t>(
      duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}

}  // namespace

// ---- SClock ----

SClock::SClock(bool manual) : manual_(manual), real_origin_(manual ? 0 : SteadyMs()) {}

uint64_t SClock::Now() const { return manual_ ? manual_now_ : SteadyMs() - real_origin_; }

SClock::TimerId SClock::SetTimer(uint32_t interval_ms, std::function<void()> fn, bool repeat) {
  const TimerId id = next_id_++;
  timers_[id] = Timer{Now() + interval_ms, interval_ms, repeat, std::move(fn)};
  return id;
}

void SClock::KillTimer(TimerId id) { timers_.erase(id); }

bool SClock::HasTimer(TimerId id) const { return timers_.count(id) != 0; }

int SClock::RunDue() {
  std::vector<TimerId> fired;
  return RunPass(&fired);
}

int SClock::RunPass(std::vector<TimerId>* fired) {
  const uint64_t now = Now();
  // Timers created by the callbacks of this pass wait for the next one.
  const TimerId first_new = next_id_;
  int count = 0;
  for (;;) {
    // Earliest due first; the map is ordered by id, so the first of equal
    // due times is the oldest timer.
    auto best = timers_.end();
    for (auto it = timers_.begin(); it != timers_.end() && it->first < first_new; ++it) {
      if (it->second.due > now) continue;
      if (best != timers_.end() && it->second.due >= best->second.due) continue;
      if (std::find(fired->begin(), fired->end(), it->first) != fired->end()) continue;
      best = it;
    }
    if (best == timers_.end()) break;
    fired->push_back(best->first);
    std::function<void()> fn = best->second.fn;
    Timer& t = best->second;
    if (t.repeat) {
      t.due += t.interval;
      if (t.due <= now) {
        // 0 ms repeaters stay due; longer ones drop the periods they missed.
        t.due = t.interval == 0 ? now : t.due + ((now - t.due) / t.interval + 1) * t.interval;
      }
    } else {
      timers_.erase(best);
    }
    ++count;
    if (fn) fn();
  }
  return count;
}

void SClock::RunInstant() {
  // Passes repeat while callbacks keep adding due work (Post inside a
  // callback runs at the same instant), but a timer fires once per instant
  // and a chain of tasks re-posting each other is cut after kMaxPasses.
  std::vector<TimerId> fired;
  for (int pass = 0; pass < kMaxPassesPerInstant; ++pass) {
    if (RunPass(&fired) == 0) break;
  }
}

void SClock::Advance(uint32_t ms) {
  if (!manual_) {
    // Real time cannot be moved; just serve what is due.
    RunDue();
    return;
  }
  const uint64_t target = manual_now_ + ms;
  RunInstant();
  for (;;) {
    // Next instant strictly ahead: timers left due at the current instant
    // (0 ms repeaters) wait for the next stop.
    uint64_t next = std::numeric_limits<uint64_t>::max();
    for (const auto& entry : timers_) {
      if (entry.second.due > manual_now_) next = std::min(next, entry.second.due);
    }
    if (next > target) break;
    manual_now_ = next;
    RunInstant();
  }
  // A callback may have advanced the clock itself (a nested loop); time never
  // moves backwards.
  manual_now_ = std::max(manual_now_, target);
}

uint64_t SClock::NextDue() const {
  uint64_t next = std::numeric_limits<uint64_t>::max();
  for (const auto& entry : timers_) next = std::min(next, entry.second.due);
  return next;
}

uint32_t GetTickCount() {
  if (SApplication* app = SApplication::getSingletonPtr()) return app->GetClock().GetTickCount();
  static const SClock process_clock(false);
  return process_clock.GetTickCount();
}

// ---- STimelineManager ----

STimelineManager::STimelineManager(SClock* clock, uint32_t frame_ms)
    : clock_(clock), frame_ms_(frame_ms), alive_(std::make_shared<bool>(true)) {}

STimelineManager::~STimelineManager() {
  *alive_ = false;
  if (timer_ && clock_) clock_->KillTimer(timer_);
}

BOOL STimelineManager::RegisterTimelineHandler(ITimelineHandler* handler) {
  if (!handler) return FALSE;
  if (std::find(handlers_.begin(), handlers_.end(), handler) != handlers_.end()) return FALSE;
  handlers_.push_back(handler);
  if (!timer_ && clock_) timer_ = clock_->SetTimer(frame_ms_, [this] { OnFrame(); }, true);
  return TRUE;
}

BOOL STimelineManager::UnregisterTimelineHandler(ITimelineHandler* handler) {
  auto it = std::find(handlers_.begin(), handlers_.end(), handler);
  if (it == handlers_.end()) return FALSE;
  handlers_.erase(it);
  if (handlers_.empty() && timer_) {
    clock_->KillTimer(timer_);
    timer_ = 0;
  }
  return TRUE;
}

void STimelineManager::OnFrame() {
  // A handler may unregister others, register new ones (they start next
  // frame) or destroy the window that owns this manager.
  const std::vector<ITimelineHandler*> frame = handlers_;
  const std::shared_ptr<bool> alive = alive_;
  for (ITimelineHandler* h : frame) {
    if (std::find(handlers_.begin(), handlers_.end(), h) == handlers_.end()) continue;
    h->OnNextFrame();
    if (!*alive) return;
  }
}

// ---- interpolators ----

namespace {

class LinearInterpolator : public IInterpolator {
 public:
  float getInterpolation(float t) const override { return t; }
};

class AccelerateInterpolator : public IInterpolator {
 public:
  explicit AccelerateInterpolator(float factor) : factor_(factor) {}
  float getInterpolation(float t) const override {
    if (factor_ == 1.f) return t * t;
    return static_cast<float>(std::pow(static_cast<double>(t), 2.0 * factor_));
  }

 private:
  float factor_;
};

class DecelerateInterpolator : public IInterpolator {
 public:
  explicit DecelerateInterpolator(float factor) : factor_(factor) {}
  float getInterpolation(float t) const override {
    if (factor_ == 1.f) return 1.f - (1.f - t) * (1.f - t);
    return static_cast<float>(1.0 - std::pow(1.0 - static_cast<double>(t), 2.0 * factor_));
  }

 private:
  float factor_;
};

class AccelerateDecelerateInterpolator : public IInterpolator {
 public:
  float getInterpolation(float t) const override {
    const double pi = 3.14159265358979323846;
    return static_cast<float>(std::cos((static_cast<double>(t) + 1.0) * pi) / 2.0 + 0.5);
  }
};

}  // namespace

IInterpolatorPtr CreateInterpolator(const SStringW& name, float factor) {
  if (name == L"Linear") return std::make_shared<LinearInterpolator>();
  if (name == L"Accelerate") return std::make_shared<AccelerateInterpolator>(factor);
  if (name == L"Decelerate") return std::make_shared<DecelerateInterpolator>(factor);
  if (name == L"AccelerateDecelerate") return std::make_shared<AccelerateDecelerateInterpolator>();
  return nullptr;
}

// ---- SAnimator ----
// Callbacks may restart, stop or even destroy the animator, so every state
// change happens before the report and nothing touches members after it.

SAnimator::~SAnimator() { Unregister(); }

void SAnimator::SetTimelineManager(ITimelineHandlersMgr* mgr) {
  if (mgr == mgr_) return;
  Unregister();
  mgr_ = mgr;
  if (busy_) Register();
}

void SAnimator::Start(uint32_t duration_ms) {
  // Restarting a busy animator starts over without reporting -1.
  start_ = GetTickCount();
  duration_ = duration_ms;
  busy_ = true;
  Register();
  OnAnimatorState(0);
}

BOOL SAnimator::Update() {
  if (!busy_) return FALSE;
  const uint32_t elapsed = GetTickCount() - start_;  // wraps like the Win32 tick
  if (elapsed >= duration_) {
    busy_ = false;
    Unregister();
    OnAnimatorState(1000);
    return TRUE;
  }
  float t = static_cast<float>(elapsed) / static_cast<float>(duration_);
  if (interpolator_) t = interpolator_->getInterpolation(t);
  // 1000 means "done" and is sent once, at the end; frames before it stop
  // at 999 even when the curve rounds up early.
  long progress = std::lround(static_cast<double>(t) * 1000.0);
  progress = std::clamp(progress, 0L, 999L);
  OnAnimatorState(static_cast<int>(progress));
  return TRUE;
}

void SAnimator::Stop() {
  if (!busy_) return;
  busy_ = false;
  Unregister();
  OnAnimatorState(-1);
}

void SAnimator::OnAnimatorState(int progress) {
  if (!callback_) return;
  // A copy: the callback may replace itself through SetCallback.
  Callback cb = callback_;
  cb(progress);
}

void SAnimator::Register() {
  if (!mgr_ || registered_) return;
  mgr_->RegisterTimelineHandler(this);
  registered_ = true;  // FALSE from the manager means it already had us
}

void SAnimator::Unregister() {
  if (!mgr_ || !registered_) return;
  registered_ = false;
  mgr_->UnregisterTimelineHandler(this);
}

}  // namespace SOUI
