// The default theme is found without a hard-coded path: from $QV_THEME_DIR
// when set and holding it, else beside the library or in its source tree.
#include "framework/theme_location.h"

#include <gtest/gtest.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <string>

namespace QVStandardCtrls {
namespace {

class ThemeLocationTest : public ::testing::Test {
 protected:
  void TearDown() override { unsetenv("QV_THEME_DIR"); }
};

TEST_F(ThemeLocationTest, FindsTheBuiltInThemeAndItsDarkVariant) {
  unsetenv("QV_THEME_DIR");
  const std::string light = GetDefaultThemeFile().ToUtf8(), dark = GetDefaultThemeFile(true).ToUtf8();
  ASSERT_FALSE(light.empty());
  EXPECT_EQ(access(light.c_str(), R_OK), 0) << light;
  EXPECT_NE(light.find("/default/uires.xml"), std::string::npos);
  EXPECT_NE(dark.find("/default/dark/uires.xml"), std::string::npos);
  EXPECT_EQ(access(dark.c_str(), R_OK), 0) << dark;
}

TEST_F(ThemeLocationTest, TheEnvironmentWinsWhenItHoldsATheme) {
  char dir[] = "/tmp/qv_theme_XXXXXX";
  ASSERT_NE(mkdtemp(dir), nullptr);
  const std::string root = dir, file = root + "/default/uires.xml";
  ASSERT_EQ(mkdir((root + "/default").c_str(), 0700), 0);
  std::FILE* f = std::fopen(file.c_str(), "w");
  ASSERT_NE(f, nullptr);
  std::fputs("<uidef/>", f);
  std::fclose(f);
  setenv("QV_THEME_DIR", dir, 1);
  EXPECT_EQ(GetDefaultThemeFile().ToUtf8(), file);
  // Without a dark variant there, the next place that has one answers.
  EXPECT_NE(GetDefaultThemeFile(true).ToUtf8().find("/default/dark/uires.xml"), std::string::npos);
  EXPECT_EQ(GetDefaultThemeFile(true).ToUtf8().find(root), std::string::npos);
  std::remove(file.c_str());
  rmdir((root + "/default").c_str());
  rmdir(dir);
}

}  // namespace
}  // namespace QVStandardCtrls
