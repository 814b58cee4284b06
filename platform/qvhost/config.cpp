#include "qvhost/config.h"

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fstream>
#include <memory>

#include "soui/sapp.h"

bool UserSettings::GetBool(int item, bool* out) const {
  auto it = values_.find(item);
  if (it == values_.end()) return false;
  if (const bool* b = std::get_if<bool>(&it->second)) {
    if (out) *out = *b;
    return true;
  }
  if (const int* i = std::get_if<int>(&it->second)) {
    if (out) *out = *i != 0;
    return true;
  }
  return false;
}

bool UserSettings::GetInt(int item, int* out) const {
  auto it = values_.find(item);
  if (it == values_.end()) return false;
  if (const int* i = std::get_if<int>(&it->second)) {
    if (out) *out = *i;
    return true;
  }
  if (const bool* b = std::get_if<bool>(&it->second)) {
    if (out) *out = *b ? 1 : 0;
    return true;
  }
  return false;
}

bool UserSettings::GetString(int item, SOUI::SStringW* out) const {
  auto it = values_.find(item);
  if (it == values_.end()) return false;
  const SOUI::SStringW* s = std::get_if<SOUI::SStringW>(&it->second);
  if (!s) return false;
  if (out) *out = *s;
  return true;
}

namespace {

std::string Escape(const std::string& in) {
  std::string out;
  for (char c : in) {
    switch (c) {
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      default: out += c;
    }
  }
  return out;
}

bool Unescape(const std::string& in, std::string* out) {
  out->clear();
  for (size_t i = 0; i < in.size(); ++i) {
    if (in[i] != '\\') {
      *out += in[i];
      continue;
    }
    if (++i == in.size()) return false;
    switch (in[i]) {
      case '\\': *out += '\\'; break;
      case 'n': *out += '\n'; break;
      case 'r': *out += '\r'; break;
      case 't': *out += '\t'; break;
      default: return false;
    }
  }
  return true;
}

// Whole-token decimal int; rejects trailing junk and out-of-range values.
bool ParseInt(const std::string& text, int* out) {
  if (text.empty()) return false;
  errno = 0;
  char* end = nullptr;
  const long v = std::strtol(text.c_str(), &end, 10);
  if (errno != 0 || *end != '\0' || v < INT_MIN || v > INT_MAX) return false;
  *out = static_cast<int>(v);
  return true;
}

}  // namespace

bool UserSettings::Load(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::map<int, Value> loaded;
  bool clean = true;
  std::string line;
  while (std::getline(in, line)) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    if (line.empty() || line[0] == '#') continue;
    // "<item> <kind> <value>"; the value is the rest of the line.
    const size_t sp1 = line.find(' ');
    const size_t sp2 = sp1 == std::string::npos ? sp1 : line.find(' ', sp1 + 1);
    int item = 0;
    if (sp2 == std::string::npos || sp2 != sp1 + 2 || !ParseInt(line.substr(0, sp1), &item)) {
      clean = false;
      continue;
    }
    const char kind = line[sp1 + 1];
    const std::string value = line.substr(sp2 + 1);
    int number = 0;
    std::string text;
    if (kind == 'b' && (value == "0" || value == "1")) {
      loaded[item] = value == "1";
    } else if (kind == 'i' && ParseInt(value, &number)) {
      loaded[item] = number;
    } else if (kind == 's' && Unescape(value, &text)) {
      loaded[item] = SOUI::SStringW::FromUtf8(text);
    } else {
      clean = false;
    }
  }
  values_ = std::move(loaded);
  return clean;
}

bool UserSettings::Save(const std::string& path) const {
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  if (!out) return false;
  out << "# user settings: <item> <b|i|s> <value>\n";
  for (const auto& [item, value] : values_) {
    out << item << ' ';
    if (const bool* b = std::get_if<bool>(&value)) {
      out << "b " << (*b ? 1 : 0);
    } else if (const int* i = std::get_if<int>(&value)) {
      out << "i " << *i;
    } else {
      out << "s " << Escape(std::get<SOUI::SStringW>(value).ToUtf8());
    }
    out << '\n';
  }
  out.flush();
  return static_cast<bool>(out);
}

UserSettings& GetUserSettings(SOUI::SApplication& app) {
  static const char kKey[] = "qvhost.UserSettings";
  if (auto* s = static_cast<UserSettings*>(app.GetService(kKey))) return *s;
  auto s = std::make_unique<UserSettings>();
  UserSettings& ref = *s;
  app.SetService(kKey, std::move(s));
  return ref;
}

namespace Util_Config {

bool UserCfg_ReadBool(int item, bool* value) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  if (!app || !value) return false;
  return GetUserSettings(*app).GetBool(item, value);
}

bool UserCfg_WriteBool(int item, bool value) {
  SOUI::SApplication* app = SOUI::SApplication::getSingletonPtr();
  if (!app) return false;
  GetUserSettings(*app).SetBool(item, value);
  return true;
}

}  // namespace Util_Config
