// Attribute setters of every registered class, while loading and after
// creation.
//
// The input picks a class among all the factory knows (the toolkit's and the
// library's), then reads attribute records: name (one of the known names or
// raw bytes) and value (a known token, maybe with raw bytes after it, or raw
// bytes). The first records are given while loading, before the window is
// created in a host, either as attributes of its XML element or by direct
// SetAttribute calls; the rest are set on the live window, with layout and
// paint in between.
//
//   [class] [flags] [loading count] { [name sel] [name bytes?] [value sel] [value bytes?] } ...
#include <pugixml.hpp>

#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"

namespace {

using SOUI::SStringW;

const wchar_t* const kNames[] = {
    // toolkit: identity, placement, state, looks
    L"name", L"id", L"text", L"tip", L"class", L"data", L"trctx", L"pos", L"offset", L"size", L"width",
    L"height", L"padding", L"margin", L"inset", L"visible", L"show", L"display", L"enable", L"float",
    L"msgTransparent", L"focusable", L"alpha", L"skin", L"focusskin", L"font", L"fontHover", L"fontPush",
    L"fontDisable", L"colorText", L"colorTextHover", L"colorTextPush", L"colorTextDisable", L"colorBkgnd",
    L"colorBorder", L"align", L"valign", L"dotted", L"multiLines", L"textmode", L"maxwidth", L"cursor",
    L"clipclient", L"accel", L"animate", L"animateStep", L"interHeight", L"src", L"iconIndex", L"dip",
    L"viewSize", L"viewPos", L"sbWid", L"sbEnable", L"sbSkin", L"colorSbThumb", L"colorSbTrack", L"autoHscroll",
    L"colorSelBkgnd", L"colorSelText", L"colorImeLine", L"wantReturn",
    L"dropDown", L"dropHeight", L"curSel", L"btnSkin", L"animateTime",
    // library
    L"qvstyle", L"dragable", L"animation", L"MaxRowCount", L"TabMarginX", L"tabMediate", L"single",
    L"showAdd", L"title", L"img_head", L"btn_tail", L"reddot", L"itemid", L"createAnimator", L"show_tailicon",
    L"icon_skin", L"icon", L"open", L"open_icon", L"close_icon", L"button_icon", L"extend_direction",
    L"direction", L"enable_select", L"number", L"max_number", L"market", L"compare", L"current", L"redrise",
    L"colorrise", L"colorfall", L"colorstable", L"pricetext", L"risefalltext", L"background", L"arrowx",
    L"arrowy", L"bodyx", L"bodyy", L"selected",
    // state controls ("picture" is left out: it reads files)
    L"state", L"remindtext", L"remindlink", L"failtext", L"faillink", L"showdelay", L"minshowtime", L"fadetime",
    L"loadingtext", L"emptytext", L"refreshtext", L"emptyskin", L"failskin", L"min", L"max", L"value",
    L"showtext", L"indeterminate", L"wheelalways", L"hinttext", L"retrytext",
};

const char* const kValues[] = {
    "", "0", "1", "-1", "true", "false", "2", "100", "-0", "65535", "2147483647", "-2147483648", "0.5",
    "1e309", "nan", "12dp", "-4dp", "0x7fffffff",
    // positions and sizes
    "0,0,-0,-0", "0,0,@100,@32", "10,10,@560,@60", "[2,{0,@-1,@-1", "|0,|0,]0,}-1", "%10,%10,%90,%90", "-1,-1",
    "-2,-2", "4,4,4,4", "4dp,2dp", "-0.5,-0.5", ",,,", "@", "-1,wrap", "wrap,wrap", "1000000dp,5",
    // colours and fonts
    "#FF0000", "#12345678", "#xyz", "rgb(1,2,3)", "rgba(1,2,3,4)", "@color\\style_skin_qv_text\\text_rise",
    "@color\\style_skin_qv_tab\\text_selected", "@color\\no_such\\colour", "@string\\no_such",
    "size:12dp", "size:14dp,weight:700", "face:wqy,size:0", "size:-5", "bold:1,underline:1",
    // skins and resources
    "skin_com_btn_bg_buy", "skin_tab_bg_tabview", "skin_tab_bg_filter_tab", "skin_icon_redpoint",
    "skin_tagbg_rise_block", "skin_toast_bg", "skin_basewnd_btn_close", "no_such_skin", "LAYOUT:x",
    "img/reddot.png",
    // style codes
    "B1", "HR1", "T5", "W4", "PI3", "IB1_H", "IB5_R", "MB1_B", "MB4_W", "RD1", "RD4", "hr1", "ZZ9",
    "LB1", "LB2", "PL1", "PL2", "PU1", "PU2", "PG1", "PG4", "NI2", "MI3",
    // state words
    "loading", "remind", "complete", "fail", "empty", "LOADING",
    // text
    "\xe8\x87\xaa\xe9\x80\x89", "999+", "1.23%", "+0.00", "left", "center", "right", "top", "middle", "bottom",
    "horz", "vert", "free", "none", "\\n",
};

SStringW ReadName(qvfuzz::ByteReader& in) {
  const uint8_t sel = in.Byte();
  if (sel & 0x80) return qvfuzz::Wide(in.Bytes(24));
  return kNames[sel % (sizeof(kNames) / sizeof(kNames[0]))];
}

std::string ReadValue(qvfuzz::ByteReader& in) {
  const uint8_t sel = in.Byte();
  if (sel & 0x80) return in.Bytes(64);
  std::string v = kValues[sel % (sizeof(kValues) / sizeof(kValues[0]))];
  if (sel & 0x40) v += in.Bytes(8);
  return v;
}

// Children the element may carry: nothing, tabs of a strip, a template and
// a tab, plain toolkit windows.
const char* const kChildren[] = {
    "",
    "<tabitem title='a'/><tabitem title='b' selected='1' reddot='1'/>",
    "<tab height='30'/><tabitem title='x' btn_tail='1'/>",
    "<text>t</text><window pos='0,0,@8,@8'/>",
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  qvfuzz::ByteReader in(data, size);
  qvfuzz::FuzzApp fuzz;
  const std::vector<SStringW> classes = fuzz.app().GetFactory().GetClassNames();
  const SStringW tag = classes[in.Pick(classes.size())];
  const uint8_t flags = in.Byte();
  const int loading_count = in.Range(0, 7);

  SOUI::SHostWnd host;
  host.InitFromXmlText(L"<SOUI width='400' height='200'><root/></SOUI>");
  host.Create(nullptr, 0, 0, 400, 200);
  host.ShowWindow(SOUI::SW_SHOW);
  if (flags & 0x08) fuzz.app().SetZoom(150);

  // The element the window is created from, as the loader would see it.
  pugi::xml_document doc;
  std::string xml = "<" + tag.ToUtf8() + " pos='4,4,-4,-4'>" + kChildren[(flags >> 1) & 3] + "</" + tag.ToUtf8() + ">";
  if (!doc.load_string(xml.c_str())) return 0;
  pugi::xml_node node = doc.document_element();

  SOUI::SWindow* wnd = fuzz.app().CreateWindowByName(tag);
  if (!wnd) return 0;
  host.GetRoot()->InsertChild(wnd);
  for (int i = 0; i < loading_count && !in.Empty(); ++i) {
    const SStringW name = ReadName(in);
    const std::string value = ReadValue(in);
    if (flags & 1) {
      // Through the loader: attributes apply in document order, class first.
      node.append_attribute(name.ToUtf8().c_str()).set_value(value.c_str());
    } else {
      wnd->SetAttribute(name, qvfuzz::Wide(value), TRUE);
    }
  }
  wnd->InitFromXml(node);
  host.Render();

  // The live window: each change shows at the next layout and paint.
  for (int i = 0; i < 24 && !in.Empty(); ++i) {
    const SStringW name = ReadName(in);
    wnd->SetAttribute(name, qvfuzz::Wide(ReadValue(in)), FALSE);
    if (i % 4 == 3) host.Render();
  }
  const SOUI::CPoint centre = wnd->GetWindowRect().CenterPoint();
  host.OnMouseEvent(WM_MOUSEMOVE, 0, centre);
  host.OnMouseEvent(WM_LBUTTONDOWN, MK_LBUTTON, centre);
  host.OnMouseEvent(WM_LBUTTONUP, 0, centre);
  fuzz.Advance(400);
  host.Render();
  return 0;
}
