// Host services: message dispatch (re-entrancy, task ordering), the user
// settings store and its file, the stream logger, zoom scaling.
#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "qvhost/config.h"
#include "qvhost/message_dispatch.h"
#include "qvhost/qvlog.h"
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

TEST_F(DispatchTest, BindingAgainReplacesTheHandlerInPlace) {
  dispatch.Bind(1, &a, Rec("a-old"));
  dispatch.Bind(1, &b, Rec("b"));
  dispatch.Bind(1, &a, Rec("a-new"));

  dispatch.Send(1);
  EXPECT_EQ(calls, (std::vector<std::string>{"a-new:1:0", "b:1:0"}));
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
  std::string path = ::testing::TempDir() + "qv_settings_test.txt";
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

TEST(SettingsTest, MissingFileLeavesStoreAlone) {
  UserSettings s;
  s.SetBool(1, true);
  EXPECT_FALSE(s.Load(::testing::TempDir() + "no/such/dir/settings.txt"));
  EXPECT_TRUE(s.Has(1));
}

TEST(SettingsTest, GettersKeepOutputWhenAbsentOrOfAnotherKind) {
  UserSettings s;
  s.SetString(1, L"on");
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

TEST(LogSinkTest, KeepsOnlyTheNewestLines) {
  QVLogSink sink;
  QVLogLine line;
  for (size_t i = 0; i < QVLogSink::kMaxLines + 5; ++i) {
    line.line = static_cast<int>(i);
    sink.Write(line);
  }
  ASSERT_EQ(sink.Lines().size(), QVLogSink::kMaxLines);
  EXPECT_EQ(sink.Lines().front().line, 5);
}

}  // namespace
