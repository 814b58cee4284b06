// Host windows on real SDL windows (run under Xvfb): frames reach the
// screen, and events pushed through SDL's queue reach the DirectUI tree.
#include <gtest/gtest.h>

#include <cairo.h>

#include <cstdio>
#include <string>
#include <unistd.h>
#include <vector>

#include "backends/cairo_render.h"
#include "backends/sdl_backend.h"
#include "soui/edit.h"
#include "soui/hostdialog.h"
#include "soui/sapp.h"
#include "soui/scrollview.h"
#include "soui/stdctrls.h"
#include "sdl_test_base.h"

namespace SOUI {
namespace {

// SDL opens once for the whole binary (every file's tests).
const auto* const g_env = ::testing::AddGlobalTestEnvironment(new test::SdlEnvironment);

// Records what reaches it: message and wParam.
class Probe : public SWindow {
  SOUI_CLASS_NAME(Probe, SWindow, L"probe")
 public:
  Probe() { focusable_ = TRUE; }
  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override {
    switch (msg) {
      case WM_KEYDOWN: case WM_KEYUP: case WM_CHAR: case WM_MOUSEWHEEL: case WM_MOUSELEAVE:
      case WM_LBUTTONDOWN: case WM_LBUTTONDBLCLK: case WM_RBUTTONDOWN: case WM_RBUTTONUP:
      case WM_MBUTTONDOWN:
        got.push_back({msg, msg == WM_MOUSEWHEEL ? static_cast<WPARAM>(static_cast<short>(HIWORD(wp))) : wp});
        break;
      default:
        break;
    }
    return SWindow::ProcessSwndMessage(msg, wp, lp, result);
  }
  std::vector<std::pair<UINT, WPARAM>> got;
};

class SdlBackendTest : public test::SdlTestBase {
 protected:
  void SetUp() override {
    SdlTestBase::SetUp();
    app_.GetFactory().RegisterWindowClass<Probe>();
  }
};

uint32_t PixelAt(cairo_surface_t* s, int x, int y) {
  cairo_surface_flush(s);
  const unsigned char* row = cairo_image_surface_get_data(s) + y * cairo_image_surface_get_stride(s);
  return reinterpret_cast<const uint32_t*>(row)[x] & 0xFFFFFF;
}

TEST_F(SdlBackendTest, AShownHostPutsItsFrameOnTheRealWindow) {
  SHostWnd host;
  ASSERT_TRUE(host.InitFromXmlText(
      L"<SOUI title='frame' width='160' height='120'><root colorBkgnd='#FF0000'>"
      L"<window pos='40,30,@60,@50' colorBkgnd='#0000FF'/></root></SOUI>"));
  ASSERT_TRUE(host.Create(nullptr, 20, 20));
  SDL_Window* win = sdl_->GetSdlWindow(&host);
  ASSERT_NE(win, nullptr);
  EXPECT_FALSE(SDL_GetWindowFlags(win) & SDL_WINDOW_SHOWN);  // hidden until shown
  EXPECT_STREQ(SDL_GetWindowTitle(win), "frame");
  host.ShowWindow(SW_SHOW);
  EXPECT_TRUE(SDL_GetWindowFlags(win) & SDL_WINDOW_SHOWN);
  ASSERT_TRUE(PumpUntil([&] { return host.GetPaintCount() > 0; }));
  int w = 0, h = 0;
  SDL_GetWindowSize(win, &w, &h);
  EXPECT_EQ(w, 160);
  EXPECT_EQ(h, 120);

  const std::string png = ::testing::TempDir() + "sdl_capture_" + std::to_string(getpid()) + ".png";
  ASSERT_TRUE(sdl_->CaptureWindow(&host, png));
  cairo_surface_t* shot = cairo_image_surface_create_from_png(png.c_str());
  std::remove(png.c_str());
  ASSERT_EQ(cairo_surface_status(shot), CAIRO_STATUS_SUCCESS);
  EXPECT_EQ(cairo_image_surface_get_width(shot), 160);
  auto* frame = dynamic_cast<CairoRenderTarget*>(host.GetFrame());
  ASSERT_NE(frame, nullptr);
  const struct { int x, y; uint32_t rgb; } points[] = {
      {0, 0, 0xFF0000}, {159, 119, 0xFF0000}, {39, 50, 0xFF0000},
      {40, 30, 0x0000FF}, {99, 79, 0x0000FF}, {100, 80, 0xFF0000}};
  for (const auto& p : points) {
    EXPECT_EQ(PixelAt(frame->Surface(), p.x, p.y), p.rgb) << p.x << "," << p.y;
    EXPECT_EQ(PixelAt(shot, p.x, p.y), p.rgb) << p.x << "," << p.y;
  }
  cairo_surface_destroy(shot);

  // A later change sends only its own rectangle to the window.
  host.GetRoot()->GetWindow(GSW_FIRSTCHILD)->SetAttribute(L"colorBkgnd", L"#00FF00", FALSE);
  const int painted = host.GetPaintCount();
  ASSERT_TRUE(PumpUntil([&] { return host.GetPaintCount() > painted; }));
  EXPECT_EQ(sdl_->GetLastPresented(&host), std::vector<CRect>{CRect(40, 30, 100, 80)});
  ASSERT_TRUE(sdl_->CaptureWindow(&host, png));
  shot = cairo_image_surface_create_from_png(png.c_str());
  std::remove(png.c_str());
  EXPECT_EQ(PixelAt(shot, 40, 30), 0x00FF00u);
  EXPECT_EQ(PixelAt(shot, 39, 30), 0xFF0000u);
  cairo_surface_destroy(shot);
}

TEST_F(SdlBackendTest, ToolWindowsStayOffTheTaskbar) {
  SHostWnd tool, normal;
  tool.InitFromXmlText(L"<SOUI width='50' height='40' toolWindow='1'><root/></SOUI>");
  normal.InitFromXmlText(L"<SOUI width='50' height='40'><root/></SOUI>");
  tool.Create();
  normal.Create();
  EXPECT_TRUE(SDL_GetWindowFlags(sdl_->GetSdlWindow(&tool)) & SDL_WINDOW_SKIP_TASKBAR);
  EXPECT_FALSE(SDL_GetWindowFlags(sdl_->GetSdlWindow(&normal)) & SDL_WINDOW_SKIP_TASKBAR);
  tool.DestroyWindow();
  EXPECT_EQ(sdl_->GetSdlWindow(&tool), nullptr);
  EXPECT_EQ(sdl_->WindowCount(), 1u);
}

TEST_F(SdlBackendTest, APushedClickOnAButtonFiresItsCommand) {
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='200' height='100'><root>"
                       L"<button name='go' id='77' pos='20,20,@80,@30' text='Go'/></root></SOUI>");
  host.Create(nullptr, 30, 30);
  int command_from = 0;
  host.SetEventObserver([&](EventArgs* e) {
    if (e->GetID() == EVT_CMD) command_from = e->idFrom;
  });
  host.ShowWindow(SW_SHOW);
  ASSERT_TRUE(PumpUntil([&] { return host.GetPaintCount() > 0; }));  // laid out and on screen
  PushClick(WindowId(&host), Center(host.FindChildByName(L"go")));
  EXPECT_TRUE(PumpUntil([&] { return command_from != 0; }));
  EXPECT_EQ(command_from, 77);
}

struct InputCase {
  const char* name;
  std::function<void(uint32_t wid, CPoint at)> push;
  std::vector<std::pair<UINT, WPARAM>> expected;
};

TEST_F(SdlBackendTest, SdlInputArrivesAsWindowsMessages) {
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='200' height='100'><root>"
                       L"<probe name='p' pos='0,0,-0,-0'/></root></SOUI>");
  host.Create(nullptr, 40, 40);
  host.ShowWindow(SW_SHOW);
  auto* probe = host.FindChildByName2<Probe>(L"p");
  ASSERT_NE(probe, nullptr);
  host.SetFocus(probe);
  auto key = [](SDL_Keycode sym, bool down, Uint16 mod = 0) {
    SDL_Event e{};
    e.type = down ? SDL_KEYDOWN : SDL_KEYUP;
    e.key.state = down ? SDL_PRESSED : SDL_RELEASED;
    e.key.keysym.sym = sym;
    e.key.keysym.mod = mod;
    return e;
  };
  auto wheel = [](int y, CPoint at) {
    SDL_Event e{};
    e.type = SDL_MOUSEWHEEL;
    e.wheel.y = y;
    e.wheel.mouseX = at.x;
    e.wheel.mouseY = at.y;
    return e;
  };
  auto with_id = [](SDL_Event e, uint32_t wid) {
    // Every event kind keeps windowID right after type and timestamp.
    e.key.windowID = wid;
    return e;
  };
  const std::vector<InputCase> cases = {
      {"letter", [&](uint32_t id, CPoint) { Push(with_id(key(SDLK_q, true), id)); Push(with_id(key(SDLK_q, false), id)); },
       {{WM_KEYDOWN, 'Q'}, {WM_KEYUP, 'Q'}}},
      {"digit", [&](uint32_t id, CPoint) { Push(with_id(key(SDLK_7, true), id)); }, {{WM_KEYDOWN, '7'}}},
      {"return adds its character", [&](uint32_t id, CPoint) { Push(with_id(key(SDLK_RETURN, true), id)); },
       {{WM_KEYDOWN, VK_RETURN}, {WM_CHAR, '\r'}}},
      {"backspace adds its character", [&](uint32_t id, CPoint) { Push(with_id(key(SDLK_BACKSPACE, true), id)); },
       {{WM_KEYDOWN, VK_BACK}, {WM_CHAR, 0x08}}},
      {"ctrl+backspace has no character",
       [&](uint32_t id, CPoint) { Push(with_id(key(SDLK_BACKSPACE, true, KMOD_LCTRL), id)); },
       {{WM_KEYDOWN, VK_BACK}}},
      {"navigation keys",
       [&](uint32_t id, CPoint) {
         for (SDL_Keycode k : {SDLK_LEFT, SDLK_RIGHT, SDLK_UP, SDLK_DOWN, SDLK_HOME, SDLK_END, SDLK_DELETE, SDLK_SPACE})
           Push(with_id(key(k, true), id));
       },
       {{WM_KEYDOWN, VK_LEFT}, {WM_KEYDOWN, VK_RIGHT}, {WM_KEYDOWN, VK_UP}, {WM_KEYDOWN, VK_DOWN},
        {WM_KEYDOWN, VK_HOME}, {WM_KEYDOWN, VK_END}, {WM_KEYDOWN, VK_DELETE}, {WM_KEYDOWN, VK_SPACE}}},
      {"unmapped key is dropped", [&](uint32_t id, CPoint) { Push(with_id(key(SDLK_F13, true), id)); Push(with_id(key(SDLK_a, true), id)); },
       {{WM_KEYDOWN, 'A'}}},
      {"text is one WM_CHAR per code point",
       [&](uint32_t id, CPoint) {
         SDL_Event e{};
         e.type = SDL_TEXTINPUT;
         e.text.windowID = id;
         SDL_strlcpy(e.text.text, "a\xC3\xA9\xE4\xB8\xAD\xF0\x9F\x98\x80", sizeof(e.text.text));
         Push(e);
       },
       {{WM_CHAR, 'a'}, {WM_CHAR, 0xE9}, {WM_CHAR, 0x4E2D}, {WM_CHAR, 0x1F600}}},
      {"wheel notches are 120 each",
       [&](uint32_t id, CPoint at) { Push(with_id(wheel(1, at), id)); Push(with_id(wheel(-2, at), id)); },
       {{WM_MOUSEWHEEL, 120}, {WM_MOUSEWHEEL, static_cast<WPARAM>(-240)}}},
      {"second click of a double click",
       [&](uint32_t id, CPoint at) {
         PushButton(id, SDL_BUTTON_LEFT, true, at, 1);
         PushButton(id, SDL_BUTTON_LEFT, false, at, 1);
         PushButton(id, SDL_BUTTON_LEFT, true, at, 2);
         PushButton(id, SDL_BUTTON_LEFT, false, at, 2);
       },
       {{WM_LBUTTONDOWN, MK_LBUTTON}, {WM_LBUTTONDBLCLK, MK_LBUTTON}}},
      {"right and middle buttons",
       [&](uint32_t id, CPoint at) {
         PushButton(id, SDL_BUTTON_RIGHT, true, at);
         PushButton(id, SDL_BUTTON_RIGHT, false, at);
         PushButton(id, SDL_BUTTON_MIDDLE, true, at);
         PushButton(id, SDL_BUTTON_MIDDLE, false, at);
       },
       {{WM_RBUTTONDOWN, MK_RBUTTON}, {WM_RBUTTONUP, 0}, {WM_MBUTTONDOWN, MK_MBUTTON}}},
      {"leaving the window",
       [&](uint32_t id, CPoint at) {
         SDL_Event m{};
         m.type = SDL_MOUSEMOTION;
         m.motion.windowID = id;
         m.motion.x = at.x;
         m.motion.y = at.y;
         Push(m);
         PushWindowEvent(id, SDL_WINDOWEVENT_LEAVE);
       },
       {{WM_MOUSELEAVE, 0}}},
      {"events for another window are ignored",
       [&](uint32_t id, CPoint) { Push(with_id(key(SDLK_b, true), id + 1000)); Push(with_id(key(SDLK_c, true), id)); },
       {{WM_KEYDOWN, 'C'}}},
  };
  const uint32_t wid = WindowId(&host);
  for (const InputCase& c : cases) {
    SCOPED_TRACE(c.name);
    PumpUntil([] { return SDL_PeepEvents(nullptr, 0, SDL_PEEKEVENT, SDL_FIRSTEVENT, SDL_LASTEVENT) == 0; });
    probe->got.clear();
    c.push(wid, CPoint(100, 50));
    EXPECT_TRUE(PumpUntil([&] { return probe->got.size() >= c.expected.size(); }));
    sdl_->PumpEvents(0);  // nothing more may follow
    EXPECT_EQ(probe->got, c.expected);
  }
}

