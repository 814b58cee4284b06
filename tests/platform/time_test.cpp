// The clock's timer queue, the frame timeline, interpolators and SAnimator,
// all on a manual clock: time moves only when a test advances it.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "soui/sapp.h"
#include "soui/timeline.h"

using namespace SOUI;

namespace {

using Fired = std::vector<std::pair<std::string, uint64_t>>;

// ---- SClock ----

TEST(ClockTest, TimersFireInDueOrderEachAtItsOwnTime) {
  SClock clock;
  Fired fired;
  auto rec = [&](const char* name) { return [&, name] { fired.emplace_back(name, clock.Now()); }; };
  clock.SetTimer(30, rec("t30"), false);
  clock.SetTimer(10, rec("t10"), false);
  clock.SetTimer(20, rec("a20"), false);
  clock.SetTimer(20, rec("b20"), false);  // same instant: creation order

  clock.Advance(5);
  EXPECT_TRUE(fired.empty());

  clock.Advance(45);
  const Fired expected = {{"t10", 10}, {"a20", 20}, {"b20", 20}, {"t30", 30}};
  EXPECT_EQ(fired, expected);
  EXPECT_EQ(clock.Now(), 50u);
  // One-shots are gone once fired.
  EXPECT_EQ(clock.PendingTimers(), 0u);
  EXPECT_EQ(clock.NextDue(), UINT64_MAX);
}

TEST(ClockTest, RepeatingTimerKeepsItsPhaseAcrossUnevenAdvances) {
  SClock clock;
  std::vector<uint64_t> at;
  clock.SetTimer(7, [&] { at.push_back(clock.Now()); });
  for (uint32_t step : {3u, 5u, 11u, 1u, 100u}) clock.Advance(step);  // ends at 120

  ASSERT_EQ(at.size(), 17u);
  for (size_t i = 0; i < at.size(); ++i) EXPECT_EQ(at[i], 7 * (i + 1)) << "tick " << i;
  EXPECT_EQ(clock.NextDue(), 126u);
}

TEST(ClockTest, TimerKilledByEarlierCallbackAtSameInstantDoesNotFire) {
  SClock clock;
  std::vector<std::string> fired;
  SClock::TimerId second = 0;
  clock.SetTimer(10, [&] { fired.push_back("first"); clock.KillTimer(second); }, false);
  second = clock.SetTimer(10, [&] { fired.push_back("second"); }, false);

  clock.Advance(50);
  EXPECT_EQ(fired, std::vector<std::string>{"first"});
}

TEST(ClockTest, RepeatingTimerCanKillOrReplaceItself) {
  SClock clock;
  int self_killed = 0;
  SClock::TimerId self = 0;
  self = clock.SetTimer(10, [&] { ++self_killed; clock.KillTimer(self); });

  // Replacing: the callback kills its own timer and arms a slower one.
  std::vector<uint64_t> replaced_at;
  SClock::TimerId fast = 0;
  fast = clock.SetTimer(5, [&] {
    replaced_at.push_back(clock.Now());
    clock.KillTimer(fast);
    clock.SetTimer(20, [&] { replaced_at.push_back(clock.Now()); }, false);
  });

  clock.Advance(100);
  EXPECT_EQ(self_killed, 1);
  EXPECT_FALSE(clock.HasTimer(self));
  EXPECT_EQ(replaced_at, (std::vector<uint64_t>{5, 25}));
}

TEST(ClockTest, ZeroDelayTimerPostedDuringAdvanceRunsAtThatInstant) {
  SClock clock;
  Fired fired;
  clock.SetTimer(10, [&] {
    fired.emplace_back("tick", clock.Now());
    clock.SetTimer(0, [&] { fired.emplace_back("posted", clock.Now()); }, false);
  }, false);

  clock.Advance(20);
  const Fired expected = {{"tick", 10}, {"posted", 10}};
  EXPECT_EQ(fired, expected);
}

TEST(ClockTest, ZeroIntervalWorkCannotHangAdvance) {
  SClock clock;
  int spins = 0, ticks = 0, chain = 0;
  clock.SetTimer(0, [&] { ++spins; });  // repeating, always due
  clock.SetTimer(10, [&] { ++ticks; });
  std::function<void()> repost = [&] { ++chain; clock.SetTimer(0, repost, false); };
  clock.SetTimer(0, repost, false);

  clock.Advance(100);
  EXPECT_EQ(ticks, 10);
  // Once per stop: at 0 and at each of the ten ticks.
  EXPECT_EQ(spins, 11);
  // The re-posting chain is cut at each stop rather than spinning forever.
  EXPECT_GT(chain, 11);
  EXPECT_LT(chain, 11 * 100);
}

TEST(ClockTest, NestedAdvanceFromCallbackNeverMovesTimeBack) {
  SClock clock;
  std::vector<uint64_t> late;
  clock.SetTimer(10, [&] { clock.Advance(50); }, false);
  clock.SetTimer(40, [&] { late.push_back(clock.Now()); }, false);

  clock.Advance(20);
  EXPECT_EQ(clock.Now(), 60u);
  EXPECT_EQ(late, std::vector<uint64_t>{40});
}

// ---- STimelineManager ----

struct FrameCounter : ITimelineHandler {
  explicit FrameCounter(SClock* c = nullptr) : clock(c) {}
  void OnNextFrame() override {
    if (clock) at.push_back(clock->Now());
    ++frames;
    if (on_frame) on_frame();
  }
  SClock* clock;
  int frames = 0;
  std::vector<uint64_t> at;
  std::function<void()> on_frame;
};

TEST(TimelineTest, FrameTimerExistsOnlyWhileHandlersAreRegistered) {
  SClock clock;
  STimelineManager tl(&clock, 16);
  FrameCounter a(&clock), b;
  EXPECT_EQ(clock.PendingTimers(), 0u);

  EXPECT_TRUE(tl.RegisterTimelineHandler(&a));
  EXPECT_FALSE(tl.RegisterTimelineHandler(&a));  // twice
  EXPECT_TRUE(tl.RegisterTimelineHandler(&b));
  EXPECT_EQ(clock.PendingTimers(), 1u);  // one timer for all handlers

  clock.Advance(48);
  EXPECT_EQ(a.at, (std::vector<uint64_t>{16, 32, 48}));
  EXPECT_EQ(b.frames, 3);

  EXPECT_TRUE(tl.UnregisterTimelineHandler(&a));
  EXPECT_TRUE(tl.IsTicking());
  EXPECT_TRUE(tl.UnregisterTimelineHandler(&b));
  EXPECT_FALSE(tl.UnregisterTimelineHandler(&b));
  EXPECT_FALSE(tl.IsTicking());
  EXPECT_EQ(clock.PendingTimers(), 0u);

  clock.Advance(100);
  EXPECT_EQ(a.frames, 3);
}

TEST(TimelineTest, HandlersChangedDuringFrameTakeEffectSafely) {
  SClock clock;
  STimelineManager tl(&clock, 10);
  FrameCounter first, second, late;
  first.on_frame = [&] {
    if (first.frames == 1) {
      tl.UnregisterTimelineHandler(&second);  // later in the same frame
      tl.RegisterTimelineHandler(&late);      // starts with the next frame
    }
  };
  tl.RegisterTimelineHandler(&first);
  tl.RegisterTimelineHandler(&second);

  clock.Advance(10);
  EXPECT_EQ(second.frames, 0);
  EXPECT_EQ(late.frames, 0);
  clock.Advance(10);
  EXPECT_EQ(late.frames, 1);
  EXPECT_EQ(first.frames, 2);
}

TEST(TimelineTest, HandlerMayDestroyTheManager) {
  SClock clock;
  auto tl = std::make_unique<STimelineManager>(&clock, 10);
  FrameCounter killer, after;
  killer.on_frame = [&] { tl.reset(); };
  tl->RegisterTimelineHandler(&killer);
  tl->RegisterTimelineHandler(&after);

  clock.Advance(30);
  EXPECT_EQ(killer.frames, 1);
  EXPECT_EQ(after.frames, 0);
  EXPECT_EQ(clock.PendingTimers(), 0u);
}

// ---- interpolators ----

struct InterpCase {
  const char* label;
  const wchar_t* name;
  float factor;
  float t;
  float expected;
};

class InterpolatorTest : public ::testing::TestWithParam<InterpCase> {};

TEST_P(InterpolatorTest, MapsTimeFraction) {
  const InterpCase& c = GetParam();
  IInterpolatorPtr interp = CreateInterpolator(c.name, c.factor);
  ASSERT_TRUE(interp);
  EXPECT_NEAR(interp->getInterpolation(c.t), c.expected, 1e-5f);
}

INSTANTIATE_TEST_SUITE_P(
    Curves, InterpolatorTest,
    ::testing::Values(InterpCase{"LinearQuarter", L"Linear", 1.f, 0.25f, 0.25f},
                      InterpCase{"AccelerateHalf", L"Accelerate", 1.f, 0.5f, 0.25f},
                      InterpCase{"AccelerateEnd", L"Accelerate", 1.f, 1.f, 1.f},
                      InterpCase{"AccelerateFactor1_5", L"Accelerate", 1.5f, 0.5f, 0.125f},
                      InterpCase{"DecelerateHalf", L"Decelerate", 1.f, 0.5f, 0.75f},
                      InterpCase{"DecelerateQuarter", L"Decelerate", 1.f, 0.25f, 0.4375f},
                      InterpCase{"DecelerateFactor2", L"Decelerate", 2.f, 0.5f, 0.9375f},
                      InterpCase{"AccelDecelStart", L"AccelerateDecelerate", 1.f, 0.f, 0.f},
                      InterpCase{"AccelDecelQuarter", L"AccelerateDecelerate", 1.f, 0.25f, 0.1464466f},
                      InterpCase{"AccelDecelHalf", L"AccelerateDecelerate", 1.f, 0.5f, 0.5f},
                      InterpCase{"AccelDecelEnd", L"AccelerateDecelerate", 1.f, 1.f, 1.f}),
    [](const ::testing::TestParamInfo<InterpCase>& info) { return std::string(info.param.label); });

TEST(InterpolatorNamesTest, NamesAreCaseSensitiveAndUnknownGivesNull) {
  for (const wchar_t* name : {L"linear", L"LINEAR", L"Bounce", L"", L"Accelerate "}) {
    EXPECT_EQ(CreateInterpolator(name), nullptr) << SStringW(name).ToUtf8();
  }
}

}  // namespace

