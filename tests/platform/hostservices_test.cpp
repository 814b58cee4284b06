// Host services: message dispatch (re-entrancy, task ordering), the user
// settings store and its file, the stream logger, zoom scaling.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "qvhost/config.h"
#include "qvhost/message_dispatch.h"
#include "qvhost/qvlog.h"
#include "qvhost/uia.h"  // compiled here; nothing in it to exercise
#include "qvhost/zoom.h"
#include "soui/sapp.h"

using namespace SOUI;

namespace {

// ---- MessageDispatch ----

struct PriceBody : msg_body {
  explicit PriceBody(int v) : value(v) {}
  int value;
};

class DispatchTest : public ::testing::Test {
 protected:
  // Records "<name>:<msg>:<param>" for each call.
  IMessageDispatch::Handler Rec(const std::string& name) {
    return [this, name](unsigned msg, unsigned param, msg_body_ptr) {
      calls.push_back(name + ":" + std::to_string(msg) + ":" + std::to_string(param));
    };
  }
  SClock clock;
  MessageDispatch dispatch{clock};
  std::vector<std::string> calls;
  int a = 0, b = 0, c = 0;  // owners
};

TEST_F(DispatchTest, SendReachesBindingsOfTheMessageInBindingOrder) {
  dispatch.Bind(1063, &b, Rec("b"));
  dispatch.Bind(7, &a, Rec("a7"));
  dispatch.Bind(1063, &a, Rec("a"));
  int seen = 0;
  dispatch.Bind(1063, &c, [&](unsigned, unsigned, msg_body_ptr body) {
    auto price = std::dynamic_pointer_cast<PriceBody>(body);
    seen = price ? price->value : -1;
  });

  dispatch.Send(1063, 5, std::make_shared<PriceBody>(42));
  EXPECT_EQ(calls, (std::vector<std::string>{"b:1063:5", "a:1063:5"}));
  EXPECT_EQ(seen, 42);
}

TEST_F(DispatchTest, UnBindByOwnerDropsAllItsBindingsAndByMessageOnlyOne) {
  dispatch.Bind(1, &a, Rec("a1"));
  dispatch.Bind(2, &a, Rec("a2"));
  dispatch.Bind(1, &b, Rec("b1"));
  dispatch.Bind(2, &b, Rec("b2"));

  dispatch.UnBind(&a);
  dispatch.UnBind(1, &b);
  dispatch.Send(1);
  dispatch.Send(2);
  EXPECT_EQ(calls, (std::vector<std::string>{"b2:2:0"}));
}

TEST_F(DispatchTest, HandlersMayUnbindAndBindDuringSend) {
  // a unbinds itself and c; b binds d. c must not run, d only from the next Send.
  int d = 0;
  dispatch.Bind(9, &a, [&](unsigned, unsigned, msg_body_ptr) {
    calls.push_back("a");
    dispatch.UnBind(&a);
    dispatch.UnBind(9, &c);
  });
  dispatch.Bind(9, &b, [&](unsigned, unsigned, msg_body_ptr) {
    calls.push_back("b");
    dispatch.Bind(9, &d, [&](unsigned, unsigned, msg_body_ptr) { calls.push_back("d"); });
  });
  dispatch.Bind(9, &c, Rec("c"));

  dispatch.Send(9);
  EXPECT_EQ(calls, (std::vector<std::string>{"a", "b"}));
  calls.clear();
  dispatch.Send(9);
  EXPECT_EQ(calls, (std::vector<std::string>{"b", "d"}));
}

TEST_F(DispatchTest, HandlerMayReplaceItselfWhileRunning) {
  // Replacing destroys the stored handler while it runs; its captured
  // string (on the heap) must still be readable afterwards.
  const std::string label = "first handler, long enough to live on the heap";
  dispatch.Bind(3, &a, [this, label](unsigned, unsigned, msg_body_ptr) {
    dispatch.Bind(3, &a, Rec("second"));
    calls.push_back(label);
  });
  dispatch.Send(3);
  dispatch.Send(3);
  EXPECT_EQ(calls, (std::vector<std::string>{label, "second:3:0"}));
}

TEST_F(DispatchTest, ManyOwnersComingAndGoingKeepTheirOrderAndHandlers) {
  // Owners leave in bulk (outside and during a Send) and come back; the
  // survivors keep binding order, a rebinding replaces in place, newcomers
  // go last.
  std::vector<int> owners(100);
  std::vector<int> got;
  auto rec = [&](int i) { return [&got, i](unsigned, unsigned, msg_body_ptr) { got.push_back(i); }; };
  for (int i = 0; i < 100; ++i) dispatch.Bind(4, &owners[i], rec(i));
  for (int i = 0; i < 100; i += 2) dispatch.UnBind(&owners[i]);
  dispatch.Bind(4, &owners[0], rec(1000));  // back, at the end
  dispatch.Bind(4, &owners[1], rec(1001));  // replaced where it is
  int trigger = 0;
  dispatch.Bind(4, &trigger, [&](unsigned, unsigned, msg_body_ptr) {
    for (int i = 3; i < 100; i += 4) dispatch.UnBind(4, &owners[i]);
  });
  dispatch.Send(4);
  std::vector<int> want;
  for (int i = 1; i < 100; i += 2) want.push_back(i == 1 ? 1001 : i);
  want.push_back(1000);  // the trigger runs after it, its removals too late for this Send
  EXPECT_EQ(got, want);
  EXPECT_EQ(dispatch.BindingCount(), 50u + 2u - 25u);

  got.clear();
  dispatch.Send(4);
  want.clear();
  for (int i = 1; i < 100; i += 4) want.push_back(i == 1 ? 1001 : i);
  want.push_back(1000);
  EXPECT_EQ(got, want);
  dispatch.UnBind(&trigger);
  for (int& o : owners) dispatch.UnBind(&o);
  EXPECT_EQ(dispatch.BindingCount(), 0u);
  got.clear();
  dispatch.Send(4);
  EXPECT_TRUE(got.empty());
}

TEST(DispatchLifetimeTest, DispatchDestroyedByAHandlerCallsNoOneAfter) {
  SClock clock;
  auto dispatch = std::make_unique<MessageDispatch>(clock);
  int owners[3] = {};
  std::vector<int> calls;
  dispatch->Bind(1, &owners[0], [&](unsigned, unsigned, msg_body_ptr) {
    calls.push_back(0);
    dispatch->Send(2);  // nested: the inner Send sees the end first
  });
  dispatch->Bind(2, &owners[1], [&](unsigned, unsigned, msg_body_ptr) {
    calls.push_back(1);
    dispatch.reset();
  });
  dispatch->Bind(2, &owners[2], [&](unsigned, unsigned, msg_body_ptr) { calls.push_back(2); });
  dispatch->Bind(1, &owners[2], [&](unsigned, unsigned, msg_body_ptr) { calls.push_back(3); });
  dispatch->Send(1);
  EXPECT_EQ(calls, (std::vector<int>{0, 1}));
}

TEST_F(DispatchTest, DeferredTasksRunByClockInOrder) {
  auto rec = [&](std::string name) { return [&, name] { calls.push_back(name + "@" + std::to_string(clock.Now())); }; };
  dispatch.Delay(10, rec("delay10"));
  dispatch.Asyn(rec("asyn"));
  dispatch.Delay(0, rec("delay0"));
  dispatch.Post(rec("post"));
  dispatch.Bind(5, &a, Rec("posted-msg"));
  dispatch.Post(5, 1, nullptr);
  EXPECT_TRUE(calls.empty());  // nothing runs synchronously

  clock.Advance(0);
  EXPECT_EQ(calls, (std::vector<std::string>{"asyn@0", "delay0@0", "post@0", "posted-msg:5:1"}));
  calls.clear();
  clock.Advance(10);
  EXPECT_EQ(calls, (std::vector<std::string>{"delay10@10"}));
  EXPECT_EQ(dispatch.PendingTasks(), 0u);
}

TEST_F(DispatchTest, AsynPostedFromATaskWaitsForTheNextRunDue) {
  dispatch.Asyn([&] {
    calls.push_back("outer");
    dispatch.Asyn([&] { calls.push_back("inner"); });
  });
  clock.RunDue();
  EXPECT_EQ(calls, (std::vector<std::string>{"outer"}));
  clock.RunDue();
  EXPECT_EQ(calls, (std::vector<std::string>{"outer", "inner"}));
}

TEST_F(DispatchTest, CancelAndKillTimerStopTasks) {
  int delayed = 0, ticks = 0;
  auto d = dispatch.Delay(10, [&] { ++delayed; });
  IMessageDispatch::TaskId t = 0;
  t = dispatch.SetTimer(10, [&] {
    if (++ticks == 3) dispatch.KillTimer(t);  // from its own callback
  });
  dispatch.Cancel(d);
  dispatch.Cancel(12345);  // unknown: ignored

  clock.Advance(100);
  EXPECT_EQ(delayed, 0);
  EXPECT_EQ(ticks, 3);
  EXPECT_EQ(clock.PendingTimers(), 0u);
}

TEST(DispatchLifetimeTest, DestroyedDispatchLeavesNoTimersBehind) {
  SClock clock;
  int ran = 0;
  {
    MessageDispatch dispatch(clock);
    dispatch.Delay(5, [&] { ++ran; });
    dispatch.SetTimer(5, [&] { ++ran; });
  }
  EXPECT_EQ(clock.PendingTimers(), 0u);
  clock.Advance(50);
  EXPECT_EQ(ran, 0);
}

// ---- UserSettings ----

class SettingsFileTest : public ::testing::Test {
 protected:
  void TearDown() override { std::remove(path.c_str()); }
  // Tests run as separate processes side by side: a file of their own each.
  std::string path = ::testing::TempDir() + "qv_settings_" +
                     ::testing::UnitTest::GetInstance()->current_test_info()->name() + "_" +
                     std::to_string(getpid()) + ".txt";
};

TEST_F(SettingsFileTest, SaveThenLoadRestoresEveryKindAndAwkwardText) {
  UserSettings out;
  out.SetBool(50501, true);
  out.SetBool(50502, false);
  out.SetInt(-3, -2147483647 - 1);
  out.SetString(8, L"two words\\n\nline\t\x4E2D\x6587 ");
  out.SetString(9, L"");
  ASSERT_TRUE(out.Save(path));

  UserSettings in;
  in.SetInt(777, 1);  // replaced by the file's contents
  ASSERT_TRUE(in.Load(path));
  bool flag = false;
  int number = 0;
  SStringW text;
  EXPECT_TRUE(in.GetBool(50501, &flag) && flag);
  EXPECT_TRUE(in.GetBool(50502, &flag) && !flag);
  EXPECT_TRUE(in.GetInt(-3, &number));
  EXPECT_EQ(number, -2147483647 - 1);
  EXPECT_TRUE(in.GetString(8, &text));
  EXPECT_EQ(text, L"two words\\n\nline\t\x4E2D\x6587 ");
  EXPECT_TRUE(in.GetString(9, &text));
  EXPECT_EQ(text, L"");
  EXPECT_FALSE(in.Has(777));
  EXPECT_EQ(in.Count(), 5u);
}

TEST_F(SettingsFileTest, LoadSkipsMalformedLinesAndReportsThem) {
  std::ofstream(path) << "# comment\n1 b 1\n2 b yes\n3 i 12x\n4 q 1\nnot a line\n5 s bad\\q\n6 i 7\n";
  UserSettings s;
  EXPECT_FALSE(s.Load(path));
  EXPECT_EQ(s.Count(), 2u);
  EXPECT_TRUE(s.Has(1));
  EXPECT_TRUE(s.Has(6));
}

TEST(SettingsTest, FailedReadsLeaveOutputsAndStoreAlone) {
  UserSettings s;
  s.SetString(1, L"on");
  EXPECT_FALSE(s.Load(::testing::TempDir() + "no/such/dir/settings.txt"));
  EXPECT_TRUE(s.Has(1));  // a missing file changes nothing
  s.SetInt(2, 5);
  bool flag = true;
  EXPECT_FALSE(s.GetBool(1, &flag));  // strings do not read as booleans
  EXPECT_FALSE(s.GetBool(99, &flag));
  EXPECT_TRUE(flag);
  EXPECT_TRUE(s.GetBool(2, &flag));   // non-zero int reads as true
  EXPECT_TRUE(flag);
  EXPECT_TRUE(s.GetBool(2, nullptr));
}

// ---- QVLogSink ----

TEST(LogSinkTest, FormatsLevelCategoryPlaceAndMessage) {
  QVLogSink sink;
  QVLogLine line;
  line.level = QV_LOG_WARN;
  line.category = "COMMON";
  line.file = "QVToast.cpp";
  line.function = "TrackPopupToast";
  line.line = 42;
  line.message = L"hWnd Not Valid";
  sink.Write(line);

  EXPECT_EQ(sink.Lines().back().Format(), L"W COMMON QVToast.cpp:42 TrackPopupToast: hWnd Not Valid");
  EXPECT_TRUE(sink.Contains(L"QVToast.cpp:42"));
  EXPECT_FALSE(sink.Contains(L"not valid"));  // case-sensitive
  sink.Clear();
  EXPECT_FALSE(sink.Contains(L"hWnd"));
}

// ---- services reached through the application ----

class AppServicesTest : public ::testing::Test {
 protected:
  SApplication app;
};

TEST_F(AppServicesTest, MsgDispatchIsTheApplicationsAndRunsOnItsClock) {
  IMessageDispatch* d = GetMsgDispatch();
  ASSERT_EQ(d, &GetMessageDispatch(app));
  int ran = 0;
  d->Delay(10, [&] { ++ran; });
  app.GetClock().Advance(9);
  EXPECT_EQ(ran, 0);
  app.GetClock().Advance(1);
  EXPECT_EQ(ran, 1);
}

TEST_F(AppServicesTest, ReadBoolKeepsTheCallersValueWhenTheItemIsAbsent) {
  bool flag = true;
  EXPECT_FALSE(Util_Config::UserCfg_ReadBool(50501, &flag));
  EXPECT_TRUE(flag);

  GetUserSettings(app).SetBool(50501, false);
  EXPECT_TRUE(Util_Config::UserCfg_ReadBool(50501, &flag));
  EXPECT_FALSE(flag);
  EXPECT_FALSE(Util_Config::UserCfg_ReadBool(50501, nullptr));

  EXPECT_TRUE(Util_Config::UserCfg_WriteBool(50502, true));
  EXPECT_TRUE(Util_Config::UserCfg_ReadBool(50502, &flag));
  EXPECT_TRUE(flag);
}

TEST_F(AppServicesTest, LogMacroCapturesPlaceAndStreamsEveryKind) {
  const int line = __LINE__ + 1;
  QVLOG(QV_LOG_WARN, "COMMON") << L"hWnd Not Valid " << reinterpret_cast<HWND>(0x1234) << " n=" << 42
                               << ' ' << -7L << ' ' << 2.5 << ' ' << static_cast<void*>(nullptr)
                               << ' ' << SStringW(L"w") << std::string(" caf\xc3\xa9");

  const QVLogLine& l = QVLogSinkOf(app).Lines().back();
  EXPECT_EQ(l.level, QV_LOG_WARN);
  EXPECT_EQ(l.category, "COMMON");
  EXPECT_EQ(l.file, "hostservices_test.cpp");  // base name only
  EXPECT_EQ(l.function, "TestBody");
  EXPECT_EQ(l.line, line);
  EXPECT_EQ(l.message, L"hWnd Not Valid 0x1234 n=42 -7 2.5 0x0 w caf\x00e9");
}

TEST_F(AppServicesTest, LogWriteKeepsTheBaseNameOfWindowsPathsAndWideCategories) {
  QVLogWrite(QV_LOG_ERROR, "SOUI", "C:\\src\\ctrls/QVToast.cpp", "QVStandardCtrls::IQVToast::TrackPopupToast", 7,
             L"msg");
  QVLOG(QV_LOG_INFO, L"WIDE") << "x";
  const auto& lines = QVLogSinkOf(app).Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].Format(), L"E SOUI QVToast.cpp:7 QVStandardCtrls::IQVToast::TrackPopupToast: msg");
  EXPECT_EQ(lines[1].category, "WIDE");
}

