// Win32 basic types, result codes and geometry helpers, as the toolkit and the
// controls use them. Names stay those of Win32 (global) and of the toolkit's
// geometry classes (namespace SOUI) so that control code reads unchanged.
#pragma once

#include <algorithm>
#include <cstdint>

typedef int BOOL;
#ifndef TRUE
#define TRUE 1
#endif
#ifndef FALSE
#define FALSE 0
#endif
typedef unsigned int UINT;
typedef uint32_t DWORD;
typedef uint16_t WORD;
typedef uint8_t BYTE;
typedef int32_t LONG;
typedef uintptr_t WPARAM;
typedef intptr_t LPARAM;
typedef intptr_t LRESULT;
typedef uint32_t COLORREF;
typedef int32_t HRESULT;
typedef const wchar_t* LPCWSTR;
typedef wchar_t* LPWSTR;

// Handles are opaque; a handle is only meaningful to the platform that issued it
// and is validated with IsWindow().
struct HWND__;
typedef HWND__* HWND;

constexpr HRESULT S_OK = 0;
constexpr HRESULT S_FALSE = 1;
constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001u);
constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005u);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
inline bool SUCCEEDED(HRESULT hr) { return hr >= 0; }
inline bool FAILED(HRESULT hr) { return hr < 0; }

// Colours are stored as r | g<<8 | b<<16 | a<<24, like the toolkit's COLORREF.
constexpr COLORREF RGBA(int r, int g, int b, int a) {
  return static_cast<COLORREF>((r & 0xFF) | ((g & 0xFF) << 8) | ((b & 0xFF) << 16) |
                               (static_cast<uint32_t>(a & 0xFF) << 24));
}
constexpr COLORREF RGB(int r, int g, int b) { return RGBA(r, g, b, 0xFF) & 0x00FFFFFFu; }
constexpr int GetRValue(COLORREF c) { return c & 0xFF; }
constexpr int GetGValue(COLORREF c) { return (c >> 8) & 0xFF; }
constexpr int GetBValue(COLORREF c) { return (c >> 16) & 0xFF; }
constexpr int GetAValue(COLORREF c) { return (c >> 24) & 0xFF; }
// The toolkit's "no colour": #ffffff00 parses to it, and painting skips it.
constexpr COLORREF CR_INVALID = 0x00FFFFFF;

// Standard dialog command ids.
constexpr int IDOK = 1;
constexpr int IDCANCEL = 2;
constexpr int IDABORT = 3;
constexpr int IDRETRY = 4;
constexpr int IDIGNORE = 5;
constexpr int IDYES = 6;
constexpr int IDNO = 7;
constexpr int IDCLOSE = 8;
constexpr int IDHELP = 9;

// Mouse key-state flags (the wParam of mouse messages).
constexpr UINT MK_LBUTTON = 0x0001;
constexpr UINT MK_RBUTTON = 0x0002;
constexpr UINT MK_SHIFT = 0x0004;
constexpr UINT MK_CONTROL = 0x0008;
constexpr UINT MK_MBUTTON = 0x0010;

// Virtual keys used by the controls and the dialog loop.
constexpr UINT VK_BACK = 0x08;
constexpr UINT VK_TAB = 0x09;
constexpr UINT VK_RETURN = 0x0D;
constexpr UINT VK_SHIFT = 0x10;
constexpr UINT VK_CONTROL = 0x11;
constexpr UINT VK_ESCAPE = 0x1B;
constexpr UINT VK_MENU = 0x12;
constexpr UINT VK_SPACE = 0x20;
constexpr UINT VK_PRIOR = 0x21;
constexpr UINT VK_NEXT = 0x22;
constexpr UINT VK_END = 0x23;
constexpr UINT VK_HOME = 0x24;
constexpr UINT VK_LEFT = 0x25;
constexpr UINT VK_UP = 0x26;
constexpr UINT VK_RIGHT = 0x27;
constexpr UINT VK_DOWN = 0x28;
constexpr UINT VK_INSERT = 0x2D;
constexpr UINT VK_DELETE = 0x2E;
constexpr UINT VK_F4 = 0x73;

