#include <gtest/gtest.h>

#include "host/app/orvhost/site.h"
#include "tests/orvhost/fake_container.h"
#include "tests/orvhost/late_bound.h"

namespace orv::host {
namespace {

ULONG References(IUnknown* object) {
    object->AddRef();
    return object->Release();
}

TEST(Container, GivesTheControlItsWindowsAndPlace) {
    FakeContainer host;
    const auto site = Make<Site>(host, true);
    ComPtr<IOleInPlaceFrame> frame;
    ComPtr<IOleInPlaceUIWindow> document;
    RECT position{};
    RECT clip{};
    OLEINPLACEFRAMEINFO info{};
    info.cb = sizeof info;
    ASSERT_EQ(site->GetWindowContext(frame.Receive(), document.Receive(), &position, &clip, &info), S_OK);
    EXPECT_FALSE(document);
    EXPECT_EQ(info.hwndFrame, host.Frame());
    EXPECT_EQ(position.right, 320);
    EXPECT_EQ(clip.bottom, 200);
    RECT border{};
    EXPECT_EQ(frame->GetBorder(&border), S_OK);
    EXPECT_EQ(border.left, 5) << "in the frame's own coordinates";
    EXPECT_EQ(border.top, 7);
    EXPECT_EQ(frame->SetStatusText(L"Busy"), S_OK);
    EXPECT_EQ(host.status, L"Busy");
    frame->EnableModeless(FALSE);
    EXPECT_EQ(host.modal, 1);
    frame->EnableModeless(TRUE);
    EXPECT_EQ(host.modal, 0);
}

TEST(Container, OneSiteUnderEveryInterface) {
    FakeContainer host;
    const auto site = Make<Site>(host, false);
    const auto client = site.As<IOleClientSite>();
    ASSERT_TRUE(client);
    const auto control = client.As<IOleControlSite>();
    const auto inPlace = control.As<IOleInPlaceSite>();
    const auto ambient = inPlace.As<IDispatch>();
    ASSERT_TRUE(ambient);
    EXPECT_EQ(ambient.As<IUnknown>().Get(), client.As<IUnknown>().Get());
    EXPECT_FALSE(client.As<IOleInPlaceFrame>());
    ComPtr<IDispatch> extender;
    EXPECT_EQ(control->GetExtendedControl(extender.Receive()), E_NOTIMPL) << "a container without extender says so";
}

TEST(Container, TabLeavesTheControlAndOtherKeysStay) {
    FakeContainer host;
    const auto site = Make<Site>(host, false);
    MSG message{nullptr, WM_KEYDOWN, VK_TAB, 1, 0, {}};
    EXPECT_EQ(site->TranslateAccelerator(&message, 0), S_OK);
    EXPECT_EQ(host.left, 1);
    message.wParam = VK_RETURN;
    EXPECT_EQ(site->TranslateAccelerator(&message, 0), S_FALSE);
    EXPECT_EQ(host.left, 1);
}

TEST(Container, AmbientPropertiesAnswerByNumber) {
    FakeContainer host;
    const auto site = Make<Site>(host, false);
    const auto ask = [&site](DISPID id, ComVariant& answer) {
        DISPPARAMS none{};
        return site->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, answer.Receive(), nullptr,
                            nullptr);
    };
    ComVariant answer;
    ASSERT_EQ(ask(DISPID_AMBIENT_USERMODE, answer), S_OK);
    EXPECT_EQ(answer.Get().boolVal, VARIANT_TRUE);
    ASSERT_EQ(ask(DISPID_AMBIENT_DISPLAYNAME, answer), S_OK);
    EXPECT_EQ(answer.Get().vt, VT_BSTR);
    ASSERT_EQ(ask(DISPID_AMBIENT_FONT, answer), S_OK);
    ASSERT_EQ(answer.Get().vt, VT_DISPATCH);
    EXPECT_NE(answer.Get().pdispVal, nullptr);
    EXPECT_EQ(ask(DISPID_AMBIENT_PALETTE, answer), DISP_E_MEMBERNOTFOUND);
}

TEST(Container, AControlThatKeepsItsSiteTooLongTalksToNobody) {
    ComPtr<Site> site;
    ComPtr<IDispatch> extender;
    {
        FakeContainer host;
        site = Make<Site>(host, true);
        ASSERT_EQ(site->GetExtendedControl(extender.Receive()), S_OK);
        EXPECT_EQ(References(extender.Get()), 2u);
        site->Detach();
    }
    HWND window = nullptr;
    EXPECT_EQ(site->GetWindow(&window), E_FAIL);
    EXPECT_EQ(site->Frame().EnableModeless(FALSE), S_OK);
    EXPECT_EQ(CallLate(extender.Get(), L"Visible", DISPATCH_PROPERTYGET, {}).result, E_FAIL);
    site.Reset();
    EXPECT_EQ(References(extender.Get()), 1u) << "the extender stands on its own";
}

} // namespace
} // namespace orv::host
