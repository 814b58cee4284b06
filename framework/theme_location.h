// Where the library's default theme lives, so that a host need not hard-code
// it: the theme is a set of host resources (colour tables for light and
// dark, skins, strings, layouts) that ships with the library.
#pragma once

#include "framework/ctrl_attr_base.h"
#include "soui/sstring.h"

namespace QVStandardCtrls {

// The default theme's resource file: "uires.xml", or with dark its dark
// variant "dark/uires.xml" (loaded after the light one, which it overrides).
// Looked for, in order: in $QV_THEME_DIR/default; installed beside the
// library (<prefix>/share/QVStandardCtrls/theme/default for a library in
// <prefix>/lib); in the source tree the library was built from. Empty, with
// one log line, when none of them has it.
//
//   app.GetResProvider().LoadUiDefFile(QVStandardCtrls::GetDefaultThemeFile());
QVSTDCTRLS_API SOUI::SStringW GetDefaultThemeFile(bool dark = false);

}  // namespace QVStandardCtrls
