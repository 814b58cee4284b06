#include "gallery.h"

#include <dirent.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "framework/theme_location.h"

using namespace SOUI;

namespace gallery {
namespace {

const std::string kSourceDir = QV_SOURCE_DIR;

// The window fits a 1280x800 screen at every zoom; what is wider or taller
// scrolls.
constexpr int kWindowMaxWidth = 1280;
constexpr int kWindowHeight = 800;
constexpr int kContentWidthDp = 1120;
constexpr int kScrollBarDp = 10;

std::vector<std::string> PageFiles() {
  std::vector<std::string> files;
  const std::string dir = kSourceDir + "/apps/gallery/pages";
  if (DIR* d = opendir(dir.c_str())) {
    while (dirent* e = readdir(d)) {
      const std::string name = e->d_name;
      if (name.size() > 4 && name.compare(name.size() - 4, 4, ".xml") == 0) files.push_back(dir + "/" + name);
    }
    closedir(d);
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string Stem(const std::string& path) {
  const size_t slash = path.rfind('/');
  const std::string file = path.substr(slash + 1);
  return file.substr(0, file.size() - 4);
}

// "03_market_values" -> "Market values".
std::string TitleFromStem(std::string stem) {
  const size_t us = stem.find('_');
  if (us != std::string::npos && us <= 3) stem = stem.substr(us + 1);
  std::replace(stem.begin(), stem.end(), '_', ' ');
  if (!stem.empty()) stem[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(stem[0])));
  return stem;
}

std::string EscapeAttr(const std::string& s) {
  std::string out;
  for (char c : s) {
    if (c == '&') out += "&amp;";
    else if (c == '\'') out += "&apos;";
    else if (c == '<') out += "&lt;";
    else out += c;
  }
  return out;
}

}  // namespace

bool LoadTheme(SApplication& app, bool dark) {
  // The library knows where its theme is, as it does for any host.
  SResProvider& res = app.GetResProvider();
  const SStringW light = QVStandardCtrls::GetDefaultThemeFile();
  if (light.IsEmpty() || !res.LoadUiDefFile(light)) {
    std::fprintf(stderr, "qvgallery: cannot load the theme %s\n", light.ToUtf8().c_str());
    return false;
  }
  if (dark) res.LoadUiDefFile(QVStandardCtrls::GetDefaultThemeFile(true));
  return true;
}

SStringW BuildLayout(SApplication& app, bool full_height) {
  // Cards stack in a scroll view under a header; each card is a page layout
  // included in place. A window shows at most kWindowMaxWidth x
  // kWindowHeight pixels of it, scrolling both ways at large zooms; a full
  // height layout sizes the view (and the host) to all the cards.
  const int zoom = app.GetZoom();
  const int content_px = kContentWidthDp * zoom / 100;
  std::ostringstream xml;
  // The wheel scrolls what is under the mouse, not what has the focus.
  xml << "<SOUI title='QVStandardCtrls gallery' sendWheel2Hover='1' ";
  if (full_height) {
    xml << "width='" << kContentWidthDp << "dp' height='-1'>";
  } else {
    xml << "width='" << std::min(content_px, kWindowMaxWidth) << "' height='" << kWindowHeight << "'>";
  }
  xml << ""
         "<root colorBkgnd='@color\\style_gallery\\bg'>"
         "<window name='header' pos='0,0,-0,@56dp' colorBkgnd='#1F2329'>"
         "<img pos='20dp,|0' offset='0,-0.5' skin='skin_basewnd_img_qvtx'/>"
         "<text pos='[10dp,|0' offset='0,-0.5' font='size:18dp,bold:1' colorText='#FFFFFF'>QVStandardCtrls</text>"
         "<text pos='[12dp,|0' offset='0,-0.5' font='size:13dp' colorText='#A9AEB8'>"
         "controls for the trading desktop · 交易终端控件库</text>"
         "</window>"
         "<scrollview name='pages' pos='0,[0,-0," << (full_height ? "@-1" : "-0")
      << "' viewSize='" << (full_height ? "-1" : std::to_string(kContentWidthDp - kScrollBarDp) + "dp")
      << ",wrap' padding='0,0,0,20dp'>";
  for (const std::string& file : PageFiles()) {
    std::ifstream in(file);
    std::ostringstream content;
    content << in.rdbuf();
    const std::string stem = Stem(file);
    app.GetResProvider().AddXml(L"LAYOUT", SStringW::FromUtf8("gallery_" + stem), content.str());
    xml << "<window name='card_" << stem << "' pos='20dp,[16dp,-20dp,@-1' colorBkgnd='@color\\style_gallery\\card' "
           "margin='1dp' colorBorder='@color\\style_gallery\\card_border' padding='20dp,16dp,20dp,20dp'>"
           "<text pos='0,0' font='size:16dp,bold:1' colorText='@color\\style_gallery\\title'>"
        << EscapeAttr(TitleFromStem(stem))
        << "</text>"
           "<window pos='0,[12dp,-0,@1dp' colorBkgnd='@color\\style_gallery\\rule'/>"
           "<include src='LAYOUT:gallery_"
        << stem << "' pos='0,[14dp,-0,@-1'/></window>";
  }
  xml << "</scrollview></root></SOUI>";
  return SStringW::FromUtf8(xml.str());
}

}  // namespace gallery
