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
//   anything else                          -> dropped, S_OK
//
// The admitted set keeps page authors from restyling the controls through
// the toolkit's own look attributes. Identity, text, placement and state are
// not looks: without them no layout could name, caption or place a control,
// so they always reach the toolkit.
#pragma once

#include <cstddef>
#include <set>

#include "framework/qv_export.h"
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
  // handler's result stays the answer unless the base rejects the value; a
  // failing handler stops before the base.
  bool chain_to_base = false;
};

// name, id, text, tip, pos, offset, size, width, visible, show, display,
// enable, float, msgTransparent, focusable, class, data, trctx (any case).
QVSTDCTRLS_API bool IsQVStructuralAttr(const SOUI::SStringW& name);

// "0" and "false" in any case are false; everything else is true.
QVSTDCTRLS_API bool QVParseBool(const SOUI::SStringW& value);

// admitted == nullptr passes every unhandled name to Base: for a class whose
// base is itself a library control that filters.
template <class T, class Base, std::size_t N>
HRESULT QVDispatchAttribute(T* self, const QVAttrEntry<T> (&table)[N], const QVAdmittedAttrs* admitted,
                            const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) {
  for (const QVAttrEntry<T>& e : table) {
    if (name.CompareNoCase(e.name) != 0) continue;
    const HRESULT hr = (self->*e.handler)(value, loading);
    if (e.chain_to_base) {
      if (hr < 0) return hr;
      const HRESULT base_hr = self->Base::SetAttribute(name, value, loading);
      if (base_hr < 0) return base_hr;
    }
    return self->SOUI::SWindow::AfterAttribute(name, value, loading, hr);
  }
  if (!admitted || admitted->count(name) != 0 || IsQVStructuralAttr(name)) {
    return self->Base::SetAttribute(name, value, loading);
  }
  return S_OK;
}

// For a class with no handlers of its own.
template <class T, class Base>
HRESULT QVDispatchAttribute(T* self, const QVAdmittedAttrs* admitted, const SOUI::SStringW& name,
                            const SOUI::SStringW& value, BOOL loading) {
  if (!admitted || admitted->count(name) != 0 || IsQVStructuralAttr(name)) {
    return self->Base::SetAttribute(name, value, loading);
  }
  return S_OK;
}

}  // namespace QVStandardCtrls
