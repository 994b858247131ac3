#include "mb_edit_fixture.h"

#include <objbase.h>

#include <oleacc.h>

namespace orv::tests {
namespace {

struct Said {
    IAccessible* object = nullptr;
    explicit Said(HWND window) {
        void* made = nullptr;
        if (SUCCEEDED(
                AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), __uuidof(IAccessible), &made)))
            object = static_cast<IAccessible*>(made);
    }
    ~Said() {
        if (object != nullptr)
            object->Release();
    }
    Said(const Said&) = delete;
    Said& operator=(const Said&) = delete;
    static VARIANT Self() {
        VARIANT self{};
        self.vt = VT_I4;
        return self;
    }
    template <typename Get>
    std::wstring Text(Get get) const {
        BSTR text = nullptr;
        const HRESULT result = (object->*get)(Self(), &text);
        std::wstring answer = FAILED(result) ? L"failed" : text != nullptr ? text : L"";
        SysFreeString(text);
        return answer;
    }
    template <typename Get>
    long Number(Get get) const {
        VARIANT number{};
        return SUCCEEDED((object->*get)(Self(), &number)) && number.vt == VT_I4 ? number.lVal : -1;
    }
};

TEST_F(MBEditTest, ScreenReadersHearTheBytes) {
    edit.SetAccessibleName(L"Header");
    edit.SetHint(L"What goes in front");
    edit.SetData({2, 'A', 'B', 13});
    Said said(window);
    ASSERT_NE(said.object, nullptr);
    EXPECT_EQ(said.Text(&IAccessible::get_accName), L"Header");
    EXPECT_EQ(said.Text(&IAccessible::get_accValue), L"STX, A, B, CR");
    EXPECT_EQ(said.Text(&IAccessible::get_accDescription), L"What goes in front");
    EXPECT_EQ(said.Number(&IAccessible::get_accRole), ROLE_SYSTEM_TEXT);
    EXPECT_EQ(said.Number(&IAccessible::get_accState) & STATE_SYSTEM_READONLY, 0);
    edit.SetLocked(true);
    EXPECT_NE(said.Number(&IAccessible::get_accState) & STATE_SYSTEM_READONLY, 0);
    long left = 0, top = 0, width = 0, height = 0;
    EXPECT_EQ(said.object->accLocation(&left, &top, &width, &height, Said::Self()), S_OK);
    RECT place{};
    GetWindowRect(window, &place);
    EXPECT_TRUE(left >= place.left && left + width <= place.right && width > 0);
    VARIANT other = Said::Self();
    other.lVal = 7;
    BSTR text = nullptr;
    EXPECT_EQ(said.object->get_accValue(other, &text), E_INVALIDARG);
    edit.SetLocked(false);
    edit.SetMultiline(true);
    EXPECT_EQ(said.object->get_accValue(Said::Self(), &text), CO_E_OBJNOTCONNECTED) << "the window has gone";
    EXPECT_EQ(Said(WindowOf(L"mbeHeader")).Text(&IAccessible::get_accValue), L"STX, A, B, CR");
}

TEST_F(MBEditTest, NobodyKeepsTheAccessibleObject) {
    Said held(window);
    ASSERT_NE(held.object, nullptr);
    for (int i = 0; i < 10; ++i)
        Said{window}.Number(&IAccessible::get_accRole);
    host.reset();
    SetWindowLongPtrW(container.Get(), GWLP_USERDATA, 0);
    BSTR text = nullptr;
    EXPECT_EQ(held.object->get_accName(Said::Self(), &text), CO_E_OBJNOTCONNECTED);
    EXPECT_EQ(held.object->Release(), 0u) << "the last reference is the reader's";
    held.object = nullptr;
}

} // namespace
} // namespace orv::tests
