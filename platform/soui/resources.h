// The resource registry of a theme: colours, strings, skins, fonts, classes
// (named attribute sets) and XML resources (layouts) by "TYPE:name".
//
// A theme is loaded from an index file:
//   <uidef>
//     <font face="WenQuanYi Micro Hei" size="12"/>
//     <color><style_skin_qv_text><text_rise value="#F23030"/></style_skin_qv_text>
//            <flat_name value="#112233"/></color>
//     <string lang="en"><s id="102541" value="OK"/><s name="app" value="Demo"/></string>
//     <skin><colorrect name="bg" normal="#FFFFFF"/><imglist name="b" src="img/b.png" states="4"/></skin>
//     <style><class name="title" font="size:14dp" colorText="#000000"/></style>
//     <layout><file name="main" path="layout/main.xml"/><inline name="x"><SOUI>...</SOUI></inline></layout>
//   </uidef>
// Paths are relative to the index file.
#pragma once

#include <pugixml.hpp>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>

#include "soui/render.h"
#include "soui/skin.h"

namespace SOUI {

// "#RRGGBB", "#RRGGBBAA" (alpha last), "rgb(r,g,b)", "rgba(r,g,b,a)".
bool ParseColorLiteral(const SStringW& text, COLORREF* out);

// Applies a font description ("face:x,size:14dp,bold:1,underline:1,italic:1,
// strike:1,weight:700,adding:2"; pairs separated by ',' or ';') to base.
// Sizes are layout sizes scaled with `scale`. False when a size is unparsable.
bool ParseFontDesc(const SStringW& desc, int scale, const FontDesc& base, FontDesc* out);

// Creates a skin from its declaration element; null for an unknown type.
using ImageLoader = std::function<IBitmapPtr(const SStringW& src)>;
using SkinCreator = std::function<ISkinObjPtr(pugi::xml_node decl, const ImageLoader& load)>;

class SResProvider {
 public:
  SResProvider();
  ~SResProvider();

  // Changes whenever resources change; themed values re-resolve on it.
  unsigned Generation() const { return generation_; }
  void BumpGeneration() { ++generation_; }
  // Drops every resource (not the skin types).
  void Clear();

  // ---- theme files ----
  // Loads an index file (see above) on top of what is loaded.
  bool LoadUiDefFile(const SStringW& path);
  bool LoadUiDef(pugi::xml_node uidef, const SStringW& base_dir);
  void SetImageLoader(ImageLoader loader) { image_loader_ = std::move(loader); }

  // ---- colours ----
  // key: "table\name" for a table entry, "name" for a flat one.
  void SetColor(const SStringW& key, COLORREF color);
  // A literal or a reference ("@color\table\name", "@color/name").
  bool ResolveColor(const SStringW& text, COLORREF* out) const;

  // ---- strings ----
  void SetLanguage(const SStringW& lang);  // "en", "zh"
  const SStringW& GetLanguage() const { return language_; }
  void SetString(const SStringW& lang, const SStringW& key, const SStringW& value);
  // "@string\100203" / "@string/name" resolve (to "" when unknown); other text
  // comes back unchanged.
  SStringW ResolveString(const SStringW& text) const;
  bool HasString(const SStringW& key) const;

  // ---- fonts ----
  // Fonts made earlier from the old default are dropped.
  void SetDefaultFont(const FontDesc& desc);
  // The default font at a scale (its size scales with zoom).
  FontDesc GetDefaultFont(int scale) const;
  // The same, as a font object made once per scale: every window without a
  // font of its own measures and paints with it.
  IFontPtr GetDefaultFontObject(int scale);
  // Null when the description does not parse.
  IFontPtr GetFont(const SStringW& desc, int scale);

  // ---- skins ----
  void RegisterSkinType(const SStringW& type, SkinCreator creator);
  void AddSkin(const SStringW& name, ISkinObjPtr skin);
  bool HasSkin(const SStringW& name) const;
  // The skin for a scale; made from the 100 % skin and cached. Null if unknown.
  ISkinObjPtr GetSkin(const SStringW& name, int scale);

  // ---- classes ----
  void AddClass(const SStringW& name, pugi::xml_node decl);
  // Null node when unknown.
  pugi::xml_node GetClass(const SStringW& name) const;

  // ---- XML resources ----
  void AddXml(const SStringW& type, const SStringW& name, const std::string& utf8);
  void AddXmlFile(const SStringW& type, const SStringW& name, const SStringW& path);
  bool HasXml(const SStringW& type, const SStringW& name) const;
  // Type and name match without regard to case. False when missing or malformed.
  bool LoadXml(pugi::xml_document& doc, const SStringW& name, const SStringW& type) const;

  // Named ids (the toolkit's name-to-id table for windows without an id).
  void SetNamedId(const SStringW& name, int id) { named_ids_[name] = id; }
  int GetNamedId(const SStringW& name) const;

 private:
  struct XmlRes {
    std::string text;
    SStringW path;
  };
  static SStringW XmlKey(const SStringW& type, const SStringW& name);
  void LoadColorTable(pugi::xml_node node, const SStringW& prefix);

  unsigned generation_ = 1;
  // Looked up for every colour reference a layout sets: hashed, and probed
  // through one reused key so that a lookup allocates nothing.
  std::unordered_map<std::wstring, COLORREF> colors_;
  mutable std::wstring color_probe_;
  // The last few references resolved, valid for one generation: a watchlist
  // sets the same three over and over.
  struct RecentColor {
    SStringW text;
    COLORREF value = 0;
  };
  mutable RecentColor recent_colors_[4];
  mutable unsigned recent_gen_ = 0;
  mutable unsigned recent_next_ = 0;
  // Called wherever the colour table changes.
  void ForgetRecentColors() const;
  SStringW language_ = L"en";
  std::map<SStringW, std::map<SStringW, SStringW>> strings_;  // lang -> key -> value
  FontDesc default_font_;
  std::map<std::pair<SStringW, int>, IFontPtr> font_cache_;
  std::map<int, IFontPtr> default_fonts_;  // by scale
  std::map<SStringW, SkinCreator> skin_types_;
  std::map<SStringW, ISkinObjPtr> skins_;
  std::map<std::pair<SStringW, int>, ISkinObjPtr> scaled_skins_;
  pugi::xml_document classes_;
  std::map<SStringW, XmlRes> xml_;
  std::map<SStringW, int> named_ids_;
  ImageLoader image_loader_;
};

}  // namespace SOUI
