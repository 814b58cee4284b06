// Market value controls: CQVRedGreenStatic ("qv_redgreen"), a label coloured
// by comparing a current value with a reference, and CQVRiseFallPrice
// ("qv_risefallprice"), a price, an arrow and a change text in one line.
//
// The colour convention is the user's: red rises by default, setting 50501
// false makes green rise. The stable colour never swaps.
#pragma once

#include <cstdint>

#include "framework/attr_dispatch.h"
#include "framework/ctrl_attr_base.h"
#include "qvhost/message_dispatch.h"
#include "soui/stdctrls.h"
#include "soui/themed.h"

namespace QVStandardCtrls {

// User setting: true (or absent) when red means a rise.
constexpr int kQVCfgRedRise = 50501;
// Host broadcast: the user switched the rise/fall convention.
constexpr unsigned kQVMsgRiseFallColorChanged = 1063;

QVSTDCTRLS_API extern const wchar_t kQVColorRise[];    // "@color\style_skin_qv_text\text_rise"
QVSTDCTRLS_API extern const wchar_t kQVColorFall[];    // "@color\style_skin_qv_text\text_fall"
QVSTDCTRLS_API extern const wchar_t kQVColorStable[];  // "@color\style_skin_qv_text\text_stable"

// A label that sets its own "colorText": the rise reference when current >
// compare, the fall reference when smaller, the stable one when equal. The
// application sets the text and the two numbers separately (usually scaled
// integers). Every live label recolours on message 1063.
class QVSTDCTRLS_API CQVRedGreenStatic : public SOUI::SStatic {
  SOUI_CLASS_NAME(CQVRedGreenStatic, SOUI::SStatic, L"qv_redgreen")
 public:
  CQVRedGreenStatic();
  ~CQVRedGreenStatic() override;

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  int OnCreate() override;

  // Re-reads setting 50501 (no recolouring).
  void UpdateRiseFallColor();
  // Sets "colorText" from the comparison; true when the colour changed.
  bool ResetColorText();

  // The two numbers a quote feed sets (the text is set apart, with
  // SetWindowText). A value that does not change repaints nothing; one that
  // does repaints the label (recoloured when the direction flips) without a
  // layout pass.
  void SetCompare(int64_t compare);
  void SetCurrent(int64_t current);
  int64_t GetCompare() const { return compare_; }
  int64_t GetCurrent() const { return current_; }
  // The colour references of the three directions under the convention
  // last read (kQVColorRise/Fall/Stable, rise and fall swapped for green-rise).
  const wchar_t* GetRiseColorRef() const { return red_rise_ ? kQVColorRise : kQVColorFall; }
  const wchar_t* GetFallColorRef() const { return red_rise_ ? kQVColorFall : kQVColorRise; }
  const wchar_t* GetStableColorRef() const { return kQVColorStable; }

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrCompare(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrCurrent(const SOUI::SStringW& value, BOOL loading);
  // The body is ignored: the message only says "read the setting again".
  void OnRiseFallColorChange(unsigned message, unsigned parameter, msg_body_ptr body);

 private:
  // A flag rather than three strings: thousands of labels share the same
  // three constants, and the broadcast touches nothing else of theirs.
  bool red_rise_ = true;
  int64_t compare_ = 0;
  int64_t current_ = 0;
};

// Paints, left to right on one line: the price text, an arrow (head above the
// body for a rise, below it otherwise) and the change text, all in the colour
// of the direction. It does not listen to message 1063; the application flips
// "redrise", and the colours follow at the next paint.
class QVSTDCTRLS_API CQVRiseFallPrice : public SOUI::SWindow {
  SOUI_CLASS_NAME(CQVRiseFallPrice, SOUI::SWindow, L"qv_risefallprice")
 public:
  CQVRiseFallPrice();

  HRESULT SetAttribute(const SOUI::SStringW& name, const SOUI::SStringW& value, BOOL loading) override;
  int OnCreate() override;
  void OnPaint(SOUI::IRenderTarget* rt) override;

  // Give a text to the inner price/change label and repaint; the painted
  // texts ("pricetext", "risefalltext") stay as they are. Always 0.
  HRESULT OnAttrTextPrice(const SOUI::SStringW& text, BOOL loading);
  HRESULT OnAttrTextRiseFall(const SOUI::SStringW& text, BOOL loading);

  const SOUI::SStringW& GetPriceText() const { return price_text_; }
  const SOUI::SStringW& GetRiseFallText() const { return change_text_; }
  int GetDirection() const { return direction_; }
  bool IsRedRise() const { return red_rise_ != 0; }
  // CR_INVALID when no colour is set.
  COLORREF GetRiseColor() const { return rise_color_.Get(); }
  COLORREF GetFallColor() const { return fall_color_.Get(); }
  COLORREF GetStableColor() const { return stable_color_.Get(); }
  SOUI::SStatic& PriceLabel() { return price_label_; }
  SOUI::SStatic& RiseFallLabel() { return change_label_; }

 protected:
  HRESULT OnAttrQVStyle(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrPriceText(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrRiseFallText(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrDirection(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrBodyX(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrBodyY(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrArrowX(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrArrowY(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrColorRise(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrColorFall(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrColorStable(const SOUI::SStringW& value, BOOL loading);
  HRESULT OnAttrRedRise(const SOUI::SStringW& value, BOOL loading);

  // When "redrise" changed since the last paint, resets the three colours
  // to the house references of that convention (overwriting XML colours).
  void ReSetColor();

 private:
  // Held for their fonts and texts; the control paints everything itself.
  SOUI::SStatic price_label_;
  SOUI::SStatic change_label_;
  SOUI::SStringW price_text_;
  SOUI::SStringW change_text_;
  int direction_ = 0;
  // Kept as themed values so that a light/dark switch re-resolves them.
  SOUI::ThemedColor rise_color_;
  SOUI::ThemedColor fall_color_;
  SOUI::ThemedColor stable_color_;
  SOUI::ThemedFont price_font_;
  SOUI::ThemedFont change_font_;
  BYTE red_rise_ = 1;
  BYTE applied_red_rise_ = 1;
  int body_x_ = 0;  // dp
  int body_y_ = 0;
  int arrow_x_ = 0;
  int arrow_y_ = 0;
};

// Arrow and body sizes (dp) of a rise/fall price style code; false for an
// unknown code.
struct QVSTDCTRLS_API QVRiseFallArrowSize {
  int body_x, body_y, arrow_x, arrow_y;
};
QVSTDCTRLS_API bool FindQVRiseFallArrowSize(const SOUI::SStringW& code, QVRiseFallArrowSize* out);

}  // namespace QVStandardCtrls
