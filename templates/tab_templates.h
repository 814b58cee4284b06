// XML templates of the tab family: the page host's inner controls, the
// default item of each strip (used when the host's XML gives none) and the
// children every item builds. Hidden children carry display="0" so that the
// "[" chain closes up behind them; the red dot and the underline place
// themselves and take no part in it.
//
// Gaps in the "[" positions are the ones CQVVariantItemBase::UpdateWidth
// adds up (see kQVItemLooks in tabs/tab_variants.cpp); keep the two in step.
#pragma once

namespace QVStandardCtrls {

// The page control under a qv_tabctrl title row: its own headers have no
// size, so only the title row shows; pages slide with a decelerating curve.
inline constexpr const wchar_t kQVTabPagesXml[] =
    L"<tabctrl  pos=\"0dp,[0dp,-0dp,-0dp\" tabHeight=\"0dp\" tabWidth=\"0dp\" tabPos=\"0\" tabInterSize=\"0dp\" "
    L"interpolator=\"Decelerate\" curSel=\"0\" focusable=\"0\" visible=\"1\"/>";

// The title row of a qv_tabctrl: a secondary strip, so the open page's
// title is underlined; its items come from the strip's default item.
inline constexpr const wchar_t kQVTabTitlesXml[] =
    L"<qv_secondarytab name=\"qv_tab_titles\" pos=\"0,0,@-1,@32dp\"/>";

// ---- default items ----
inline constexpr const wchar_t kQVPrimaryTabItemXml[] = L"<tab title=\"新建窗口\" height=\"32dp\" />";
inline constexpr const wchar_t kQVSecondaryTabItemXml[] = L"<tab title=\"新建窗口\" height=\"32dp\" />";
inline constexpr const wchar_t kQVThirdTabItemXml[] = L"<tab title=\"新建窗口\" height=\"32dp\" />";
inline constexpr const wchar_t kQVSegmentTabItemXml[] =
    L"<tab title=\"新建窗口\" height=\"20dp\" width=\"71dp\" skin=\"skin_tab_bg_tabview\" display=\"0\" />";
inline constexpr const wchar_t kQVTabViewItemXml[] =
    L"<tab title=\"新建窗口\" height=\"28dp\" width=\"180dp\" skin=\"skin_tab_bg_tabview\" display=\"0\" />";
inline constexpr const wchar_t kQVFilterTabItemXml[] =
    L"<tab title=\"新建窗口\" height=\"20dp\" skin=\"skin_tab_bg_filter_tab\"/>";

// The tab view's add button.
inline constexpr const wchar_t kQVTabViewAddXml[] =
    L"<tab name=\"btn_add\" width=\"28dp\" height=\"28dp\" skin=\"skin_tab_bg_tabview\">"
    L"<text pos=\"|0,|0\" offset=\"-0.5,-0.5\" font=\"size:16dp\" "
    L"colorText=\"@color\\style_skin_qv_tab\\text_default\" text=\"+\"/>"
    L"</tab>";

// ---- children of the items (wrapped in <children>) ----
inline constexpr const wchar_t kQVPrimaryItemChildren[] =
    L"<children>"
    L"<img name=\"img_head\" pos=\"[0dp,|0\" offset=\"0,-0.5\" visible=\"0\" display=\"0\"/>"
    L"<text name=\"title\" pos=\"[4dp,|0\" offset=\"0,-0.5\" font=\"size:12dp\"/>"
    L"<imgbtn name=\"btn_tail\" pos=\"[4dp,|0\" offset=\"0,-0.5\" skin=\"skin_live_list_expand\" visible=\"0\" "
    L"display=\"0\"/>"
    L"<qv_reddot name=\"reddot\" qvstyle=\"RD1\" msgTransparent=\"1\" pos=\"[4dp,6dp\" visible=\"0\" display=\"0\"/>"
    L"</children>";

inline constexpr const wchar_t kQVSecondaryItemChildren[] =
    L"<children>"
    L"<img name=\"img_head\" pos=\"0,|0\" offset=\"0,-0.5\" visible=\"0\" display=\"0\"/>"
    L"<text name=\"title\" pos=\"[2dp,|0\" offset=\"0,-0.5\" font=\"size:12dp\"/>"
    L"<imgbtn name=\"btn_tail\" pos=\"[2dp,|0\" offset=\"0,-0.5\" skin=\"skin_live_list_expand\" visible=\"0\" "
    L"display=\"0\"/>"
    L"<qv_reddot name=\"reddot\" qvstyle=\"RD1\" msgTransparent=\"1\" pos=\"[4dp,6dp\" visible=\"0\" display=\"0\"/>"
    L"<img name=\"img_bottom\" pos=\"|0,-2dp,@24dp,@2dp\" offset=\"-0.5,0\" skin=\"skin_tab_bg_underline\" "
    L"visible=\"0\" display=\"0\"/>"
    L"</children>";

inline constexpr const wchar_t kQVThirdItemChildren[] =
    L"<children>"
    L"<img name=\"img_head\" pos=\"0,|0\" offset=\"0,-0.5\" visible=\"0\" display=\"0\"/>"
    L"<text name=\"title\" pos=\"[2dp,|0\" offset=\"0,-0.5\" font=\"size:12dp\"/>"
    L"<imgbtn name=\"btn_tail\" pos=\"[2dp,|0\" offset=\"0,-0.5\" skin=\"skin_live_list_expand\" visible=\"0\" "
    L"display=\"0\"/>"
    L"<qv_reddot name=\"reddot\" qvstyle=\"RD1\" msgTransparent=\"1\" pos=\"[4dp,6dp\" visible=\"0\" display=\"0\"/>"
    L"</children>";

inline constexpr const wchar_t kQVSegmentItemChildren[] =
    L"<children>"
    L"<text name=\"title\" pos=\"|0,|0\" offset=\"-0.5,-0.5\" font=\"size:11dp\"/>"
    L"<qv_reddot name=\"reddot\" qvstyle=\"RD1\" msgTransparent=\"1\" pos=\"[0dp,5dp\" visible=\"0\" display=\"0\"/>"
    L"</children>";

inline constexpr const wchar_t kQVTabViewItemChildren[] =
    L"<children>"
    L"<img name=\"img_head\" pos=\"12dp,|0\" offset=\"0,-0.5\" visible=\"0\" display=\"0\"/>"
    L"<text name=\"title\" pos=\"[4dp,|0dp,@-1dp,@-1dp\" offset=\"0,-0.5\" font=\"size:12dp\"/>"
    L"<qv_reddot name=\"reddot\" qvstyle=\"RD1\" msgTransparent=\"1\" pos=\"[4dp,{0dp\" offset=\"-0.5, -0.5\" visible=\"0\" "
    L"display=\"0\"/>"
    L"<imgbtn name=\"btn_tail\" pos=\"-26dp,|0\" offset=\"0,-0.5\" skin=\"skin_minsysbtn_boxclose\"/>"
    L"</children>";

inline constexpr const wchar_t kQVFilterItemChildren[] =
    L"<children>"
    L"<window name=\"inner\" pos=\"0,3dp,-0,-0\" msgTransparent=\"1\">"
    L"<img name=\"img_head\" pos=\"[8,|0\" offset=\"0,-0.5\" visible=\"0\" display=\"0\"/>"
    L"<text name=\"title\" pos=\"[2dp,|0\" offset=\"0,-0.5\" font=\"size:11dp\"/>"
    L"<imgbtn name=\"btn_tail\" pos=\"[0dp,|0\" offset=\"0,-0.5\" skin=\"skin_live_list_expand\" visible=\"0\" "
    L"display=\"0\"/>"
    L"</window>"
    L"<qv_reddot name=\"reddot\" qvstyle=\"RD1\" msgTransparent=\"1\" pos=\"-3dp,3dp\" visible=\"0\" display=\"0\"/>"
    L"</children>";

// The stand-alone composite: icon, title, tail icon, red dot.
inline constexpr const wchar_t kQVCommTabItemChildren[] =
    L"<children>"
    L"<img name=\"img_head\" pos=\"0,|0\" offset=\"0,-0.5\" visible=\"0\" display=\"0\"/>"
    L"<text name=\"title\" pos=\"[4dp,|0\" offset=\"0,-0.5\" font=\"size:12dp\" "
    L"colorText=\"@color\\style_skin_qv_tab\\text_default\"/>"
    L"<imgbtn name=\"btn_tail\" pos=\"[4dp,|0\" offset=\"0,-0.5\" skin=\"skin_live_list_expand\"/>"
    L"<qv_reddot name=\"reddot\" qvstyle=\"RD1\" msgTransparent=\"1\" pos=\"[2dp,6dp\" visible=\"0\" display=\"0\"/>"
    L"</children>";

}  // namespace QVStandardCtrls
