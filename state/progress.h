// CQVProgress ("qv_progress"): a thin progress bar, determinate (a value in
// a range, optionally with its percentage after the bar) or indeterminate (a
// segment sweeping along the track).
//
//   [=========-----------]  42%
//    track (theme), filled part in the style's colour, text in text_h2
//
// Attributes:
//   min, max, value   integers (hex allowed); a value outside [min, max] is
//                     clamped into it, a max below min is raised to min
//   showtext          "1": the percentage ("%d%%") after the bar
//   indeterminate     "1": the sweep instead of a value; it turns on the
//                     host's timeline only while the bar can be seen
//   qvstyle           PG1 4dp accent (default), PG2 8dp accent, PG3 4dp
//                     success, PG4 4dp error; another code changes nothing
//                     (logged). Ends are rounded.
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/swnd.h"
#include "state/state_common.h"

namespace QVStandardCtrls {

class QVSTDCTRLS_API CQVProgress : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVProgress, SOUI::SWindow, L"qv_progress")
 public:
  CQVProgress();
  ~CQVProgress() override;

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;

  // Both clamp as the attributes do; unchanged values repaint nothing.
  void SetRange(int min, int max);
  void SetValue(int value);
  void SetIndeterminate(bool on);
  int GetValue() const { return value_; }
  int GetMin() const { return min_; }
  int GetMax() const { return max_; }
  bool IsIndeterminate() const { return indeterminate_; }
  bool IsAnimating() const { return ticker_.IsRunning(); }
  const SOUI::SStringW& GetQVStyle() const { return style_code_; }
  // The percentage, 0-100 (0 for an empty range).
  int GetPercent() const;
  SOUI::SStringW GetPercentText() const { return SOUI::SStringW::Format2(L"%d%%", GetPercent()); }

  // The track, the filled part (or the sweep) in host coordinates.
  SOUI::CRect GetTrackRect() const;
  SOUI::CRect GetFilledRect() const;

  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnShowWindow(BOOL show, UINT status) override;
  int OnCreate() override;
  void OnDestroy() override;

 protected:
  SOUI::CSize MeasureContent(int width) override;

  HRESULT OnAttrMin(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMax(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrValue(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrShowText(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrIndeterminate(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);

 private:
  int TextWidth() const;

  int min_ = 0, max_ = 100, value_ = 0;
  bool show_text_ = false;
  bool indeterminate_ = false;
  uint32_t sweep_start_ = 0;
  int bar_dp_ = 4;
  SOUI::SStringW style_code_ = L"PG1";
  SOUI::ThemedColor fill_, track_;
  QVFrameTicker ticker_;
};

}  // namespace QVStandardCtrls