TEST_F(SdlBackendTest, AResizeFromOutsideResizesTheHostAndItsFrame) {
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='120' height='80' resizable='1'><root colorBkgnd='#00FF00'/></SOUI>");
  host.Create(nullptr, 50, 50);
  host.ShowWindow(SW_SHOW);
  ASSERT_TRUE(PumpUntil([&] { return host.GetPaintCount() > 0; }));
  PushWindowEvent(WindowId(&host), SDL_WINDOWEVENT_RESIZED, 180, 90);
  ASSERT_TRUE(PumpUntil([&] { return host.GetFrame() && host.GetFrame()->GetSize() == CSize(180, 90); }));
  EXPECT_EQ(host.GetWindowRect().Size(), CSize(180, 90));
  int w = 0, h = 0;
  SDL_GetWindowSize(sdl_->GetSdlWindow(&host), &w, &h);
  EXPECT_EQ(CSize(w, h), CSize(180, 90));
}

const wchar_t kDialog[] =
    L"<SOUI width='200' height='100'><root>"
    L"<button name='ok' id='IDOK' pos='10,60,@80,@30' text='OK'/>"
    L"<button name='cancel' id='IDCANCEL' pos='110,60,@80,@30' text='Cancel'/>"
    L"</root></SOUI>";

class SdlDialogTest : public SdlBackendTest {
 protected:
  // Runs the dialog with `act` pushed from a clock timer once the loop runs;
  // a guard timer ends a stuck loop with -2.
  int RunDialog(const std::function<void(SHostDialog&)>& act) {
    SHostDialog dlg;
    dlg.InitFromXmlText(kDialog);
    dlg.Create(nullptr, 60, 60);
    had_window_ = sdl_->GetSdlWindow(&dlg) != nullptr;
    auto& clock = app_.GetClock();
    const auto t = clock.SetTimer(20, [&] {
      owner_enabled_in_loop_ = IsWindowEnabled(owner_.m_hWnd);
      act(dlg);
    }, false);
    const auto guard = clock.SetTimer(test::kBoundMs, [&] { dlg.EndDialog(-2); }, false);
    const int code = dlg.DoModal(owner_.m_hWnd);
    clock.KillTimer(t);
    clock.KillTimer(guard);
    return code;
  }
  void SetUp() override {
    SdlBackendTest::SetUp();
    owner_.SetBackend(sdl_);  // constructed before Install made sdl_ the default
    owner_.InitFromXmlText(L"<SOUI width='300' height='200'><root/></SOUI>");
    owner_.Create(nullptr, 0, 0);
    owner_.ShowWindow(SW_SHOW);
  }
  SHostWnd owner_;
  bool had_window_ = false;
  bool owner_enabled_in_loop_ = true;
};

