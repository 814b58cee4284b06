// The attribute dispatch every control of the library uses, written once.
//
// A control lists its own attributes in a static table and its admitted
// toolkit attributes in a set, then forwards SetAttribute here:
//
//   HRESULT CQVFoo::SetAttribute(const SStringW& n, const SStringW& v, BOOL loading) {
//     static const QVAttrEntry<CQVFoo> kAttrs[] = {{L"qvstyle", &CQVFoo::OnAttrQVStyle}};
//     static const QVAdmittedAttrs kAdmitted = {L"skin", L"font"};
//     return QVDispatchAttribute<CQVFoo, SWindow>(this, kAttrs, &kAdmitted, n, v, loading);
//   }
//
//   name matches a table entry (any case) -> handler, [Base::SetAttribute for a
//                                            chained entry,] then SWindow::AfterAttribute
//   name in the admitted set (exact case) -> Base::SetAttribute
//   structural name (identity, text, placement, state) -> Base::SetAttribute
//   anything else                          -> one warning per place, E_NOTIMPL
//
// The admitted set keeps page authors from restyling the controls through
// the toolkit's own look attributes. Identity, text, placement and state are
// not looks: without them no layout could name, caption or place a control,
// so they always reach the toolkit.
#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "framework/qv_export.h"
#include "soui/attr_names.h"
#include "soui/sstring.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {

// Toolkit attribute names a control keeps; membership is case-sensitive.
using QVAdmittedAttrs = std::set<SOUI::SStringW>;

template <class T>
struct QVAttrEntry {
  const wchar_t* name;
  HRESULT (T::*handler)(const SOUI::SStringW& value, BOOL loading);
  // The base class sees the attribute too after the handler ran. The
  // handler's result stays the answer unless the base rejects the value (not
  // knowing the name is no rejection, and says nothing); a failing handler
  // stops before the base.
  bool chain_to_base = false;
};

// name, id, text, tip, pos, offset, size, width, visible, show, display,
// enable, float, msgTransparent, focusable, class, data, trctx (any case).
QVSTDCTRLS_API bool IsQVStructuralAttr(const SOUI::SStringW& name);

// A style code, state word or other value the control does not know: one
// warning per place (control class, name, attribute) naming the value; the
// caller changes nothing.
QVSTDCTRLS_API void QVLogBadValue(const SOUI::SWindow* wnd, const wchar_t* attr, const SOUI::SStringW& value);

// "0" and "false" in any case are false; everything else is true.
QVSTDCTRLS_API bool QVParseBool(const SOUI::SStringW& value);

// The names a control answers to besides the structural ones, for the
// reference and its checks. own: the table entries of every library class on
// the chain, most derived first; admitted: the toolkit names kept; all_toolkit:
// no class on the chain filters, so every toolkit attribute of the first
// toolkit base is accepted.
struct QVAttrNames {
  std::vector<SOUI::SStringW> own;
  std::vector<SOUI::SStringW> admitted;
  bool all_toolkit = false;
};

// Asks ctrl's dispatch for its names without setting anything. Empty for null
// or for a window that does not use the dispatch.
QVSTDCTRLS_API QVAttrNames QVListAttributes(SOUI::SWindow* ctrl);

// For a control that answers for some names before its dispatch (a composite
// handing them to an inner control): adds them to a running listing, else
// does nothing.
QVSTDCTRLS_API void QVListOwnNames(const wchar_t* const* names, std::size_t count);

// A name neither handled, admitted nor structural: one warning per place
// (tag, name, attribute). Shares the toolkit's place key, so the loader does
// not say it a second time.
QVSTDCTRLS_API HRESULT QVRejectUnknownAttribute(const SOUI::SWindow* wnd, const SOUI::SStringW& name,
                                                const SOUI::SStringW& value);

