// User settings of the host application: an in-memory store keyed by the
// host's integer item ids, holding booleans, integers and strings. The demo
// persists it to a small text file; tests fill it directly.
//
// File format, one item per line ('#' starts a comment line):
//   <item> b 0|1
//   <item> i <decimal>
//   <item> s <UTF-8 text, with \\ \n \r \t escaped>
#pragma once

#include <map>
#include <string>
#include <variant>

#include "soui/sapp.h"
#include "soui/sstring.h"

// Kept by the application as one of its services (see GetUserSettings).
class UserSettings : public SOUI::IAppService {
 public:
  UserSettings() = default;

  void SetBool(int item, bool value) { values_[item] = value; }
  void SetInt(int item, int value) { values_[item] = value; }
  void SetString(int item, const SOUI::SStringW& value) { values_[item] = value; }

  // Each getter returns false and leaves *out alone when the item is absent
  // or of another kind; booleans and integers read as each other (non-zero
  // is true). out may be null to test presence.
  bool GetBool(int item, bool* out) const;
  bool GetInt(int item, int* out) const;
  bool GetString(int item, SOUI::SStringW* out) const;

  bool Has(int item) const { return values_.count(item) != 0; }
  void Remove(int item) { values_.erase(item); }
  void Clear() { values_.clear(); }
  size_t Count() const { return values_.size(); }

  // Replaces the store with the file's items. False when the file cannot be
  // read (the store is then unchanged) or has malformed lines (which are
  // skipped; the good lines are kept).
  bool Load(const std::string& path);
  // False when the file cannot be written.
  bool Save(const std::string& path) const;

 private:
  using Value = std::variant<bool, int, SOUI::SStringW>;
  std::map<int, Value> values_;
};

// The application's settings, made (empty) on first use.
UserSettings& GetUserSettings(SOUI::SApplication& app);

namespace Util_Config {

// Reads a boolean from the application's settings. False, with *value
// untouched, when the item is absent, there is no application or value is null.
bool UserCfg_ReadBool(int item, bool* value);
// False when there is no application.
bool UserCfg_WriteBool(int item, bool value);

}  // namespace Util_Config
