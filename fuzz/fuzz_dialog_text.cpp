// The message box's texts: a width class, an icon, a button set, a heading
// and a link read from the front, the rest is the content text with its
// "<ln>" runs. The box is built, painted and clicked over its content; it
// must come out at its class's width and at least the minimum height.
#include "fuzz/fuzz_support.h"
#include "popups/dialogs.h"
#include "qvhost/zoom.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qvfuzz::FuzzApp fa;
  qvfuzz::ByteReader in(data, size);
  QVStandardCtrls::QVDefaultDialogAttr attr;
  attr.width_class = in.Range(-1, 5);
  attr.SetContentIcon(static_cast<QVStandardCtrls::QVDefaultDialogAttr::ContentIcon>(in.Range(0, 5)));
  attr.SetButtonStyle(static_cast<QVStandardCtrls::QVDefaultDialogAttr::ButtonStyle>(in.Range(0, 7)));
  attr.bottom_left_kind = in.Range(0, 3);
  attr.content_title = qvfuzz::Wide(in.Bytes(40));
  attr.link_text = qvfuzz::Wide(in.Bytes(40));
  attr.content_text = qvfuzz::Wide(in.Rest());
  QVStandardCtrls::CQVDefaultDialog dlg(attr);
  QV_FUZZ_CHECK(dlg.CreateDialogWnd(nullptr) != nullptr, "no box");
  const SOUI::CRect rc = dlg.GetWindowRect();
  const int cls = (attr.width_class >= 0 && attr.width_class <= 3) ? attr.width_class : 0;
  QV_FUZZ_CHECK(rc.Width() == ZPixel(313 + 60 * cls), "width %d for class %d", rc.Width(), attr.width_class);
  QV_FUZZ_CHECK(rc.Height() >= ZPixel(194), "height %d", rc.Height());
  dlg.Render();
  for (int y = 60; y < rc.Height(); y += 23) {
    dlg.OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, SOUI::CPoint(120, y));
    dlg.OnMouseEvent(WM_LBUTTONUP, 0, SOUI::CPoint(120, y));
  }
  return 0;
}
