// XML templates of the tab family.
#pragma once

namespace QVStandardCtrls {

// The page control under a qv_tabctrl title row: its own headers have no
// size, so only the title row shows; pages slide with a decelerating curve.
inline constexpr const wchar_t kQVTabPagesXml[] =
    L"<tabctrl  pos=\"0dp,[0dp,-0dp,-0dp\" tabHeight=\"0dp\" tabWidth=\"0dp\" tabPos=\"0\" tabInterSize=\"0dp\" "
    L"interpolator=\"Decelerate\" curSel=\"0\" focusable=\"0\" visible=\"1\"/>";

// The title row of a qv_tabctrl; its <tab> child is the title template.
inline constexpr const wchar_t kQVTabTitlesXml[] =
    L"<qv_tabctrlbase name=\"qv_tab_titles\" pos=\"0,0,@-1,@32dp\">"
    L"<tab height=\"32dp\" padding_left=\"12dp\" padding_right=\"12dp\"/></qv_tabctrlbase>";

}  // namespace QVStandardCtrls