TEST_F(SdlDialogTest, APushedClickOnOkEndsDoModalWithIdOk) {
  EXPECT_EQ(RunDialog([this](SHostDialog& dlg) { PushClick(WindowId(&dlg), Center(dlg.FindChildByName(L"ok"))); }),
            IDOK);
  EXPECT_TRUE(had_window_);  // the library's own host got a real window
  EXPECT_FALSE(owner_enabled_in_loop_);
  EXPECT_TRUE(IsWindowEnabled(owner_.m_hWnd));
  EXPECT_EQ(sdl_->WindowCount(), 1u);  // the dialog's window is gone, the owner's stays
}

TEST_F(SdlDialogTest, ClosingTheWindowOrEscapeCancels) {
  EXPECT_EQ(RunDialog([this](SHostDialog& dlg) { PushWindowEvent(WindowId(&dlg), SDL_WINDOWEVENT_CLOSE); }),
            IDCANCEL);
  EXPECT_EQ(RunDialog([this](SHostDialog& dlg) {
              SDL_Event e{};
              e.type = SDL_KEYDOWN;
              e.key.windowID = WindowId(&dlg);
              e.key.keysym.sym = SDLK_ESCAPE;
              Push(e);
            }),
            IDCANCEL);
}

TEST_F(SdlBackendTest, MainLoopEndsWhenTheLastVisibleWindowIsClosed) {
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='100' height='60'><root/></SOUI>");
  host.Create(nullptr, 10, 10);
  host.ShowWindow(SW_SHOW);
  const uint32_t wid = WindowId(&host);
  app_.GetClock().SetTimer(20, [wid] { PushWindowEvent(wid, SDL_WINDOWEVENT_CLOSE); }, false);
  bool timed_out = false;
  const auto guard = app_.GetClock().SetTimer(test::kBoundMs, [&timed_out] { timed_out = true; }, false);
  sdl_->RunMainLoop(app_, [&] { return timed_out; });
  app_.GetClock().KillTimer(guard);
  EXPECT_FALSE(timed_out);
  EXPECT_EQ(host.m_hWnd, nullptr);  // a plain host is destroyed by closing
}

