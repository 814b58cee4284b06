// Internal to the guide (guide.cpp, guide_view.cpp); not installed, not API:
// the view that paints one step's bubble.
#pragma once

#include "popups/guide.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {
namespace guide_internal {

// Sizes in dp that placement and painting share.
constexpr int kRadius = 8;
constexpr int kShadow = 6;  // room around the bubble for its shadow

inline int Dp(int v, int scale) { return v * scale / 100; }

}  // namespace guide_internal

// Where a bubble's clicks go.
class IQVGuideViewListener {
 public:
  virtual ~IQVGuideViewListener() = default;
  virtual void OnGuidePart(EnQVGuidePart part) = 0;
};

// One step's bubble, painted from its own state: content, placement inside
// the window and the part under the mouse.
class CQVGuideView : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVGuideView, SOUI::SWindow, L"qvguideview")

 public:
  explicit CQVGuideView(IQVGuideViewListener* listener) : listener_(listener) {}

  // Lays the step's content out for scale; BubbleSize() is then known.
  void SetContent(const QVGuideStep& step, int index, int count, int scale);
  SOUI::CSize BubbleSize() const { return size_; }
  int Scale() const { return scale_; }
  // The bubble's rectangle and the tail's point in this window's client
  // coordinates.
  void SetPlacement(const SOUI::CRect& bubble, EnQVGuideSide side, SOUI::CPoint tip);
  const SOUI::CRect& Bubble() const { return bubble_; }
  SOUI::CPoint Tip() const { return tip_; }
  EnQVGuideSide Side() const { return side_; }
  SOUI::CRect PartRect(EnQVGuidePart part) const;
  void Detach() { listener_ = nullptr; }

  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnEraseBkgnd(SOUI::IRenderTarget* rt) override { (void)rt; }
  void OnMouseMove(UINT flags, SOUI::CPoint pt) override;
  void OnMouseLeave() override;
  void OnLButtonDown(UINT flags, SOUI::CPoint pt) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;

 private:
  EnQVGuidePart PartAt(SOUI::CPoint pt) const;
  void SetHot(EnQVGuidePart part);
  void PaintTail(SOUI::IRenderTarget* rt, COLORREF bg, COLORREF border);
  void PaintButton(SOUI::IRenderTarget* rt, EnQVGuidePart part, const SOUI::SStringW& text);

  IQVGuideViewListener* listener_;
  QVGuideStep step_;
  int index_ = 0, count_ = 0, scale_ = 100;
  bool has_image_ = false;
  SOUI::CSize image_size_;
  int title_h_ = 0, text_h_ = 0;
  int prev_w_ = 0, next_w_ = 0;
  SOUI::SStringW prev_text_, next_text_;
  SOUI::CSize size_;
  SOUI::CRect bubble_;
  SOUI::CPoint tip_;
  EnQVGuideSide side_ = EnQVGuideSide::Below;
  EnQVGuidePart hot_ = EnQVGuidePart::None, pressed_ = EnQVGuidePart::None;
};

}  // namespace QVStandardCtrls
