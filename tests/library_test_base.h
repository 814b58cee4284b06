// The fixture of the controls library's tests: the UI test base with the
// default theme loaded, the library's classes registered and text measured
// with the recording target's fixed metric (so layouts do not depend on fonts).
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tuple>

#include "framework/control_classes.h"
#include "testing/recording_render.h"
#include "testing/ui_test_base.h"

namespace QVStandardCtrls {
namespace test {

class LibraryTestBase : public SOUI::test::UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    ASSERT_TRUE(app_->GetResProvider().LoadUiDefFile(
        SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/uires.xml")));
    app_->SetMeasureTarget(std::make_unique<SOUI::RecordingRenderTarget>());
    RegisterQVStandardCtrls(app_->GetFactory());
  }
};

// Rendered looks compared with reference PNGs, for each (zoom, dark) pair:
// the dark theme over the light one, the zoom set, real text metrics so that
// the picture shows what a user sees.
class LookTestBase : public LibraryTestBase, public ::testing::WithParamInterface<std::tuple<int, bool>> {
 protected:
  void SetUp() override {
    LibraryTestBase::SetUp();
    zoom_ = std::get<0>(GetParam());
    dark_ = std::get<1>(GetParam());
    if (dark_) {
      ASSERT_TRUE(app_->GetResProvider().LoadUiDefFile(
          SOUI::SStringW::FromUtf8(QV_SOURCE_DIR "/theme/default/dark/uires.xml")));
    }
    app_->SetZoom(zoom_);
    app_->SetMeasureTarget(nullptr);
  }
  // tests/data/<what>_<zoom>[_dark].png
  std::string Reference(const char* what) const {
    return std::string(QV_SOURCE_DIR "/tests/data/") + what + "_" + std::to_string(zoom_) + (dark_ ? "_dark" : "") +
           ".png";
  }
  int zoom_ = 100;
  bool dark_ = false;
};

}  // namespace test
}  // namespace QVStandardCtrls