// An idle window costs nothing: once the window system has had its say,
// the loop sleeps until the one timer that ends it.
TEST_F(SdlBackendTest, AnIdleHostDoesNotWakeTheLoop) {
  SHostWnd host;
  host.InitFromXmlText(
      L"<SOUI width='320' height='200'><root colorBkgnd='#FFFFFF'>"
      L"<edit pos='10,10,@200,@24'/><button pos='10,[10,@80,@28'>OK</button>"
      L"<combobox pos='10,[10,@120,@26'><items><item text='a'/></items></combobox>"
      L"<scrollview pos='10,[10,@200,@60' viewSize='-1,200'><text pos='0,0'>notes</text></scrollview>"
      L"</root></SOUI>");
  host.Create(nullptr, 10, 10);
  host.ShowWindow(SW_SHOW);
  bool settled = false;
  const auto settle = app_.GetClock().SetTimer(300, [&settled] { settled = true; }, false);
  sdl_->RunMainLoop(app_, [&] { return settled; });
  app_.GetClock().KillTimer(settle);

  const uint64_t before = sdl_->GetWakeCount();
  bool done = false;
  const auto end = app_.GetClock().SetTimer(1000, [&done] { done = true; }, false);
  sdl_->RunMainLoop(app_, [&] { return done; });
  app_.GetClock().KillTimer(end);
  EXPECT_EQ(sdl_->GetWakeCount() - before, 1u);  // the end timer, nothing else
  host.DestroyWindow();
}

}  // namespace
}  // namespace SOUI

