// A toast on real SDL windows (run under Xvfb): the toast window slides over
// its owner, placed by the native window position, and what the two windows
// show is put together into one picture per step.
#include <cairo.h>
#include <gtest/gtest.h>

#include <string>
#include <unistd.h>

#include "framework/control_classes.h"
#include "popups/toast.h"
#include "sdl_test_base.h"
#include "soui/hostwnd.h"

namespace SOUI {
namespace {

class SdlToastTest : public test::SdlTestBase {
 protected:
  void SetUp() override {
    SdlTestBase::SetUp();
    ASSERT_TRUE(app_.GetResProvider().LoadUiDefFile(SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml")));
    QVStandardCtrls::RegisterQVStandardCtrls(app_.GetFactory());
  }
  std::string Capture(SHostWnd* host, const char* what) {
    const std::string png = ::testing::TempDir() + "sdl_toast_" + what + "_" + std::to_string(getpid()) + ".png";
    EXPECT_TRUE(sdl_->CaptureWindow(host, png));
    return png;
  }
};

// Both windows' pictures at their screen places, cropped to the owner.
cairo_surface_t* Compose(const std::string& owner_png, const CRect& owner_rc, const std::string& toast_png,
                         const CRect& toast_rc) {
  cairo_surface_t* owner = cairo_image_surface_create_from_png(owner_png.c_str());
  cairo_surface_t* toast = cairo_image_surface_create_from_png(toast_png.c_str());
  cairo_surface_t* out = cairo_image_surface_create(CAIRO_FORMAT_RGB24, owner_rc.Width(), owner_rc.Height());
  cairo_t* cr = cairo_create(out);
  cairo_set_source_surface(cr, owner, 0, 0);
  cairo_paint(cr);
  cairo_set_source_surface(cr, toast, toast_rc.left - owner_rc.left, toast_rc.top - owner_rc.top);
  cairo_paint(cr);
  cairo_destroy(cr);
  cairo_surface_destroy(owner);
  cairo_surface_destroy(toast);
  cairo_surface_flush(out);
  return out;
}

uint32_t PixelAt(cairo_surface_t* s, int x, int y) {
  const unsigned char* row = cairo_image_surface_get_data(s) + y * cairo_image_surface_get_stride(s);
  return reinterpret_cast<const uint32_t*>(row)[x] & 0xFFFFFF;
}

TEST_F(SdlToastTest, SlidesDownOverItsOwnerWindow) {
  SHostWnd owner;
  ASSERT_TRUE(owner.InitFromXmlText(
      L"<SOUI title='owner' width='480' height='260'><root colorBkgnd='#2F6BFF'>"
      L"<text pos='|0,|0' offset='-0.5,-0.5' font='size:16dp' colorText='#FFFFFF'>Trading window</text>"
      L"</root></SOUI>"));
  ASSERT_TRUE(owner.Create(nullptr, 100, 120));
  owner.ShowWindow(SW_SHOW);
  ASSERT_TRUE(PumpUntil([&] { return owner.GetPaintCount() > 0; }));

  ASSERT_TRUE(QVStandardCtrls::IQVToast::TrackPopupToast(owner.m_hWnd, QVStandardCtrls::QVToastIcon_Success,
                                                         L"Order filled", 0, 60000));
  std::shared_ptr<QVStandardCtrls::CQVToastWnd> toast = QVStandardCtrls::IQVToast::FindToastWnd(owner.m_hWnd);
  ASSERT_TRUE(toast);
  SDL_Window* win = sdl_->GetSdlWindow(toast.get());
  ASSERT_NE(win, nullptr);
  EXPECT_TRUE(SDL_GetWindowFlags(win) & SDL_WINDOW_SHOWN);
  // The slide is stepped by hand, with the tick the timer would run, so that
  // each picture shows one known step on the real clock.
  toast->KillTimer(QVStandardCtrls::CQVToastWnd::kShowTimerId);
  int step = -1;
  const int shots[] = {0, 2, 5};
  for (int shot : shots) {
    while (step < shot) {
      toast->OnTimer(QVStandardCtrls::CQVToastWnd::kShowTimerId);
      ++step;
    }
    // Painted and presented: nothing left dirty after a pump.
    sdl_->PumpEvents(20);
    ASSERT_TRUE(PumpUntil([&] { return toast->GetPaintCount() > 0 && toast->GetDirtyRect().IsRectEmpty(); }));
    // The native window stands where the toast placed it.
    const CRect rc = toast->GetWindowRect();
    int x = 0, y = 0, w = 0, h = 0;
    SDL_GetWindowPosition(win, &x, &y);
    SDL_GetWindowSize(win, &w, &h);
    EXPECT_EQ(CRect(x, y, x + w, y + h), rc) << "step " << shot;
    EXPECT_EQ(rc.left, 100 + (480 - rc.Width()) / 2);

    cairo_surface_t* picture = Compose(Capture(&owner, "owner"), owner.GetWindowRect(),
                                       Capture(toast.get(), "toast"), rc);
    const std::string out = ::testing::TempDir() + "sdl_toast_step" + std::to_string(shot) + ".png";
    cairo_surface_write_to_png(picture, out.c_str());
    std::printf("toast step %d (progress %.3f): %s\n", shot, toast->GetProgress(), out.c_str());
    // The card's white shows in the middle of the toast once it is in place;
    // at step 0 the card is still above the owner's top edge.
    const int cx = rc.CenterPoint().x - 100, cy = rc.top - 120 + rc.Height() / 2;
    if (shot == 5) {
      EXPECT_EQ(PixelAt(picture, cx - 10, cy), 0xFFFFFFu);
    } else if (shot == 0) {
      EXPECT_NE(PixelAt(picture, cx - 10, 5), 0xFFFFFFu);
    }
    cairo_surface_destroy(picture);
  }
  EXPECT_EQ(toast->GetWindowRect().top, 120 + 31);
}

}  // namespace
}  // namespace SOUI
