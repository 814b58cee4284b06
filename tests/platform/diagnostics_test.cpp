// Mistakes in a layout are told where the host developer looks: each once
// per place, with the element, its name and the value.
#include <gtest/gtest.h>

#include "qvhost/qvlog.h"
#include "testing/ui_test_base.h"

namespace SOUI {
namespace {

class DiagnosticsTest : public test::UiTestBase {};

TEST_F(DiagnosticsTest, UnknownAndRejectedAttributesAreLoggedOncePerPlace) {
  const wchar_t* page =
      L"<window name='panel' colorBkgnd='#FFFFFF' txet='typo' colorText='@color\\no\\such'/>"
      L"<window name='panel' txet='typo'/>"  // the same place again
      L"<window name='other' txet='typo'/>";
  CreateHostWithChildren(page);
  EXPECT_TRUE(LogContains(L"window name='panel': unknown attribute txet=\"typo\"; ignored"));
  EXPECT_TRUE(LogContains(L"window name='panel': colorText=\"@color\\no\\such\" is malformed or out of range"));
  EXPECT_TRUE(LogContains(L"window name='other': unknown attribute txet"));
  int count = 0;
  for (const auto& line : QVLogSinkOf(*app_).Lines()) {
    count += line.Format().Find(L"name='panel': unknown attribute") >= 0;
  }
  EXPECT_EQ(count, 1);
}

TEST_F(DiagnosticsTest, MalformedXmlSaysWhyAndWhere) {
  SHostWnd host;
  EXPECT_FALSE(host.InitFromXmlText(L"<SOUI><root><window></root></SOUI>"));
  EXPECT_TRUE(LogContains(L"malformed layout XML: Start-end tags mismatch at offset"));
}

}  // namespace
}  // namespace SOUI