TEST_F(AppServicesTest, SinkEchoesWarningsToStderrByDefaultAndCanBeSilenced) {
  ::testing::internal::CaptureStderr();
  QVLOG(QV_LOG_INFO, "COMMON") << "quiet line";
  QVLOG(QV_LOG_WARN, "COMMON") << "loud line";
  std::string err = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(err.find("quiet line"), std::string::npos);
  EXPECT_NE(err.find("loud line"), std::string::npos);
  EXPECT_EQ(QVLogSinkOf(app).Lines().size(), 2u);  // both kept

  QVLogSinkOf(app).SetEchoLevel(QV_LOG_FATAL + 1);
  ::testing::internal::CaptureStderr();
  QVLOG(QV_LOG_ERROR, "COMMON") << "silenced line";
  err = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(err.find("silenced line"), std::string::npos);
  EXPECT_EQ(QVLogSinkOf(app).Lines().size(), 3u);
}

TEST(NoAppServicesTest, ServicesDegradeWithoutAnApplication) {
  ASSERT_EQ(SApplication::getSingletonPtr(), nullptr);
  EXPECT_EQ(GetMsgDispatch(), nullptr);
  bool flag = true;
  EXPECT_FALSE(Util_Config::UserCfg_ReadBool(1, &flag));
  EXPECT_FALSE(Util_Config::UserCfg_WriteBool(1, false));
  EXPECT_EQ(ZPixel(7), 7);
  ::testing::internal::CaptureStderr();
  QVLOG(QV_LOG_ERROR, "COMMON") << "orphan line";
  EXPECT_NE(::testing::internal::GetCapturedStderr().find("orphan line"), std::string::npos);
}

