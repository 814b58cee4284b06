#include "framework/attr_dispatch.h"

#include "qvhost/qvlog.h"
#include "soui/sapp.h"

namespace QVStandardCtrls {

using namespace SOUI;

bool IsQVStructuralAttr(const SStringW& name) {
  static const std::set<SStringW, SStringNoCaseLess> kNames = {
      L"name",    L"id",      L"text",  L"tip",           L"pos",       L"offset",
      L"size",    L"width",   L"visible", L"show",        L"display",   L"enable",
      L"float",   L"msgTransparent", L"focusable", L"class", L"data", L"trctx"};
  return kNames.count(name) != 0;
}

bool QVParseBool(const SStringW& value) {
  return !(value == L"0" || value.CompareNoCase(L"false") == 0);
}

void QVLogBadValue(const SOUI::SWindow* wnd, const wchar_t* attr, const SOUI::SStringW& value) {
  const SOUI::SStringW cls = wnd ? SOUI::SStringW(wnd->GetObjectClass()) : SOUI::SStringW(L"?");
  const SOUI::SStringW name = wnd ? wnd->GetName() : SOUI::SStringW();
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  if (app && !app->FirstTimeAt((cls + L"|" + name + L"|" + attr + L"|" + value).str())) return;
  QVLOG(QV_LOG_WARN, "COMMON") << cls << L" '" << name << L"': " << attr << L"=\"" << value
                               << L"\" not known; nothing changed";
}

}  // namespace QVStandardCtrls
