#include "framework/ctrl_utils.h"

#include <string>

#include "qvhost/qvlog.h"
#include "qvhost/zoom.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

namespace {

CSize MeasureOneLine(IRenderTarget* rt, const SStringW& text) {
  SApplication* app = SApplication::getSingletonPtr();
  const SStringW shown = app ? app->tr(text, SStringW()) : text;
  SIZE sz{0, 0};
  rt->MeasureText(shown, shown.GetLength(), &sz);
  return CSize(sz.cx, sz.cy);
}

}  // namespace

CSize IQVStandardCtrlUtils::MeasureText(const SStringW& text, const SStringW& font) {
  SApplication* app = SApplication::getSingletonPtr();
  IRenderFactory* factory = app ? app->GetRenderFactory() : nullptr;
  if (!factory) return CSize();
  std::unique_ptr<IRenderTarget> rt = factory->CreateRenderTarget(1, 1);
  if (!rt) return CSize();
  // The style record resolves the description exactly as a window would.
  SwndStyle style;
  const int scale = static_cast<int>(GetAppZoomX() * 100 + 0.5);
  style.SetAttribute(L"font", font);
  IFontPtr old;
  bool selected = false;
  if (IFontPtr f = style.GetFont(0).Get(scale)) {
    old = rt->SelectFont(f);
    selected = true;
  }
  const CSize size = MeasureOneLine(rt.get(), text);
  if (selected) rt->SelectFont(old);
  return size;
}

CSize IQVStandardCtrlUtils::MeasureText(const SStringW& text, SWindow* window) {
  SApplication* app = SApplication::getSingletonPtr();
  IRenderFactory* factory = app ? app->GetRenderFactory() : nullptr;
  if (!factory || !window) return CSize();
  std::unique_ptr<IRenderTarget> rt = factory->CreateRenderTarget(1, 1);
  if (!rt) return CSize();
  // In a real paint the ancestors have already selected their fonts; start
  // from the inherited one, then let the window prepare as it would.
  IFontPtr old = rt->SelectFont(window->GetPaintFont(rt.get()));
  SWindow::PaintState ps;
  window->BeforePaint(rt.get(), ps);
  const CSize size = MeasureOneLine(rt.get(), text);
  window->AfterPaint(rt.get(), ps);
  rt->SelectFont(old);
  return size;
}

void IQVStandardCtrlUtils::DebugPrint(const pugi::xml_node& node) {
  struct StringWriter : pugi::xml_writer {
    std::string out;
    void write(const void* data, size_t size) override { out.append(static_cast<const char*>(data), size); }
  } writer;
  node.print(writer);
  QVLOG(QV_LOG_DEBUG, "COMMON") << writer.out;
}

}  // namespace QVStandardCtrls
