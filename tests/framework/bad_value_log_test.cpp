// Style codes the library does not know are said once per place and change
// nothing.
#include <gtest/gtest.h>

#include "library_test_base.h"
#include "qvhost/qvlog.h"

namespace QVStandardCtrls {
namespace {

class BadValueLogTest : public test::LibraryTestBase {};

TEST_F(BadValueLogTest, UnknownStyleCodesAreLoggedOncePerPlaceAndChangeNothing) {
  CreateHostWithChildren(
      L"<qv_redgreen name='price' qvstyle='RGX9'/>"
      L"<qv_edit name='qty' qvstyle='NOPE'/>"
      L"<qv_tooltip name='tip' qvstyle='TZ'/>");
  auto* price = Find(L"price");
  ASSERT_NE(price, nullptr);
  const SOUI::SStringW font_before = price->GetStyle().font[0].Source();
  price->SetAttribute(L"qvstyle", L"RGX9", FALSE);  // the same place again
  EXPECT_EQ(price->GetStyle().font[0].Source(), font_before);
  EXPECT_TRUE(LogContains(L"'price': qvstyle=\"RGX9\" not known; nothing changed"));
  EXPECT_TRUE(LogContains(L"'qty': qvstyle=\"NOPE\" not known"));
  EXPECT_TRUE(LogContains(L"'tip': qvstyle=\"TZ\" not known"));
  int count = 0;
  for (const auto& line : QVLogSinkOf(*app_).Lines()) count += line.Format().Find(L"RGX9") >= 0;
  EXPECT_EQ(count, 1);
}

}  // namespace
}  // namespace QVStandardCtrls