// Window messages that travel through SWindow::SwndProc.
constexpr UINT WM_CREATE = 0x0001;
constexpr UINT WM_DESTROY = 0x0002;
constexpr UINT WM_SIZE = 0x0005;
constexpr UINT WM_ACTIVATE = 0x0006;
constexpr UINT WM_SETFOCUS = 0x0007;
constexpr UINT WM_KILLFOCUS = 0x0008;
constexpr UINT WM_PAINT = 0x000F;
constexpr UINT WM_CLOSE = 0x0010;
constexpr UINT WM_QUIT = 0x0012;
constexpr UINT WM_ERASEBKGND = 0x0014;
constexpr UINT WM_SHOWWINDOW = 0x0018;
constexpr UINT WM_KEYDOWN = 0x0100;
constexpr UINT WM_KEYUP = 0x0101;
constexpr UINT WM_CHAR = 0x0102;
constexpr UINT WM_IME_STARTCOMPOSITION = 0x010D;
constexpr UINT WM_IME_ENDCOMPOSITION = 0x010E;
constexpr UINT WM_IME_COMPOSITION = 0x010F;
constexpr UINT WM_INITDIALOG = 0x0110;
constexpr UINT WM_TIMER = 0x0113;
constexpr UINT WM_MOUSEMOVE = 0x0200;
constexpr UINT WM_LBUTTONDOWN = 0x0201;
constexpr UINT WM_LBUTTONUP = 0x0202;
constexpr UINT WM_LBUTTONDBLCLK = 0x0203;
constexpr UINT WM_RBUTTONDOWN = 0x0204;
constexpr UINT WM_RBUTTONUP = 0x0205;
constexpr UINT WM_MBUTTONDOWN = 0x0207;
constexpr UINT WM_MBUTTONUP = 0x0208;
constexpr UINT WM_MOUSEWHEEL = 0x020A;
constexpr UINT WM_MOUSEHOVER = 0x02A1;
constexpr UINT WM_MOUSELEAVE = 0x02A3;
constexpr UINT WM_USER = 0x0400;
constexpr UINT EM_GETSEL = 0x00B0;
constexpr UINT EM_SETSEL = 0x00B1;
constexpr UINT EM_REPLACESEL = 0x00C2;

// WM_IME_COMPOSITION's wParam: what the message carries.
constexpr UINT GCS_COMPSTR = 0x0008;    // the text being composed (empty: none)
constexpr UINT GCS_RESULTSTR = 0x0800;  // text the input method committed

// Edit notification codes (EventRENotify::iNotify).
constexpr UINT EN_SETFOCUS = 0x0100;
constexpr UINT EN_KILLFOCUS = 0x0200;
constexpr UINT EN_CHANGE = 0x0300;
constexpr UINT EN_MAXTEXT = 0x0501;

// What a window asks of the keyboard while focused (SWindow::OnGetDlgCode).
constexpr UINT SC_WANTARROWS = 0x0001;
constexpr UINT SC_WANTTAB = 0x0002;
constexpr UINT SC_WANTRETURN = 0x0004;
constexpr UINT SC_WANTCHARS = 0x0008;
constexpr UINT SC_WANTALLKEYS = 0xFFFF;

constexpr WORD LOWORD(uintptr_t v) { return static_cast<WORD>(v & 0xFFFF); }
constexpr WORD HIWORD(uintptr_t v) { return static_cast<WORD>((v >> 16) & 0xFFFF); }
constexpr LPARAM MAKELPARAM(int lo, int hi) {
  return static_cast<LPARAM>((static_cast<uint32_t>(lo) & 0xFFFF) |
                             ((static_cast<uint32_t>(hi) & 0xFFFF) << 16));
}
constexpr int GET_X_LPARAM(LPARAM lp) { return static_cast<int16_t>(lp & 0xFFFF); }
constexpr int GET_Y_LPARAM(LPARAM lp) { return static_cast<int16_t>((lp >> 16) & 0xFFFF); }

struct POINT {
  LONG x;
  LONG y;
};
struct SIZE {
  LONG cx;
  LONG cy;
};
struct RECT {
  LONG left;
  LONG top;
  LONG right;
  LONG bottom;
};
typedef const RECT* LPCRECT;
typedef RECT* LPRECT;