namespace SOUI {
namespace {

// Notes typed characters and input-method messages.
class TextProbe : public SWindow {
  SOUI_CLASS_NAME(TextProbe, SWindow, L"textprobe")
 public:
  TextProbe() { focusable_ = TRUE; }
  UINT OnGetDlgCode() const override { return SC_WANTCHARS; }
  SStringW GetCursorName(CPoint) const override { return L"ibeam"; }
  BOOL ProcessSwndMessage(UINT msg, WPARAM wp, LPARAM lp, LRESULT& result) override {
    if (msg == WM_CHAR) log += SStringW(L"char:") + static_cast<wchar_t>(wp) + L" ";
    if (msg == WM_KEYDOWN && GetKeyState(VK_CONTROL) < 0) log += SStringW(L"ctrl+") + static_cast<wchar_t>(wp) + L" ";
    if (msg == WM_IME_COMPOSITION) {
      log += (wp == GCS_RESULTSTR ? L"commit:" : L"comp:") + reinterpret_cast<const ImeText*>(lp)->text + L" ";
    }
    return SWindow::ProcessSwndMessage(msg, wp, lp, result);
  }
  SStringW log;
};

class SdlTextTest : public SdlBackendTest {
 protected:
  void SetUp() override {
    SdlBackendTest::SetUp();
    app_.GetFactory().RegisterWindowClass<TextProbe>();
  }
  static SDL_Event Text(uint32_t wid, const char* utf8, bool editing, int start = 0) {
    SDL_Event e{};
    e.type = editing ? SDL_TEXTEDITING : SDL_TEXTINPUT;
    if (editing) {
      e.edit.windowID = wid;
      SDL_strlcpy(e.edit.text, utf8, sizeof(e.edit.text));
      e.edit.start = start;
    } else {
      e.text.windowID = wid;
      SDL_strlcpy(e.text.text, utf8, sizeof(e.text.text));
    }
    return e;
  }
};

TEST_F(SdlTextTest, TypedKeysAreCharactersAndInputMethodTextIsComposedThenCommitted) {
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='200' height='100'><root>"
                       L"<textprobe name='p' pos='0,0,-0,-0'/></root></SOUI>");
  host.Create(nullptr, 40, 40);
  host.ShowWindow(SW_SHOW);
  auto* probe = host.FindChildByName2<TextProbe>(L"p");
  ASSERT_NE(probe, nullptr);
  host.SetFocus(probe);
  EXPECT_TRUE(SDL_IsTextInputActive());  // a window that takes text has the focus
  const uint32_t wid = WindowId(&host);
  Push(Text(wid, "a", false));
  Push(Text(wid, "ni", true, 2));
  Push(Text(wid, "\xE4\xBD\xA0", false));  // the composition's result
  Push(Text(wid, "haoma", true, 5));
  Push(Text(wid, "\xE5\xA5\xBD\xE5\x90\x97", false));  // two characters at once
  SDL_Event ctrl_c{};
  ctrl_c.type = SDL_KEYDOWN;
  ctrl_c.key.windowID = wid;
  ctrl_c.key.state = SDL_PRESSED;
  ctrl_c.key.keysym.sym = SDLK_c;
  ctrl_c.key.keysym.mod = KMOD_LCTRL;
  Push(ctrl_c);
  const SStringW want = L"char:a comp:ni commit:\x4F60 comp:haoma commit:\x597D\x5417 ctrl+C ";
  EXPECT_TRUE(PumpUntil([&] { return probe->log == want; })) << probe->log.ToUtf8();
  host.SetFocus(nullptr);
  EXPECT_FALSE(SDL_IsTextInputActive());
}

TEST_F(SdlTextTest, TheSystemClipboardAndCursorsAreSdls) {
  app_.GetClipboard().SetText(L"12.5\x5143");
  char* raw = SDL_GetClipboardText();
  EXPECT_STREQ(raw, "12.5\xE5\x85\x83");
  SDL_free(raw);
  SDL_SetClipboardText("from sdl");
  EXPECT_EQ(app_.GetClipboard().GetText(), L"from sdl");

  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='200' height='100'><root>"
                       L"<textprobe name='p' pos='0,0,100,100'/></root></SOUI>");
  host.Create(nullptr, 40, 40);
  host.ShowWindow(SW_SHOW);
  SDL_Cursor* before = SDL_GetCursor();
  SDL_Event m{};
  m.type = SDL_MOUSEMOTION;
  m.motion.windowID = WindowId(&host);
  m.motion.x = 50;
  m.motion.y = 50;
  Push(m);
  EXPECT_TRUE(PumpUntil([&] { return host.GetCursorName() == L"ibeam"; }));
  EXPECT_NE(SDL_GetCursor(), before);
}

}  // namespace
}  // namespace SOUI

