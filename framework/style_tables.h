// The "qvstyle" code tables: one read-only map per control family, built
// once on first use, looked up by the whole code with case-sensitive
// comparison ("hr1" does not find "HR1"). Unknown codes find nothing.
#pragma once

#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "framework/ctrl_attr_base.h"
#include "soui/sstring.h"
#include "soui/swnd.h"

namespace QVStandardCtrls {

struct QVSTDCTRLS_API QVTextStyle {
  SOUI::SStringW font;
  SOUI::SStringW color;
};

struct QVSTDCTRLS_API QVLinkStyle {
  SOUI::SStringW font;
  SOUI::SStringW underline_font;
};

// Slots of QVButtonStyleInfo::colors. The text slots follow the toolkit's
// state index; the background slots are for variants that fill instead of
// using a skin (no code of the table sets them).
enum QVButtonColorSlot {
  kQVColorTextNormal = 0,
  kQVColorTextHover,
  kQVColorTextPressed,
  kQVColorTextDisabled,
  kQVColorBkgndNormal,
  kQVColorBkgndHover,
  kQVColorBkgndPressed,
  kQVColorBkgndDisabled,
  kQVColorSlotCount
};

struct QVSTDCTRLS_API QVButtonStyleInfo {
  SOUI::SStringW skin;  // empty for text buttons
  SOUI::SStringW color_disabled;
  SOUI::SStringW color_pressed;
  SOUI::SStringW color_hover;
  SOUI::SStringW color_normal;
  SOUI::SStringW font;
  // Set by a record that leaves the control's painting colours as they are.
  bool keep_colors = false;
  SOUI::SStringW colors[kQVColorSlotCount];
  // dp: height, minimum width, left text padding, right text padding.
  int sizes[4] = {0, 0, 0, 0};

  // The attributes the record carries, in record order: "skin" (only when it
  // has one, so a text style leaves an earlier skin alone), then "font".
  std::vector<std::pair<SOUI::SStringW, SOUI::SStringW>> Attributes() const;
};

struct QVSTDCTRLS_API QVIconButtonStyleInfo {
  SOUI::SStringW skin;
};

// Single-line, composite and multi-line edit records; composite records
// carry no font.
struct QVSTDCTRLS_API QVEditStyle {
  SOUI::SStringW skin;
  SOUI::SStringW height;
  SOUI::SStringW font;
  SOUI::SStringW padding;  // left, top, right, bottom
};

struct QVSTDCTRLS_API QVPwdCellStyle {
  SOUI::SStringW cell_size1;
  SOUI::SStringW cell_size2;
  SOUI::SStringW font;
};

// The state controls' records (state/): colours are theme references, sizes
// dp. Codes:
//   loading bars   LB1  2dp line, 12dp text     LB2  3dp line, 13dp text
//   page loading   PL1  32dp spinner, 96dp picture, 13dp text (a page)
//                  PL2  20dp spinner, 56dp picture, 12dp text (a panel)
//   picture upload PU1  an ID-card slot, 160x100dp
//                  PU2  a square photo slot, 100x100dp
struct QVLoadingBarStyleInfo {
  int line_dp = 2;  // the loading line along the edge
  SOUI::SStringW font;
  SOUI::SStringW line_color;
  SOUI::SStringW track_color;
  SOUI::SStringW remind_bkgnd;
  SOUI::SStringW fail_bkgnd;
  SOUI::SStringW text_color;
  SOUI::SStringW link_color;
};

struct QVPageLoadingCtrlStyleInfo {
  int spinner_dp = 32;
  int picture_dp = 96;
  SOUI::SStringW font;
  SOUI::SStringW bkgnd;
  SOUI::SStringW spinner_color;
  SOUI::SStringW picture_color;   // the drawing's strokes
  SOUI::SStringW picture_fill;    // its shapes
  SOUI::SStringW fail_color;      // the mark of the fail picture
  SOUI::SStringW text_color;
  SOUI::SStringW button_style;    // qv_button code of the refresh button
};

struct QVPictureUploadCtrlStyleInfo {
  int width_dp = 160;
  int height_dp = 100;
  SOUI::SStringW font;
  SOUI::SStringW bkgnd;
  SOUI::SStringW border;          // dashed frame of the empty slot
  SOUI::SStringW border_hover;
  SOUI::SStringW text_color;
  SOUI::SStringW accent;          // plus sign, progress
  SOUI::SStringW track;           // progress track
  SOUI::SStringW error;
};

using QVButtonStylePtr = std::shared_ptr<const QVButtonStyleInfo>;
using QVIconButtonStylePtr = std::shared_ptr<const QVIconButtonStyleInfo>;
using QVLoadingBarStylePtr = std::shared_ptr<const QVLoadingBarStyleInfo>;
using QVPageLoadingCtrlStylePtr = std::shared_ptr<const QVPageLoadingCtrlStyleInfo>;
using QVPictureUploadCtrlStylePtr = std::shared_ptr<const QVPictureUploadCtrlStyleInfo>;

// ---- tables ----
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVTextStyle>& QVTextStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVLinkStyle>& QVLinkStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVButtonStylePtr>& QVButtonStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVIconButtonStylePtr>& QVIconButtonStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, SOUI::SStringW>& QVRedGreenFonts();
QVSTDCTRLS_API const std::map<SOUI::SStringW, std::pair<SOUI::SStringW, SOUI::SStringW>>& QVRedGreenFontPairs();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVEditStyle>& QVEditStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVEditStyle>& QVEditComStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVEditStyle>& QVEditMultiStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVPwdCellStyle>& QVPwdCellStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVLoadingBarStylePtr>& QVLoadingBarStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVPageLoadingCtrlStylePtr>& QVPageLoadingCtrlStyles();
QVSTDCTRLS_API const std::map<SOUI::SStringW, QVPictureUploadCtrlStylePtr>& QVPictureUploadCtrlStyles();

// ---- lookup: null when the code is not in the table ----
QVSTDCTRLS_API const QVTextStyle* FindQVTextStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API const QVLinkStyle* FindQVLinkStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API QVButtonStylePtr FindQVButtonStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API QVIconButtonStylePtr FindQVIconButtonStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API const QVEditStyle* FindQVEditStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API const QVEditStyle* FindQVEditComStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API QVLoadingBarStylePtr FindQVLoadingBarStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API QVPageLoadingCtrlStylePtr FindQVPageLoadingCtrlStyle(const SOUI::SStringW& code);
QVSTDCTRLS_API QVPictureUploadCtrlStylePtr FindQVPictureUploadCtrlStyle(const SOUI::SStringW& code);

// ---- apply ----
// Text controls: sets "font" then "colorText" through the control's own
// attribute setter with the caller's loading flag, so an attribute standing
// later in the XML wins. Unknown codes change nothing. Copies the record to
// *applied when given. Always S_OK.
QVSTDCTRLS_API HRESULT ApplyQVTextStyle(SOUI::SWindow* ctrl, const SOUI::SStringW& code, BOOL loading,
                                        QVTextStyle* applied = nullptr);

// Buttons: each attribute of the record through ctrl->SetAttribute(name,
// value, FALSE) in record order, then size 1 as "height" in dp.
QVSTDCTRLS_API void ApplyQVButtonStyleAttributes(SOUI::SWindow* ctrl, const QVButtonStyleInfo& rec);

// A colour reference or literal resolved against the current theme;
// CR_INVALID (0x00FFFFFF, "unset") for an empty or unknown one.
QVSTDCTRLS_API COLORREF ResolveQVStyleColor(const SOUI::SStringW& text);

}  // namespace QVStandardCtrls
