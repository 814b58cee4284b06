// XML templates of the popup family.
#pragma once

namespace QVStandardCtrls {

// The tooltip bar's inner tree. "tooltiproot" takes the bar's height (28dp
// for one line, 44dp for more); its vertical paddings centre a 12dp line in
// the short bar and two lines in the tall one. The text's left and right
// ends, the root's height and the close mark's colour (the message's) are
// set by the control.
inline constexpr const wchar_t kQVToolTipXml[] =
    L"<window name=\"tooltiproot\" pos=\"0dp,0dp,-0dp,@28dp\" padding=\"0,6dp,0,6dp\">"
    L"<img name=\"icon\" pos=\"12dp,|0,@14dp,@14dp\" offset=\"0,-0.5\" visible=\"0\"/>"
    L"<qvrichtext name=\"text_link\" pos=\"12dp,0dp,-12dp,-0dp\" inlineParagraphs=\"1\" font=\"size:12dp\"/>"
    L"<button name=\"close\" pos=\"-32dp,|0,@20dp,@20dp\" offset=\"0,-0.5\" text=\"\u00D7\" font=\"size:16dp\" "
    L"align=\"center\" cursor=\"hand\" visible=\"0\" focusable=\"0\"/>"
    L"</window>";

}  // namespace QVStandardCtrls