// ---- SAnimator (reads GetTickCount from the application's manual clock) ----

class AnimatorTest : public ::testing::Test {
 protected:
  void Advance(uint32_t ms) { app.GetClock().Advance(ms); }
  SApplication app;  // manual clock by default
  STimelineManager timeline{&app.GetClock(), 16};
  std::vector<int> reports;
  SAnimator anim{[this](int p) { reports.push_back(p); }};
};

TEST_F(AnimatorTest, GetTickCountIsTheApplicationClock) {
  Advance(1234);
  EXPECT_EQ(GetTickCount(), 1234u);
}

TEST_F(AnimatorTest, ProgressFollowsTheFramesAndEndsWithOneThousandOnce) {
  anim.SetTimelineManager(&timeline);
  anim.SetInterpolator(CreateInterpolator(L"Linear"));
  anim.Start(100);
  EXPECT_EQ(reports, std::vector<int>{0});
  EXPECT_TRUE(timeline.IsTicking());

  // Frames at 16, 32, ... 112; the last one is past the end.
  Advance(200);
  EXPECT_EQ(reports, (std::vector<int>{0, 160, 320, 480, 640, 800, 960, 1000}));
  // Done: unregistered, nothing ticks, Update reports nothing more.
  EXPECT_FALSE(anim.IsBusy());
  EXPECT_FALSE(timeline.IsTicking());
  EXPECT_EQ(app.GetClock().PendingTimers(), 0u);
  EXPECT_FALSE(anim.Update());
  EXPECT_EQ(reports.size(), 8u);
}

