// The toolkit core on its own and with what plugs into it: the default
// setup (cairo rendering, the QVLog sink) and host services made on demand.
#include <gtest/gtest.h>

#include "qvhost/config.h"
#include "qvhost/message_dispatch.h"
#include "qvhost/qvlog.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"
#include "testing/event_generator.h"

namespace SOUI {
namespace {

constexpr wchar_t kLayout[] =
    L"<SOUI><root><button name='ok' pos='0,0,@80,@30' text='OK'/></root></SOUI>";

TEST(CorePlugins, DefaultSetupPlugsInRenderingAndTheHostLog) {
  SApplication app;
  EXPECT_NE(nullptr, app.GetRenderFactory());
  ASSERT_NE(nullptr, dynamic_cast<QVLogSink*>(app.GetLogSink()));
  // The core's own lines reach the host's sink.
  SHostWnd host;
  EXPECT_FALSE(host.InitFromXmlText(L"<SOUI><root>"));
  EXPECT_TRUE(QVLogSinkOf(app).Contains(L"SHostWnd: malformed layout XML"));
}

TEST(CorePlugins, CoreWithoutThePlatformLaysOutAndRoutesButDoesNotPaint) {
  const SApplication::SetupHook saved = SApplication::GetDefaultSetup();
  SApplication::SetDefaultSetup(nullptr);
  {
    SApplication app;
    EXPECT_EQ(nullptr, app.GetRenderFactory());
    EXPECT_EQ(nullptr, app.GetLogSink());
    SHostWnd host;
    ASSERT_TRUE(host.InitFromXmlText(kLayout));
    host.Create(nullptr, 0, 0, 200, 100);
    EXPECT_EQ(nullptr, host.Render());
    SWindow* ok = host.FindChildByName(L"ok");
    ASSERT_NE(nullptr, ok);
    EXPECT_EQ(CRect(0, 0, 80, 30), ok->GetWindowRect());
    int commands = 0;
    ok->subscribeEvent(EVT_CMD, [&](EventArgs*) { return ++commands, true; });
    test::EventGenerator gen(&host);
    gen.MoveMouseToCenterOf(ok);
    gen.ClickLeftButton();
    EXPECT_EQ(1, commands);
    // With no sink, lines go to stderr.
    testing::internal::CaptureStderr();
    host.InitFromXmlText(L"<SOUI>");
    EXPECT_NE(std::string::npos, testing::internal::GetCapturedStderr().find("malformed layout XML"));
  }
  SApplication::SetDefaultSetup(saved);
}

TEST(CorePlugins, HostServicesAreMadeOnceAndGoBeforeTheClock) {
  int fired = 0;
  {
    SApplication app;
    MessageDispatch& dispatch = GetMessageDispatch(app);
    EXPECT_EQ(&dispatch, &GetMessageDispatch(app));
    EXPECT_EQ(&dispatch, GetMsgDispatch());
    GetUserSettings(app).SetBool(50501, false);
    bool red_rise = true;
    EXPECT_TRUE(Util_Config::UserCfg_ReadBool(50501, &red_rise));
    EXPECT_FALSE(red_rise);
    // A timer still pending when the application goes: dropped with the
    // dispatch while the clock it lives on still exists.
    dispatch.SetTimer(10, [&] { ++fired; });
    app.GetClock().Advance(10);
  }
  EXPECT_EQ(1, fired);
}

}  // namespace
}  // namespace SOUI
