// The whole gallery, light theme, at full height (every control on screen),
// with its host-side behaviour installed: what the page tests drive.
#pragma once

#include <gtest/gtest.h>

#include "apps/gallery/gallery.h"
#include "framework/control_classes.h"
#include "testing/ui_test_base.h"

namespace gallery {

class GalleryPageTest : public SOUI::test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    ASSERT_TRUE(LoadTheme(*app_, false));
    QVStandardCtrls::RegisterQVStandardCtrls(app_->GetFactory());
    ASSERT_NE(CreateHost(BuildLayout(*app_, true).c_str()), nullptr);
    InstallPageBehaviour(*host());
    Layout();
  }
  void Click(SOUI::SWindow* w) {
    ASSERT_NE(w, nullptr);
    gen().MoveMouseToCenterOf(w);
    gen().ClickLeftButton();
  }
  void Click(const wchar_t* name) { Click(Find(name)); }
};

}  // namespace gallery
