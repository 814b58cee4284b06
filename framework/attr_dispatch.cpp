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

namespace {
// Set while QVListAttributes runs; everything runs on the UI thread.
QVAttrNames* g_listing = nullptr;
}  // namespace

namespace detail {
QVAttrNames* QVActiveListing() { return g_listing; }

int& QVChainDepth() {
  static int depth = 0;
  return depth;
}

bool QVListAdmitted(QVAttrNames* out, const QVAdmittedAttrs* admitted) {
  out->all_toolkit = !admitted;
  if (admitted) out->admitted.insert(out->admitted.end(), admitted->begin(), admitted->end());
  return !admitted;
}
}  // namespace detail

QVAttrNames QVListAttributes(SWindow* ctrl) {
  QVAttrNames names;
  if (!ctrl || g_listing) return names;
  g_listing = &names;
  // The name is never looked at: a dispatch in listing mode only reports.
  ctrl->SetAttribute(L"", L"", FALSE);
  g_listing = nullptr;
  return names;
}

void QVListOwnNames(const wchar_t* const* names, std::size_t count) {
  if (!g_listing || !names) return;
  for (std::size_t i = 0; i < count; ++i) g_listing->own.push_back(names[i]);
}

HRESULT QVRejectUnknownAttribute(const SWindow* wnd, const SStringW& name, const SStringW& value) {
  if (detail::QVChainDepth() > 0) return E_NOTIMPL;
  const SStringW tag = wnd ? SStringW(wnd->GetObjectClass()) : SStringW(L"?");
  const SStringW wnd_name = wnd ? wnd->GetName() : SStringW();
  // The toolkit's own key for this place: its loader stays quiet after us.
  SApplication* app = SApplication::getSingletonPtr();
  if (!app || app->FirstTimeAt((tag + L"|" + wnd_name + L"|" + name).str())) {
    QVLOG(QV_LOG_WARN, "COMMON") << tag << L" name='" << wnd_name << L"': unknown attribute " << name << L"=\""
                                 << value << L"\" (not one of " << tag << L"'s own or admitted); ignored";
  }
  return E_NOTIMPL;
}

}  // namespace QVStandardCtrls
