// Internal to the popups' views (menu rows, the guide's bubble); not
// installed, not API: the one-colour shapes they paint.
#pragma once

#include <algorithm>

#include "soui/render.h"

namespace QVStandardCtrls {
namespace popup_paint {

// A rounded rectangle filled with color, no outline of another colour.
inline void FillRound(SOUI::IRenderTarget* rt, const SOUI::CRect& rc, int radius, COLORREF color) {
  SOUI::IBrushPtr old = rt->SelectBrush(rt->CreateSolidColorBrush(color));
  SOUI::IPenPtr old_pen = rt->SelectPen(rt->CreatePen(SOUI::PS_SOLID, color, 0));
  rt->FillRoundRect(&rc, POINT{radius, radius});
  rt->SelectPen(old_pen);
  rt->SelectBrush(old);
}

// Joined lines through n points, at least one pixel wide.
inline void Polyline(SOUI::IRenderTarget* rt, const POINT* pts, int n, COLORREF color, int width) {
  SOUI::IPenPtr old = rt->SelectPen(rt->CreatePen(SOUI::PS_SOLID, color, std::max(width, 1)));
  rt->DrawLines(pts, n);
  rt->SelectPen(old);
}

}  // namespace popup_paint
}  // namespace QVStandardCtrls
