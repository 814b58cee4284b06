// CQVEdit ("qv_edit"): the toolkit edit with one input filter and a house
// style, and the five built-in filters.
//
// A filter is called with the current text, the text about to go in (which
// it may rewrite), and the selection it replaces; it returns true to REJECT.
// The sense is the reverse of an acceptance test on purpose, and every
// built-in filter keeps it. Each judges the candidate, the text as it would
// stand after the insertion (text before the selection + inserted + text
// after it), never the single character:
//
//   "float"    one optional leading sign, digits with at most one point, at
//              least one digit ("1." and ".5" pass; "-", "." and "-." do
//              not; no limit on decimal places). Empty is rejected.
//   "number"   digits only; empty is rejected.
//   "integer"  digits, the first character may be a sign. Empty passes, so
//              that a quantity can be cleared and typed again.
//   "EnUpper"  ASCII letters of either case; the inserted text is converted
//   "EnLower"  to upper (lower) case, which is what a code field wants.
//              Empty passes.
//   "0", "", "null"  no filter. Any other value changes nothing.
// The inserted text "\b" (backspace) always passes.
//
// Input paths:
//   typing     printable ASCII (0x20-0x7E) is judged: the selection is read
//              with EM_GETSEL, and an accepted character replaces it through
//              ReplaceSel(text, TRUE) (one undo step). Other characters, CJK
//              included, reach the toolkit edit unfiltered.
//   paste and  the whole inserted string is judged with the same candidate
//   input-     rule, after the edit's own cuts (first line of a single-line
//   method     edit, control characters, room left under maxBuf), so the
//   commit     filter sees exactly what would go in. A rejected string
//              inserts nothing and raises the error event once.
// A rejected insertion changes neither the text nor the selection; its only
// trace is "on_edit_input_error" (EventQVEditInputError). A filter that
// throws counts as a rejection. A filter may change the edit while it runs
// (clear it, remove itself): the insertion then lands at the selection as it
// stands afterwards.
//
// Price mode (off unless "decimals" or "tick" is given): the value is exact
// decimal text (edits/decimal_text.h, never a binary float). Up/Down step by
// one tick (a value off the tick grid moves to the next grid point first),
// kept within min/max and written with exactly the decimal places; an empty
// edit steps to min (or 0). The mouse wheel steps only when "wheel" is "1"
// and the edit has the focus, so scrolling a page never changes a price.
// With no filter in the slot, typing and pasting accept an empty text, a
// lone "-" when min is negative or absent, and decimal text of at most that
// many places (no "+"); a value beyond min/max may be typed (it may be half
// written) and is brought within them at the next step.
//
// Attributes (the toolkit edit's look, text and behaviour attributes are
// admitted as well; other toolkit names are dropped):
//   filter   one of the values above
//   qvstyle  an edit style code (NI1-3, UI1-3, MI1-3, NIO1-3): "skin",
//            "height", "font" and "padding", applied at once, so attributes
//            later in the XML win.
//   decimals decimal places of a price (0-9)
//   tick     price step as decimal text ("0.01", "0.005"); a tick with more
//            places than "decimals" raises the places to its own; default
//            one unit of the last place
//   min, max price bounds as decimal text
//   wheel    "1": the wheel steps while focused
// Defaults: theme text and cue colours (text_h1, text_h3) and a vertically
// centred line.
#pragma once

#include <cstdint>
#include <functional>

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "soui/edit.h"

namespace QVStandardCtrls {

enum : int {
  EVT_QVEDIT_INPUT_ERROR = 29200,
};

// Raised once per rejected insertion.
class QVSTDCTRLS_API EventQVEditInputError : public SOUI::EventArgs {
  SOUI_EVENT_ID(EVT_QVEDIT_INPUT_ERROR, L"on_edit_input_error")
 public:
  using EventArgs::EventArgs;
};

// Default text and cue colours of the library's edits (theme references).
QVSTDCTRLS_API extern const wchar_t kQVEditTextColor[];
QVSTDCTRLS_API extern const wchar_t kQVEditCueColor[];

// (current text, inserted text (modifiable), selection start, selection end)
// -> true to reject.
using QVEditFilter = std::function<bool(const SOUI::SStringW&, SOUI::SStringW&, int, int)>;

// The built-in filter for a "filter" value. Returns false for a value outside
// the table; true with an empty *out for "0", "" and "null".
QVSTDCTRLS_API bool FindQVEditFilter(const SOUI::SStringW& value, QVEditFilter* out);

// The candidate: text.Left(start) + inserted + text.Mid(end), the selection
// clamped into the text.
QVSTDCTRLS_API SOUI::SStringW QVEditCandidate(const SOUI::SStringW& text, const SOUI::SStringW& inserted,
                                              int start, int end);

// What each built-in filter accepts, on a whole text (no backspace rule).
QVSTDCTRLS_API bool IsQVFloatText(const SOUI::SStringW& s);
QVSTDCTRLS_API bool IsQVNumberText(const SOUI::SStringW& s);
QVSTDCTRLS_API bool IsQVIntegerText(const SOUI::SStringW& s);
QVSTDCTRLS_API bool IsQVLetterText(const SOUI::SStringW& s);

class QVSTDCTRLS_API CQVEdit : public SOUI::SEdit {
  SOUI_CLASS_NAME(CQVEdit, SOUI::SEdit, L"qv_edit")
 public:
  CQVEdit();

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  void OnChar(UINT ch, UINT repeat, UINT flags) override;
  void OnKeyDown(UINT vk, UINT repeat, UINT flags) override;
  BOOL OnMouseWheel(UINT flags, short delta, SOUI::CPoint pt) override;

  // Replaces any earlier filter; an empty callable empties the slot.
  void SetFilter(QVEditFilter filter) { filter_ = std::move(filter); }
  void RemoveFilter() { filter_ = nullptr; }
  bool HasFilter() const { return static_cast<bool>(filter_); }
  bool IsReadOnly() const { return read_only_; }
  int GetMaxBuf() const { return max_buf_; }
  bool IsPriceMode() const { return !decimals_.IsEmpty() || !tick_.IsEmpty(); }
  // Price mode: one tick up (dir > 0) or down, as one undo step. False when
  // not in price mode or read-only.
  bool StepPrice(int dir);

 protected:
  // Raises "on_edit_input_error".
  virtual void NotifyFilterEvent();
  // Paste and input-method text: judged as a whole (see above).
  void InsertText(const SOUI::SStringW& text, InsertSource source) override;

  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrFilter(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMaxBuf(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMultiLines(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrReadOnly(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrDecimals(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrTick(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMin(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrMax(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrWheel(const SOUI::SStringW& value, BOOL loading);

 private:
  struct PriceRule {
    int places = 0;
    int64_t tick = 1;
    bool has_min = false, has_max = false;
    int64_t min = 0, max = 0;
  };
  PriceRule Price() const;
  // The slot's filter, or in price mode with an empty slot the price check.
  QVEditFilter ActiveFilter() const;
  // Runs the filter on a copy of the slot, so a filter that replaces or
  // removes itself does not destroy the callable it runs in. True = reject.
  bool Reject(SOUI::SStringW& inserted, int start, int end);
  // The part of a pasted or committed string the edit would keep.
  SOUI::SStringW Trim(const SOUI::SStringW& text, bool* cut) const;

  QVEditFilter filter_;
  int max_buf_ = kDefaultMaxBuf;
  bool multi_lines_ = false;
  bool read_only_ = false;
  SOUI::SStringW decimals_, tick_, min_, max_;
  bool wheel_ = false;
};

}  // namespace QVStandardCtrls
