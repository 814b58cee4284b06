// Attribute setters: every standard attribute with arbitrary text.
#include <string>

#include "soui/hostwnd.h"
#include "soui/sapp.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const wchar_t* const kNames[] = {L"pos", L"offset", L"size", L"width", L"height", L"padding",
                                          L"margin", L"alpha", L"font", L"colorText", L"colorBkgnd",
                                          L"align", L"valign", L"id", L"text", L"class", L"skin", L"visible"};
  SOUI::SApplication app;
  SOUI::SHostWnd host;
  host.InitFromXmlText(L"<SOUI><root><window name='a'/><text name='b'/></root></SOUI>");
  host.Create(nullptr, 0, 0, 200, 100);
  const SOUI::SStringW value = SOUI::SStringW::FromUtf8(std::string(reinterpret_cast<const char*>(data), size));
  for (const wchar_t* name : kNames) {
    host.FindChildByName(L"a")->SetAttribute(name, value, FALSE);
    host.FindChildByName(L"b")->SetAttribute(name, value, TRUE);
  }
  host.UpdateLayout();
  return 0;
}
