// XML window templates of the dialogs, kept exactly as hosts have always
// received them. Both end with "</ window></ window></ root></ SOUI>" (a blank
// after each slash): every element has been read by then, so the tree is
// whole although an XML reader calls those end tags mismatched. Read them
// with LoadQVDialogTemplate, which tolerates exactly that.
#pragma once

#include <pugixml.hpp>

#include <string>

#include "soui/sstring.h"

namespace QVStandardCtrls {

// CQVCustomDialog: caption with logo, title, two extra buttons, minimise,
// restore, maximise and close; the user area; the bottom bar with six
// bottom-left controls (one shown by kind) and three push buttons.
inline constexpr const wchar_t kQVCustomDialogXml[] =
    L"<SOUI name=\"QVDialog\" title=\"QVDialog\" appWnd=\"1\" toolWindow=\"0\" appMainWnd=\"2\" width=\"600dp\" "
    L"height=\"800dp\" maxInset=\"13dp,13dp,13dp,13dp\" margin=\"5dp,5dp,5dp,5dp\" resizable=\"0\" "
    L"translucent=\"1\" sendWheel2Hover=\"1\" bigIcon=\"ICON_LOGO:32\" smallIcon=\"ICON_LOGO:16\" "
    L"icon=\"skin_basewnd_img_qvtx\">"
    L"<root skin=\"skin_qvstd_dialog_bg_normal\">"
    L"<window pos=\"13dp,13dp,-13dp,-13dp\">"
    L"<caption name=\"cap_title\" pos=\"0dp,0dp,-0dp,32dp\">"
    L"<img id=\"100000007\" pos=\"12dp,|0dp,@18dp,@18dp\" offset=\"0,-0.5\" skin=\"skin_basewnd_img_qvtx\" "
    L"display=\"0\"/>"
    L"<qv_text id=\"100000006\" pos=\"37dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"HR1\" text=\"QVDialog\" display=\"0\"/>"
    L"<imgbtn id=\"100000005\" skin=\"skin_basewnd_btn_min\" pos=\"[8dp,|0dp\" offset=\"0,-0.5\" animate=\"1\" "
    L"display=\"0\"/>"
    L"<imgbtn id=\"100000004\" skin=\"skin_basewnd_btn_min\" pos=\"]-0dp,|0dp\" offset=\"-1,-0.5\" animate=\"1\" "
    L"display=\"0\"/>"
    L"<imgbtn id=\"100000003\" skin=\"skin_basewnd_btn_min\" pos=\"]-0dp,0dp\" offset=\"-1,-0\" animate=\"1\" "
    L"display=\"0\"/>"
    L"<imgbtn id=\"100000001\" skin=\"skin_basewnd_btn_restore\" pos=\"]-0dp,0dp\" offset=\"-1,-0\" animate=\"1\" "
    L"display=\"0\"/>"
    L"<imgbtn id=\"100000002\" skin=\"skin_basewnd_btn_max\" pos=\"]-0dp,0dp\" offset=\"-1,-0\" animate=\"1\" "
    L"display=\"0\"/>"
    L"<imgbtn id=\"100000000\" skin=\"skin_basewnd_btn_close\" pos=\"-0dp,0dp\" offset=\"-1,-0\" animate=\"1\" "
    L"display=\"0\"/>"
    L"</caption>"
    L"<window pos=\"0dp,[0dp,-0dp,]-0dp\" clipClient=\"1\">"
    L"<window name=\"user_area\" pos=\"0dp,0dp,-0dp,-0dp\"/>"
    L"</window>"
    L"<window id=\"100020000\" pos=\"0dp,-52dp,-4dp,-0dp\">"
    L"<qv_button id=\"100020001\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"TB2_D\" msgTransparent=\"1\" "
    L"visible=\"0\" text=\"ext_info\"/>"
    L"<qv_check id=\"100020002\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"CB1\" class=\"style_radio_text_h2_12\" "
    L"visible=\"0\" text=\"ext_info\"/>"
    L"<qv_link id=\"100020003\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"B2\" visible=\"0\" text=\"ext_info\"/>"
    L"<qv_button id=\"100020004\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"MB2_D\" visible=\"0\" "
    L"text=\"ext_info\"/>"
    L"<qv_button id=\"100020005\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"TB2_D\" msgTransparent=\"1\" "
    L"button_icon=\"skin_Live_Qr_Logo\" visible=\"0\" text=\"ext_info\"/>"
    L"<qv_button id=\"100020006\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"TB2_L\" "
    L"button_icon=\"skin_Live_Qr_Logo\" visible=\"0\" text=\"ext_info\"/>"
    L"<qv_button id=\"100010003\" pos=\"]-8dp,|0dp\" offset=\"-1,-0.5\" qvstyle=\"MB2_D\" visible=\"0\" "
    L"text=\"button\"/>"
    L"<qv_button id=\"100010002\" pos=\"]-8dp,|0dp\" offset=\"-1,-0.5\" qvstyle=\"MB2_D\" visible=\"0\" "
    L"text=\"button\"/>"
    L"<qv_button id=\"100010001\" pos=\"-8dp,|0dp\" offset=\"-1,-0.5\" qvstyle=\"MB2_D\" visible=\"0\" "
    L"text=\"button\"/>"
    L"</window>"
    L"</ window></ window></ root></ SOUI>";

// CQVDefaultDialog (the message box): caption with logo, title and close;
// tips icon beside the user area (content title, content text, link); the
// bottom bar with a check box or a link on the left and three push buttons.
inline constexpr const wchar_t kQVDefaultDialogXml[] =
    L"<SOUI name=\"QVDialog\" title=\"QVDialog\" width=\"304dp\" height=\"176dp\" minsize=\"304dp,176dp\" "
    L"appWnd=\"1\" toolWindow=\"1\" appMainWnd=\"2\" margin=\"0,0,0,0\" resizable=\"0\" translucent=\"1\" "
    L"sendWheel2Hover=\"1\" bigIcon=\"ICON_LOGO:32\" smallIcon=\"ICON_LOGO:16\" icon=\"skin_basewnd_img_qvtx\">"
    L"<root skin=\"skin_qvstd_dialog_bg_normal\">"
    L"<window pos=\"13dp,13dp,-13dp,-13dp\">"
    L"<caption name=\"cap_title\" pos=\"0dp,0dp,-0dp,32dp\">"
    L"<img name=\"title_img\" pos=\"12dp,|0dp,@18dp,@18dp\" offset=\"0,-0.5\" skin=\"skin_basewnd_img_qvtx\"/>"
    L"<qv_text name=\"title_text\" pos=\"37dp,|0dp,]0dp,-0dp\" offset=\"0,-0.5\" qvstyle=\"HR1\" text=\"QVDialog\"/>"
    L"<imgbtn name=\"btn_close\" skin=\"skin_basewnd_btn_close\" pos=\"-30dp,0dp\" animate=\"1\"/>"
    L"</caption>"
    L"<window pos=\"12dp,[0dp,-0dp,]-0dp\" clipClient=\"1\">"
    L"<img name=\"tips_icon\" pos=\"12dp,20dp,@40dp,@40dp\" skin=\"skin_basewnd_img_qvtx\"/>"
    L"<window pos=\"[12dp,20dp,-0dp,-0dp\" clipClient=\"1\">"
    L"<window name=\"user_area\" pos=\"0dp,0dp,-0dp,-0dp\">"
    L"<qv_multilink name=\"content_title\" pos=\"0dp, 0dp\" multiLines=\"1\" text=\"title\"/>"
    L"<qv_multilink name=\"content_text\" pos=\"0dp,[4dp\" focusMoreContent=\"1\"/>"
    L"<qv_link name=\"content_link\" pos=\"0dp,[8dp\" qvstyle=\"B2\" text=\"ext_info\"/>"
    L"</window>"
    L"</window>"
    L"</window>"
    L"<window id=\"100000001\" pos=\"0dp,-52dp,-4dp,-0dp\">"
    L"<qv_check id=\"100020002\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"CB1\" class=\"style_radio_text_h2_12\" "
    L"visible=\"0\" text=\"ext_info\"/>"
    L"<qv_link id=\"100020001\" pos=\"12dp,|0dp\" offset=\"0,-0.5\" qvstyle=\"B2\" visible=\"0\" text=\"ext_info\"/>"
    L"<qv_button id=\"100010003\" pos=\"]-8dp,|0dp\" offset=\"-1,-0.5\" qvstyle=\"MB2_D\" width=\"-1\" "
    L"visible=\"0\" text=\"button\"/>"
    L"<qv_button id=\"100010002\" pos=\"]-8dp,|0dp\" offset=\"-1,-0.5\" qvstyle=\"MB2_D\" width=\"-1\" "
    L"visible=\"0\" text=\"button\"/>"
    L"<qv_button id=\"100010001\" pos=\"-8dp,|0dp\" offset=\"-1,-0.5\" qvstyle=\"MB2_D\" width=\"-1\" "
    L"visible=\"0\" text=\"button\"/>"
    L"</window>"
    L"</ window></ window></ root></ SOUI>";

// Parses a dialog template (or any layout) into doc. A document whose only
// fault is a mismatched end tag is accepted as the toolkit's reader accepts
// it; any other parse error returns false.
inline bool LoadQVDialogTemplate(pugi::xml_document& doc, const wchar_t* xml) {
  const std::string utf8 = SOUI::SStringW(xml).ToUtf8();
  const pugi::xml_parse_result r = doc.load_buffer(utf8.data(), utf8.size());
  return (r || r.status == pugi::status_end_element_mismatch) && doc.first_child();
}

}  // namespace QVStandardCtrls
