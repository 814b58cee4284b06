// What the edit tests share: text measured with the recording target's fixed
// metric (every character 6 px wide, lines 12 px) and keys with modifiers.
#pragma once

#include <gtest/gtest.h>

#include "soui/edit.h"
#include "testing/recording_render.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace test {

class EditTestBase : public UiTestBase {
 protected:
  void SetUp() override {
    UiTestBase::SetUp();
    app_->SetMeasureTarget(std::make_unique<RecordingRenderTarget>());
  }
  void Key(UINT vk, bool ctrl = false, bool shift = false) {
    if (ctrl) gen().PressKey(VK_CONTROL);
    if (shift) gen().PressKey(VK_SHIFT);
    gen().PressAndReleaseKey(vk);
    if (shift) gen().ReleaseKey(VK_SHIFT);
    if (ctrl) gen().ReleaseKey(VK_CONTROL);
  }
  // The selection as "start-end".
  SStringW Sel(SEdit* e) {
    long s = 0, t = 0;
    e->GetSel(s, t);
    return SStringW().Format2(L"%ld-%ld", s, t);
  }
};

}  // namespace test
}  // namespace SOUI
