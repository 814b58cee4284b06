// CQVLegend ("qv_legend"): one entry of a chart legend, a colour mark beside
// a caption. A click toggles its checked state, so a host shows or hides the
// series; while off, mark and caption are drawn muted.
//
// Attributes:
//   color     mark colour (value or "@color\..." reference; default the
//             link colour)
//   mark      "square" (default), "line" or "dot"
//   checked   "0"/"false" starts off; on by default
//   qvstyle   a text style code for the caption (HR1 if none)
// Event: on_qvlegend_changed (29201) after each toggle, with the new state.
#pragma once

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/events.h"
#include "soui/stdctrls.h"
#include "soui/themed.h"

namespace QVStandardCtrls {

constexpr int EVT_QV_LEGEND_CHANGED = 29201;

class QVSTDCTRLS_API EventQVLegendChanged : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QV_LEGEND_CHANGED, L"on_qvlegend_changed")
 public:
  using SOUI::EventArgs::EventArgs;
  bool checked = true;
};

class QVSTDCTRLS_API CQVLegend : public SOUI::SButton {
  SOUI_CLASS_NAME(CQVLegend, SOUI::SButton, L"qv_legend")
 public:
  enum MarkShape { kMarkSquare = 0, kMarkLine, kMarkDot };

  CQVLegend();
  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  using SOUI::SWindow::GetDesiredSize;
  SOUI::CSize GetDesiredSize(int width, int height) override;
  void OnPaint(SOUI::IRenderTarget* rt) override;
  BOOL FireEvent(SOUI::EventArgs& evt) override;

  // No event when unchanged.
  void SetLegendChecked(bool checked);
  bool IsLegendChecked() const { return IsChecked() != FALSE; }
  MarkShape GetMarkShape() const { return shape_; }
  // The colour the mark is drawn with now (muted while off).
  COLORREF GetMarkPaintColor() const;

 protected:
  HRESULT OnAttrColor(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMark(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrChecked(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);

 private:
  SOUI::CSize MarkSize() const;
  COLORREF CaptionColor() const;

  SOUI::ThemedColor mark_color_;
  SOUI::ThemedColor muted_color_;
  MarkShape shape_ = kMarkSquare;
};

}  // namespace QVStandardCtrls