// ---- zoom ----

struct ZoomCase {
  const char* label;
  int zoom;
  int px;
  int expected;
};

class ZPixelTest : public ::testing::TestWithParam<ZoomCase> {};

TEST_P(ZPixelTest, ScalesAndRoundsHalfUp) {
  const ZoomCase& c = GetParam();
  SApplication app;
  app.SetZoom(c.zoom);
  EXPECT_EQ(ZPixel(c.px), c.expected);
  EXPECT_DOUBLE_EQ(GetAppZoomX(), c.zoom / 100.0);
}

INSTANTIATE_TEST_SUITE_P(
    Zooms, ZPixelTest,
    ::testing::Values(ZoomCase{"Z100", 100, 74, 74}, ZoomCase{"Z125Quarter", 125, 1, 1},
                      ZoomCase{"Z125Half", 125, 2, 3}, ZoomCase{"Z125ThreeQuarter", 125, 3, 4},
                      ZoomCase{"Z125Large", 125, 194, 243}, ZoomCase{"Z150Half", 150, 1, 2},
                      ZoomCase{"Z150Odd", 150, 5, 8}, ZoomCase{"Z200", 200, 11, 22},
                      ZoomCase{"Z125NegativeHalf", 125, -2, -2},
                      ZoomCase{"Z150NegativeHalf", 150, -3, -4}, ZoomCase{"Z125Zero", 125, 0, 0}),
    [](const ::testing::TestParamInfo<ZoomCase>& info) { return std::string(info.param.label); });

TEST(ZSizeTest, ScalesEachExtentOnItsOwn) {
  SApplication app;
  app.SetZoom(150);
  EXPECT_EQ(ZSize(CSize(3, 1)), CSize(5, 2));
}

}  // namespace
