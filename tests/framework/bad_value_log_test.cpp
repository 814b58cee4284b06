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

int CountLines(SOUI::SApplication& app, const wchar_t* text) {
  int count = 0;
  for (const auto& line : QVLogSinkOf(app).Lines()) count += line.Format().Find(text) >= 0;
  return count;
}

TEST_F(BadValueLogTest, UnknownAttributesAreLoggedOncePerPlaceAndRefused) {
  CreateHostWithChildren(
      L"<qv_button name='buy' colour='#FF0000' colorText='#00FF00' text='Buy'/>"
      L"<qv_switch_button name='sw' open='1'/>");
  auto* buy = Find(L"buy");
  ASSERT_NE(buy, nullptr);
  // A misspelling and a toolkit look the control does not admit, each named
  // with the element once, though the loader and the dispatch both see it.
  EXPECT_EQ(CountLines(*app_, L"qv_button name='buy': unknown attribute colour=\"#FF0000\""), 1);
  EXPECT_EQ(CountLines(*app_, L"qv_button name='buy': unknown attribute colorText=\"#00FF00\""), 1);
  // Set again from code: refused, not said again.
  EXPECT_EQ(buy->SetAttribute(L"colour", L"#0000FF", FALSE), E_NOTIMPL);
  EXPECT_EQ(CountLines(*app_, L"unknown attribute colour"), 1);
  // A handled name the control also shows its base is not unknown.
  EXPECT_EQ(CountLines(*app_, L"'sw'"), 0);
}

}  // namespace
}  // namespace QVStandardCtrls
