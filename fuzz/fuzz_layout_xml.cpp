// Layout XML: any bytes given to a host as its layout must neither crash nor hang.
#include <string>

#include "soui/hostwnd.h"
#include "soui/sapp.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  SOUI::SApplication app;
  app.GetResProvider().AddXml(L"LAYOUT", L"x", "<window pos='0,0,@10,@10'/>");
  SOUI::SHostWnd host;
  if (host.InitFromXmlText(SOUI::SStringW::FromUtf8(std::string(reinterpret_cast<const char*>(data), size)))) {
    host.Create(nullptr, 0, 0, 320, 240);
    host.UpdateLayout();
    host.OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, SOUI::CPoint(10, 10));
    host.OnMouseEvent(WM_LBUTTONUP, 0, SOUI::CPoint(10, 10));
  }
  return 0;
}
