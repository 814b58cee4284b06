// The toolkit's standard controls that layouts and the library's controls
// build on: window, text, button, img, imgbtn, caption.
#pragma once

#include "soui/swnd.h"

namespace SOUI {

// "text": a label. Message-transparent, left-aligned by default.
// multiLines="1" breaks at newlines (and the two characters "\n") and wraps,
// with interHeight px between lines.
class SStatic : public SWindow {
  SOUI_CLASS_NAME(SStatic, SWindow, L"text")
 public:
  SStatic();
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void OnPaint(IRenderTarget* rt) override;
  BOOL IsMultiLines() const { return multi_lines_; }

 protected:
  CSize MeasureContent(int width) override;

 private:
  BOOL multi_lines_ = FALSE;
  static constexpr int kMaxInterHeight = 10000;
  int inter_height_ = 5;
};

// "button": a push button. Focusable; its skin is drawn by state (normal,
// hover, pushed, disabled); Space or Enter released while focused clicks it.
class SButton : public SWindow {
  SOUI_CLASS_NAME(SButton, SWindow, L"button")
 public:
  SButton();
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnKeyUp(UINT vk, UINT repeat, UINT flags) override;
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;

 private:
  bool key_down_ = false;
};

// "img": shows its skin (frame iconIndex) at the skin's size.
class SImageWnd : public SWindow {
  SOUI_CLASS_NAME(SImageWnd, SWindow, L"img")
 public:
  SImageWnd();
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  CSize GetDesiredSize(int width, int height) override;
  void OnEraseBkgnd(IRenderTarget* rt) override;
  int GetIconIndex() const { return icon_index_; }

 private:
  int icon_index_ = 0;
};

// "imgbtn": a button sized by its skin.
class SImageButton : public SButton {
  SOUI_CLASS_NAME(SImageButton, SButton, L"imgbtn")
 public:
  CSize GetDesiredSize(int width, int height) override;
};

// "caption": the draggable title area of a host. Moving the native window
// is the backend's job; the control itself only passes clicks on, and
// raises on_caption_dblclick on a double click for the host to decide.
class SCaption : public SWindow {
  SOUI_CLASS_NAME(SCaption, SWindow, L"caption")
 public:
  SCaption();
  void OnLButtonDblClk(UINT flags, CPoint pt) override;
};

class SObjectFactory;
// Registers "window" and the controls above.
void RegisterStandardControls(SObjectFactory& factory);

}  // namespace SOUI