namespace SOUI {
namespace {

TEST_F(SdlTextTest, TypingIntoAnEditThroughSdlEvents) {
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='300' height='80'><root>"
                       L"<edit name='e' pos='10,10,-10,40'/></root></SOUI>");
  host.Create(nullptr, 40, 40);
  host.ShowWindow(SW_SHOW);
  auto* edit = host.FindChildByName2<SEdit>(L"e");
  ASSERT_NE(edit, nullptr);
  const uint32_t wid = WindowId(&host);
  PushClick(wid, CPoint(50, 25));  // a click gives it the focus
  ASSERT_TRUE(PumpUntil([&] { return edit->IsFocused() != FALSE; }));
  EXPECT_TRUE(SDL_IsTextInputActive());
  for (const char* t : {"6", "0", "0", "5", "x"}) Push(Text(wid, t, false));
  SDL_Event back{};
  back.type = SDL_KEYDOWN;
  back.key.windowID = wid;
  back.key.state = SDL_PRESSED;
  back.key.keysym.sym = SDLK_BACKSPACE;
  Push(back);
  Push(Text(wid, "gu", true, 2));
  Push(Text(wid, "\xE8\x82\xA1", false));
  EXPECT_TRUE(PumpUntil([&] { return edit->GetWindowText() == L"6005\x80A1"; })) << edit->GetWindowText().ToUtf8();
}

}  // namespace
}  // namespace SOUI

