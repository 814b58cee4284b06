// The toolkit's small standard controls beyond text and buttons:
// check, radio, link and progress.
//
// Check, radio and link use SWindow's press/hover behaviour unchanged:
//
//   input                      | state bits            | raises
//   ---------------------------+-----------------------+-------------------------
//   mouse enters / leaves      | Hover on / off        | on_state_changed
//   left press inside          | PushDown on, capture  | on_state_changed
//   release inside after press | PushDown off, toggles | on_state_changed, on_command
//   release outside            | PushDown off          | on_state_changed
//   Space key down (check)     | toggles               | on_state_changed, on_command
//
// A check change is the Check state bit changing, so "the check changed"
// notification is on_state_changed with WndState_Check differing between
// dwOldState and dwNewState; the click itself is on_command.
#pragma once

#include "soui/swnd.h"

namespace SOUI {

// "check": a box at the left, vertically centred, the text 4 px after it.
// Its skin ("skin", default "_skin.sys.checkbox") is drawn by GetDrawState();
// without a skin a plain box is drawn in the text colour.
class SCheckBox : public SWindow {
  SOUI_CLASS_NAME(SCheckBox, SWindow, L"check")
 public:
  SCheckBox();
  // 0..3 normal/hover/pushed/disabled unchecked, 4..7 the same checked.
  int GetDrawState() const;
  // Sets the Check state bit; no event when unchanged.
  virtual void SetCheck(BOOL checked);
  // The wish for a hand cursor; the toolkit's cursor handling reads it.
  const SStringW& GetCursorWish() const { return style_->cursor; }

  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void OnEraseBkgnd(IRenderTarget* rt) override;
  void OnPaint(IRenderTarget* rt) override;
  void OnLButtonUp(UINT flags, CPoint pt) override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  void OnChar(UINT ch, UINT repeat, UINT flags) override;

 protected:
  CSize MeasureContent(int width) override;
  // What a completed click or Space does: toggle.
  virtual void OnActivate();
  CSize BoxSize() const;
};

// "radio": checking one unchecks the other radios under the same parent
// that have the same "group" (no group: the radios without one). Clicking
// a checked radio leaves it checked.
class SRadioBox : public SCheckBox {
  SOUI_CLASS_NAME(SRadioBox, SCheckBox, L"radio")
 public:
  SRadioBox();
  void SetCheck(BOOL checked) override;
  const SStringW& GetGroup() const { return group_; }
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;

 protected:
  void OnActivate() override;

 private:
  SStringW group_;
};

// "link": text that underlines while hovered and raises on_command when
// clicked; "href" is kept for the host to open. Wants a hand cursor.
class SLink : public SWindow {
  SOUI_CLASS_NAME(SLink, SWindow, L"link")
 public:
  SLink();
  const SStringW& GetHref() const { return href_; }
  const SStringW& GetCursorWish() const { return style_->cursor; }
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void OnPaint(IRenderTarget* rt) override;

 private:
  SStringW href_;
};

// "progress": a bar from min to max with value clamped into that range
// (max below min is raised to min). "bkgndSkin"/"posSkin" draw the track and
// the filled part; without them "colorBkgnd" and "colorPos". showPercent="1"
// centres "NN%" on the bar.
class SProgress : public SWindow {
  SOUI_CLASS_NAME(SProgress, SWindow, L"progress")
 public:
  SProgress();
  void SetRange(int min, int max);
  void SetValue(int value);
  int GetValue() const { return value_; }
  int GetMin() const { return min_; }
  int GetMax() const { return max_; }
  // The filled width for a track of `width` px.
  int FilledWidth(int width) const;
  HRESULT SetAttribute(const SStringW& name, const SStringW& value, BOOL loading) override;
  void OnEraseBkgnd(IRenderTarget* rt) override;
  void OnPaint(IRenderTarget* rt) override;

 private:
  int min_ = 0;
  int max_ = 100;
  int value_ = 0;
  bool show_percent_ = false;
  ThemedSkin bkgnd_skin_;
  ThemedSkin pos_skin_;
  ThemedColor color_pos_;
};

class SObjectFactory;
void RegisterCheckControls(SObjectFactory& factory);

}  // namespace SOUI