namespace detail {
// Non-null only inside QVListAttributes.
QVSTDCTRLS_API QVAttrNames* QVActiveListing();

// While a handled name is also shown to the base, the base's levels do not
// warn that they do not know it.
QVSTDCTRLS_API int& QVChainDepth();
struct QVChainScope {
  QVChainScope() { ++QVChainDepth(); }
  ~QVChainScope() { --QVChainDepth(); }
  QVChainScope(const QVChainScope&) = delete;
  QVChainScope& operator=(const QVChainScope&) = delete;
};

// Adds one dispatch level's admitted names; true when the level filters
// nothing, so that Base should be asked too.
QVSTDCTRLS_API bool QVListAdmitted(QVAttrNames* out, const QVAdmittedAttrs* admitted);

// Where a name goes at one dispatch level: 0..N-1 a table entry, N the base,
// N + 1 refused.
template <class T, std::size_t N>
int QVRoute(const QVAttrEntry<T> (&table)[N], const QVAdmittedAttrs* admitted, const SOUI::SStringW& name) {
  // A differing ASCII first letter rules an entry out without a call
  // (beyond ASCII the locale decides).
  const auto fold = [](wchar_t c) { return (c >= L'A' && c <= L'Z') ? static_cast<wchar_t>(c + 32) : c; };
  const wchar_t first = fold(name.GetAt(0));
  for (std::size_t i = 0; i < N; ++i) {
    if ((first >= 0x80 || fold(table[i].name[0]) == first) && name.CompareNoCase(table[i].name) == 0) {
      return static_cast<int>(i);
    }
  }
  const bool to_base = !admitted || admitted->count(name) != 0 || IsQVStructuralAttr(name);
  return static_cast<int>(to_base ? N : N + 1);
}
}  // namespace detail

// admitted == nullptr passes every unhandled name to Base: for a class whose
// base is itself a library control that filters.
template <class T, class Base, std::size_t N>
HRESULT QVDispatchAttribute(T* self, const QVAttrEntry<T> (&table)[N], const QVAdmittedAttrs* admitted,
                            const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) {
  static_assert(N + 1 < 255, "routes are remembered in a byte per name");
  if (QVAttrNames* listing = detail::QVActiveListing()) {
    for (const QVAttrEntry<T>& e : table) listing->own.push_back(e.name);
    return detail::QVListAdmitted(listing, admitted) ? self->Base::SetAttribute(name, value, loading) : S_OK;
  }
  // Every attribute of a page passes here: a name read from a layout is
  // routed once per spelling.
  static SOUI::NameMemo routes;
  routes.KeyTo(table, admitted);
  const std::size_t route =
      routes.Get(name, [&](const SOUI::SStringW& n) { return detail::QVRoute(table, admitted, n); });
  if (route < N) {
    const QVAttrEntry<T>& e = table[route];
    const HRESULT hr = (self->*e.handler)(value, loading);
    if (e.chain_to_base) {
      if (hr < 0) return hr;
      // A base that does not know the name is no mistake of the page here.
      const detail::QVChainScope quiet;
      const HRESULT base_hr = self->Base::SetAttribute(name, value, loading);
      if (base_hr < 0 && base_hr != E_NOTIMPL) return base_hr;
    }
    return self->SOUI::SWindow::AfterAttribute(name, value, loading, hr);
  }
  if (route == N) return self->Base::SetAttribute(name, value, loading);
  return QVRejectUnknownAttribute(self, name, value);
}

// For a class with no handlers of its own.
template <class T, class Base>
HRESULT QVDispatchAttribute(T* self, const QVAdmittedAttrs* admitted, const SOUI::SStringW& name,
                            const SOUI::SStringW& value, BOOL loading) {
  if (QVAttrNames* listing = detail::QVActiveListing()) {
    return detail::QVListAdmitted(listing, admitted) ? self->Base::SetAttribute(name, value, loading) : S_OK;
  }
  if (!admitted) return self->Base::SetAttribute(name, value, loading);
  static SOUI::NameMemo admits;
  admits.KeyTo(admitted, nullptr);
  const bool to_base = admits.Get(name, [&](const SOUI::SStringW& n) {
    return admitted->count(n) != 0 || IsQVStructuralAttr(n) ? 1 : 0;
  });
  return to_base ? self->Base::SetAttribute(name, value, loading) : QVRejectUnknownAttribute(self, name, value);
}

}  // namespace QVStandardCtrls
