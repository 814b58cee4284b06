// Rich-text paragraphs: the input is split at 0x01 bytes into paragraph XML
// strings appended to a qvrichtext in a host, which is then measured at a
// width read from the first two bytes, laid out, painted and clicked.
// Whatever the XML, the content's line count and height must agree with a
// second measurement at the same width.
#include <string>

#include "fuzz/fuzz_support.h"
#include "soui/qvrichtext.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qvfuzz::FuzzApp fa;
  qvfuzz::ByteReader in(data, size);
  const int width = in.Range(-1, 600);
  SOUI::SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='300' height='200'><root>"
                       L"<qvrichtext name='r' pos='4,4,-4,-4' lineSpacing='2' paraSpacing='3'/></root></SOUI>");
  host.Create(nullptr, 0, 0, 300, 200);
  host.ShowWindow(SOUI::SW_SHOW);
  auto* rich = host.GetRoot()->FindChildByName2<SOUI::QVRichText>(L"r");
  QV_FUZZ_CHECK(rich != nullptr, "no rich text");
  std::string rest = in.Rest();
  size_t start = 0;
  while (start <= rest.size()) {
    size_t end = rest.find('\x01', start);
    if (end == std::string::npos) end = rest.size();
    rich->AppendContent(qvfuzz::Wide(rest.substr(start, end - start)));
    start = end + 1;
  }
  const int h = rich->GetContentHeight(width), lines = rich->GetLineCount(width);
  QV_FUZZ_CHECK(h >= 0 && lines >= rich->GetParagraphCount(), "h=%d lines=%d", h, lines);
  rich->GetContentHeight(width + 7);
  QV_FUZZ_CHECK(rich->GetContentHeight(width) == h, "height changed at one width");
  host.UpdateLayout();
  host.Render();
  for (int x = 8; x < 300; x += 37) {
    rich->GetCursorAt(SOUI::CPoint(x, 10));
    host.OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, SOUI::CPoint(x, 10));
    host.OnMouseEvent(WM_LBUTTONUP, 0, SOUI::CPoint(x, 10));
  }
  return 0;
}
