// Internal to the popup menus (menu.cpp, menu_view.cpp); not installed, not
// API: the view that paints one level's rows and the bubble of a disabled row.
#pragma once

#include <vector>

#include "popups/menu.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {
namespace menu_internal {

// Sizes in dp.
constexpr int kPadY = 4;         // above the first row and below the last
constexpr int kRowH = 28;
constexpr int kSepH = 9;
constexpr int kPadX = 8;
constexpr int kCheckW = 16;
constexpr int kIconW = 16;
constexpr int kGap = 8;
constexpr int kShortcutGap = 24;
constexpr int kArrowW = 8;
constexpr int kMinW = 160;
constexpr int kMaxW = 360;
constexpr int kHotInset = 4;     // the highlight stands off the border
constexpr int kRadius = 4;

inline int Dp(int v, int scale) { return v * scale / 100; }
// A colour of the menu table, or the light theme's value when the theme
// lacks it.
COLORREF MenuColor(const wchar_t* name, COLORREF fallback);
// One line of text in the default font at scale.
SOUI::CSize MeasureLabel(const SOUI::SStringW& text, int scale);
inline bool Selectable(const QVMenuAttr& a) { return !a.separator && a.enabled; }

}  // namespace menu_internal

// Where a menu view's mouse input goes.
class IQVMenuViewListener {
 public:
  virtual ~IQVMenuViewListener() = default;
  // row: the row under the mouse, -1 for none.
  virtual void OnViewMove(int level, int row) = 0;
  virtual void OnViewLeave(int level) = 0;
  virtual void OnViewPress(int level, int row) = 0;
  virtual void OnViewRelease(int level, int row) = 0;
};

// What a row does besides its record's command.
enum class MenuRole { kCommand, kSelectAll, kClear, kOk };

// ---- CQVMenuView ----------------------------------------------------------------

// The rows of one menu level, painted from its own state; mouse input goes
// to its listener.
class CQVMenuView : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVMenuView, SOUI::SWindow, L"qvmenuview")

 public:
  CQVMenuView(IQVMenuViewListener* listener, int level) : listener_(listener), level_(level) {}

  void SetRows(std::vector<QVMenuAttr> rows, std::vector<MenuRole> roles, bool multi, int scale);
  // The size the rows want (width clamped, height uncut).
  SOUI::CSize WantedSize() const { return wanted_; }
  int Count() const { return static_cast<int>(rows_.size()); }
  const QVMenuAttr* Row(int i) const { return i >= 0 && i < Count() ? &rows_[i] : nullptr; }
  QVMenuAttr* MutableRow(int i) { return i >= 0 && i < Count() ? &rows_[i] : nullptr; }
  MenuRole Role(int i) const { return i >= 0 && i < Count() ? roles_[i] : MenuRole::kCommand; }
  int Hot() const { return hot_; }
  int Top() const { return top_; }
  void SetHot(int row, bool ensure_visible);
  SOUI::CRect RowRect(int row) const;
  int RowAt(SOUI::CPoint pt) const;
  void ScrollTo(int top);
  // The listener is going: input is ignored from now on.
  void Detach() { listener_ = nullptr; }

  void OnPaint(SOUI::IRenderTarget* rt) override;
  void OnEraseBkgnd(SOUI::IRenderTarget* rt) override { (void)rt; }
  void OnMouseMove(UINT flags, SOUI::CPoint pt) override;
  void OnMouseLeave() override;
  void OnLButtonDown(UINT flags, SOUI::CPoint pt) override;
  void OnLButtonUp(UINT flags, SOUI::CPoint pt) override;
  BOOL OnMouseWheel(UINT flags, short delta, SOUI::CPoint pt) override;

 private:
  int Avail() const;
  int MaxTop() const;
  void PaintRow(SOUI::IRenderTarget* rt, int i, const SOUI::CRect& rc);

  IQVMenuViewListener* listener_;
  int level_;
  std::vector<QVMenuAttr> rows_;
  std::vector<MenuRole> roles_;
  std::vector<int> ys_;  // each row's top from the first row's, and the end
  bool multi_ = false;
  bool has_icon_ = false;
  bool has_arrow_ = false;  // some row has a submenu
  int scale_ = 100;
  int text_w_ = 0, shortcut_w_ = 0;
  SOUI::CSize wanted_;
  int hot_ = -1;
  int top_ = 0;
};

// A small bubble beside a disabled row saying why.
class CQVMenuTipView : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVMenuTipView, SOUI::SWindow, L"qvmenutip")

 public:
  explicit CQVMenuTipView(const SOUI::SStringW& text) : text_(text) {}
  void OnEraseBkgnd(SOUI::IRenderTarget* rt) override { (void)rt; }
  void OnPaint(SOUI::IRenderTarget* rt) override;

 private:
  SOUI::SStringW text_;
};

class CQVMenuTipWnd : public SOUI::SHostWnd {
 public:
  bool IsPopupWindow() const override { return true; }
};

}  // namespace QVStandardCtrls