namespace SOUI {
namespace {

TEST_F(SdlBackendTest, TheWheelAndPageKeysScrollAViewInARealWindow) {
  SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='200' height='150'><root>"
                       L"<scrollview name='sv' pos='0,0,-0,-0' viewSize='-1,1000'>"
                       L"<button name='b' pos='10,10,@80,@30'/></scrollview></root></SOUI>");
  host.Create(nullptr, 40, 40);
  host.ShowWindow(SW_SHOW);
  auto* sv = host.FindChildByName2<SScrollView>(L"sv");
  ASSERT_NE(sv, nullptr);
  const uint32_t wid = WindowId(&host);
  SDL_Event wheel{};
  wheel.type = SDL_MOUSEWHEEL;
  wheel.wheel.windowID = wid;
  wheel.wheel.y = -2;  // two notches toward the user
  wheel.wheel.mouseX = 50;
  wheel.wheel.mouseY = 50;
  Push(wheel);
  EXPECT_TRUE(PumpUntil([&] { return sv->GetViewOrigin().y == 2 * 3 * 16; })) << sv->GetViewOrigin().y;
  PushClick(wid, CPoint(20, 20));  // the button has scrolled away: the view itself, no focus
  SDL_Event key{};
  key.type = SDL_KEYDOWN;
  key.key.windowID = wid;
  key.key.state = SDL_PRESSED;
  key.key.keysym.sym = SDLK_END;
  Push(key);
  EXPECT_TRUE(PumpUntil([&] { return sv->GetViewOrigin().y == 1000 - 150; })) << sv->GetViewOrigin().y;
}

}  // namespace
}  // namespace SOUI
