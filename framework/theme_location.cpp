#include "framework/theme_location.h"

#include <dlfcn.h>
#include <sys/stat.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "qvhost/qvlog.h"

namespace QVStandardCtrls {

namespace {

bool IsFile(const std::string& path) {
  struct stat st {};
  return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// The folder holding this library's shared object, from the loader.
std::string LibraryDir() {
  Dl_info info{};
  if (!dladdr(reinterpret_cast<void*>(&GetDefaultThemeFile), &info) || !info.dli_fname) return {};
  const std::string path = info.dli_fname;
  const size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string(".") : path.substr(0, slash);
}

}  // namespace

SOUI::SStringW GetDefaultThemeFile(bool dark) {
  const std::string file = std::string("/default/") + (dark ? "dark/uires.xml" : "uires.xml");
  std::vector<std::string> roots;
  if (const char* env = std::getenv("QV_THEME_DIR"); env && *env) roots.push_back(env);
  const std::string lib = LibraryDir();
  if (!lib.empty()) roots.push_back(lib + "/" QV_THEME_FROM_LIBDIR);
  roots.push_back(QV_THEME_SOURCE_DIR);
  for (const std::string& root : roots) {
    if (IsFile(root + file)) return SOUI::SStringW::FromUtf8(root + file);
  }
  static bool logged = false;
  if (!logged) {
    logged = true;
    QVLOG(QV_LOG_ERROR, "COMMON") << L"default theme not found (set QV_THEME_DIR to the folder holding default"
                                  << SOUI::SStringW::FromUtf8(file) << L")";
  }
  return SOUI::SStringW();
}

}  // namespace QVStandardCtrls