TEST_F(AnimatorTest, InterpolatorShapesProgress) {
  anim.SetInterpolator(CreateInterpolator(L"Accelerate"));
  anim.Start(200);
  Advance(100);
  anim.Update();
  Advance(50);
  anim.Update();
  EXPECT_EQ(reports, (std::vector<int>{0, 250, 563}));  // 0.75^2 rounds up
}

TEST_F(AnimatorTest, FramesBeforeTheEndNeverReportOneThousand) {
  anim.Start(3000);
  Advance(2999);  // 999.67 would round to 1000
  anim.Update();
  Advance(1);
  anim.Update();
  EXPECT_EQ(reports, (std::vector<int>{0, 999, 1000}));
}

TEST_F(AnimatorTest, ZeroDurationEndsAtFirstUpdate) {
  anim.Start(0);
  EXPECT_TRUE(anim.Update());
  EXPECT_FALSE(anim.Update());
  EXPECT_EQ(reports, (std::vector<int>{0, 1000}));
}

TEST_F(AnimatorTest, StopReportsMinusOneOnlyWhileBusy) {
  anim.SetTimelineManager(&timeline);
  anim.Start(100);
  Advance(16);
  anim.Stop();
  anim.Stop();
  EXPECT_EQ(reports, (std::vector<int>{0, 160, -1}));
  EXPECT_FALSE(timeline.IsTicking());
  Advance(200);
  EXPECT_EQ(reports.size(), 3u);
}

TEST_F(AnimatorTest, CallbackMayRestartTheAnimatorAtItsEnd) {
  anim.SetTimelineManager(&timeline);
  int rounds = 0;
  anim.SetCallback([&](int p) {
    reports.push_back(p);
    if (p == 1000 && ++rounds < 2) anim.Start(32);
  });
  anim.Start(32);
  Advance(200);
  EXPECT_EQ(reports, (std::vector<int>{0, 500, 1000, 0, 500, 1000}));
  EXPECT_FALSE(timeline.IsTicking());
}

TEST_F(AnimatorTest, CallbackMayStopTheAnimatorMidway) {
  anim.SetTimelineManager(&timeline);
  anim.SetCallback([&](int p) {
    reports.push_back(p);
    if (p > 0 && p < 1000) anim.Stop();
  });
  anim.Start(100);
  Advance(100);
  EXPECT_EQ(reports, (std::vector<int>{0, 160, -1}));
  EXPECT_FALSE(timeline.IsTicking());
}

TEST_F(AnimatorTest, CallbackMayDeleteTheAnimator) {
  auto owned = std::make_unique<SAnimator>();
  owned->SetTimelineManager(&timeline);
  owned->SetCallback([&](int p) {
    reports.push_back(p);
    if (p >= 300) owned.reset();  // destructor unregisters
  });
  owned->Start(100);
  Advance(100);
  EXPECT_EQ(owned, nullptr);
  EXPECT_EQ(reports, (std::vector<int>{0, 160, 320}));
  EXPECT_FALSE(timeline.IsTicking());
}