namespace SOUI {

class CPoint : public POINT {
 public:
  CPoint() : POINT{0, 0} {}
  CPoint(int x_, int y_) : POINT{x_, y_} {}
  CPoint(const POINT& p) : POINT(p) {}
  void Offset(int dx, int dy) { x += dx; y += dy; }
  bool operator==(const POINT& o) const { return x == o.x && y == o.y; }
  bool operator!=(const POINT& o) const { return !(*this == o); }
  CPoint operator+(const POINT& o) const { return CPoint(x + o.x, y + o.y); }
  CPoint operator-(const POINT& o) const { return CPoint(x - o.x, y - o.y); }
};

class CSize : public SIZE {
 public:
  CSize() : SIZE{0, 0} {}
  CSize(int cx_, int cy_) : SIZE{cx_, cy_} {}
  CSize(const SIZE& s) : SIZE(s) {}
  bool operator==(const SIZE& o) const { return cx == o.cx && cy == o.cy; }
  bool operator!=(const SIZE& o) const { return !(*this == o); }
};

class CRect : public RECT {
 public:
  CRect() : RECT{0, 0, 0, 0} {}
  CRect(int l, int t, int r, int b) : RECT{l, t, r, b} {}
  CRect(const RECT& r) : RECT(r) {}
  CRect(const RECT* r) : RECT(r ? *r : RECT{0, 0, 0, 0}) {}
  CRect(const POINT& pt, const SIZE& sz) : RECT{pt.x, pt.y, pt.x + sz.cx, pt.y + sz.cy} {}

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  CSize Size() const { return CSize(Width(), Height()); }
  CPoint TopLeft() const { return CPoint(left, top); }
  CPoint BottomRight() const { return CPoint(right, bottom); }
  CPoint CenterPoint() const { return CPoint((left + right) / 2, (top + bottom) / 2); }
  bool IsRectEmpty() const { return right <= left || bottom <= top; }
  bool IsRectNull() const { return left == 0 && top == 0 && right == 0 && bottom == 0; }
  void SetRectEmpty() { left = top = right = bottom = 0; }
  void SetRect(int l, int t, int r, int b) { left = l; top = t; right = r; bottom = b; }
  bool PtInRect(const POINT& p) const {
    return p.x >= left && p.x < right && p.y >= top && p.y < bottom;
  }
  void OffsetRect(int dx, int dy) { left += dx; right += dx; top += dy; bottom += dy; }
  void OffsetRect(const POINT& p) { OffsetRect(p.x, p.y); }
  void MoveToXY(int x, int y) { OffsetRect(x - left, y - top); }
  void MoveToX(int x) { OffsetRect(x - left, 0); }
  void MoveToY(int y) { OffsetRect(0, y - top); }
  void InflateRect(int dx, int dy) { left -= dx; top -= dy; right += dx; bottom += dy; }
  void InflateRect(int l, int t, int r, int b) { left -= l; top -= t; right += r; bottom += b; }
  void DeflateRect(int dx, int dy) { InflateRect(-dx, -dy); }
  void DeflateRect(const RECT& r) { InflateRect(-r.left, -r.top, -r.right, -r.bottom); }
  void NormalizeRect() {
    if (left > right) std::swap(left, right);
    if (top > bottom) std::swap(top, bottom);
  }
  // Empty result when the two do not overlap, like Win32 IntersectRect.
  bool IntersectRect(const RECT& a, const RECT& b) {
    left = std::max(a.left, b.left);
    top = std::max(a.top, b.top);
    right = std::min(a.right, b.right);
    bottom = std::min(a.bottom, b.bottom);
    if (IsRectEmpty()) { SetRectEmpty(); return false; }
    return true;
  }
  bool UnionRect(const RECT& a, const RECT& b) {
    const CRect ra(a), rb(b);
    if (ra.IsRectEmpty()) { *this = rb; return !rb.IsRectEmpty(); }
    if (rb.IsRectEmpty()) { *this = ra; return true; }
    SetRect(std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
            std::max(a.bottom, b.bottom));
    return true;
  }
  CRect operator&(const RECT& o) const { CRect r; r.IntersectRect(*this, o); return r; }
  CRect operator|(const RECT& o) const { CRect r; r.UnionRect(*this, o); return r; }
  bool operator==(const RECT& o) const {
    return left == o.left && top == o.top && right == o.right && bottom == o.bottom;
  }
  bool operator!=(const RECT& o) const { return !(*this == o); }
};

}  // namespace SOUI
