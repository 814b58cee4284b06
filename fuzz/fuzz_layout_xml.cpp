// Layout XML: any bytes given to a host as its layout, with the library's
// controls and the default theme, must survive building, layout, painting,
// a little mouse and keyboard input and time passing.
//
// The input is only the XML; where the mouse goes is drawn from a hash of
// it, so different layouts see different clicks but each one always the same.
#include <string>

#include "fuzz/fuzz_support.h"

namespace {

uint32_t Hash(const uint8_t* data, size_t size) {
  uint32_t h = 2166136261u;  // FNV-1a
  for (size_t i = 0; i < size; ++i) h = (h ^ data[i]) * 16777619u;
  return h;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using SOUI::CPoint;
  qvfuzz::FuzzApp fuzz;
  fuzz.app().GetResProvider().AddXml(L"LAYOUT", L"x", "<window pos='0,0,@10,@10'/>");
  SOUI::SHostWnd host;
  if (!host.InitFromXmlText(qvfuzz::Wide(std::string(reinterpret_cast<const char*>(data), size)))) return 0;
  constexpr int kWidth = 480, kHeight = 320;
  host.Create(nullptr, 0, 0, kWidth, kHeight);
  host.ShowWindow(SOUI::SW_SHOW);
  host.Render();

  uint32_t h = Hash(data, size);
  auto next_point = [&h] {
    h = h * 1103515245u + 12345u;
    return CPoint(static_cast<int>((h >> 8) % kWidth), static_cast<int>((h >> 20) % kHeight));
  };
  // A hover, a click, a drag and a wheel turn; keys go to whatever took focus.
  CPoint pt = next_point();
  host.OnMouseEvent(WM_MOUSEMOVE, 0, pt);
  host.OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, pt);
  host.OnMouseEvent(WM_LBUTTONUP, 0, pt);
  fuzz.Advance(16);
  pt = next_point();
  host.OnMouseEvent(WM_MOUSEMOVE, 0, pt);
  host.OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, pt);
  for (int i = 0; i < 3; ++i) host.OnMouseEvent(WM_MOUSEMOVE, MK_LBUTTON, next_point());
  fuzz.Advance(50);
  host.OnMouseEvent(WM_LBUTTONUP, 0, host.GetCursorPos());
  host.OnMouseEvent(WM_LBUTTONDBLCLK, MK_LBUTTON, host.GetCursorPos());
  host.OnMouseEvent(WM_LBUTTONUP, 0, host.GetCursorPos());
  host.OnMouseEvent(WM_MOUSEWHEEL, 0, next_point(), (h & 1) ? 120 : -120);
  pt = next_point();
  host.OnMouseEvent(WM_RBUTTONDOWN, MK_RBUTTON, pt);
  host.OnMouseEvent(WM_RBUTTONUP, 0, pt);
  host.OnKeyEvent(WM_KEYDOWN, VK_RIGHT);
  host.OnKeyEvent(WM_KEYUP, VK_RIGHT);
  host.OnKeyEvent(WM_CHAR, L'7');
  host.OnKeyEvent(WM_KEYDOWN, VK_RETURN);
  host.OnKeyEvent(WM_KEYUP, VK_RETURN);
  host.OnMouseEvent(WM_MOUSELEAVE, 0, host.GetCursorPos());
  host.Render();
  // Timers, animations and glides run out; then a zoom change re-lays out.
  fuzz.Advance(400);
  if (h & 2) fuzz.app().SetZoom(150);
  host.Render();
  return 0;
}
