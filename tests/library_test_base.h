// The fixture of the controls library's tests: the UI test base with the
// default theme loaded, the library's classes registered and text measured
// with the recording target's fixed metric (so layouts do not depend on fonts).
#pragma once

#include <memory>

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

}  // namespace test
}  // namespace QVStandardCtrls
