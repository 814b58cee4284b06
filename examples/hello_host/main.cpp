// The smallest host: an application with the default theme, the library's
// controls registered, one window built from XML and painted to a PNG file
// (no display needed).
//
//   hello_host [out.png]
#include <cstdio>

#include "framework/control_classes.h"
#include "framework/theme_location.h"
#include "soui/hostwnd.h"
#include "soui/sapp.h"

int main(int argc, char** argv) {
  const char* out = argc > 1 ? argv[1] : "hello_host.png";
  SOUI::SApplication app;
  const SOUI::SStringW theme = QVStandardCtrls::GetDefaultThemeFile();
  if (theme.IsEmpty() || !app.GetResProvider().LoadUiDefFile(theme)) {
    std::fprintf(stderr, "hello_host: the default theme did not load\n");
    return 1;
  }
  QVStandardCtrls::RegisterQVStandardCtrls(app.GetFactory());

  SOUI::SHostWnd host;
  const bool built = host.InitFromXmlText(
      L"<SOUI title='hello' width='360dp' height='120dp'>"
      L"<root colorBkgnd='@color\\style_gallery\\card'>"
      L"  <qv_primarytab name='markets' pos='12dp,12dp,-12dp,@32dp'>"
      L"    <tabitem title='Watchlist'/><tabitem title='Shanghai'/><tabitem title='Hong Kong'/>"
      L"  </qv_primarytab>"
      L"  <qv_button name='buy' pos='12dp,64dp,@96dp,@32dp' qvstyle='MB1_B' text='Buy'/>"
      L"  <qv_button name='sell' pos='120dp,64dp,@96dp,@32dp' qvstyle='MB1_S' text='Sell'/>"
      L"</root></SOUI>");
  if (!built || !host.Create()) {
    std::fprintf(stderr, "hello_host: the window was not built\n");
    return 1;
  }
  if (!host.SaveFramePng(SOUI::SStringW::FromUtf8(out))) {
    std::fprintf(stderr, "hello_host: could not write %s\n", out);
    return 1;
  }
  std::printf("hello_host: wrote %s\n", out);
  return 0;
}
