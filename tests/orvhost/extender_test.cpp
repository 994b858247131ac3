#include "host/app/orvhost/extender.h"

#include <gtest/gtest.h>

#include "tests/orvhost/fake_container.h"
#include "tests/orvhost/late_bound.h"

namespace orv::host {
namespace {

TEST(Extender, VisibleAndEnabledActOnTheControl) {
    FakeContainer host;
    const auto extender = Make<Extender>(host);
    ComVariant off;
    off.Get().vt = VT_BOOL;
    const ComVariant text(std::wstring_view(L"True"));
    EXPECT_EQ(CallLate(extender.Get(), L"visible", DISPATCH_PROPERTYPUT, {off.Get()}).result, S_OK);
    EXPECT_FALSE(host.visible);
    EXPECT_TRUE(host.enabled);
    EXPECT_EQ(CallLate(extender.Get(), L"Enabled", DISPATCH_PROPERTYPUT, {off.Get()}).result, S_OK);
    EXPECT_FALSE(host.enabled);
    EXPECT_EQ(CallLate(extender.Get(), L"Enabled", DISPATCH_PROPERTYPUT, {text.Get()}).result, S_OK);
    EXPECT_TRUE(host.enabled);
    EXPECT_EQ(CallLate(extender.Get(), L"Visible", DISPATCH_PROPERTYGET, {}).value.Get().boolVal, VARIANT_FALSE);
}

TEST(Extender, RefusesWhatItDoesNotHave) {
    FakeContainer host;
    const auto extender = Make<Extender>(host);
    const ComVariant number(std::int32_t{5});
    EXPECT_EQ(CallLate(extender.Get(), L"Colour", DISPATCH_PROPERTYGET, {}).result, DISP_E_UNKNOWNNAME);
    EXPECT_EQ(CallLate(extender.Get(), L"Width", DISPATCH_PROPERTYPUT, {number.Get()}).result, DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(CallLate(extender.Get(), L"Width", DISPATCH_PROPERTYGET, {}).value.Get().lVal, 320);
    EXPECT_EQ(CallLate(extender.Get(), L"Visible", DISPATCH_PROPERTYPUT, {number.Get(), number.Get()}).result,
              DISP_E_BADPARAMCOUNT);
}

} // namespace
} // namespace orv::host
