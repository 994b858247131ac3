#include "host/app/orvhost/control_driver.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>

#include "host/app/orvhost/host_pump.h"
#include "host/app/orvhost/script.h"

namespace orv::host {
namespace {

/// A control with a few children that it finds by name.
class Form {
  public:
    Form() {
        RegisterWindowClass(L"OrvTest.Form", &Form::Procedure, nullptr);
        window_ = OwnedWindow(CreateWindowExW(0, L"OrvTest.Form", L"", WS_POPUP | WS_VISIBLE, 0, 0, 300, 300, nullptr,
                                              nullptr, Program(), nullptr));
        SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        Add(L"cmdApply", kNoIndex, WC_BUTTONW, BS_PUSHBUTTON);
        Add(L"chkFlag", kNoIndex, WC_BUTTONW, BS_AUTOCHECKBOX);
        Add(L"chkUnknown", kNoIndex, WC_BUTTONW, BS_3STATE);
        Add(L"txtName", 2, WC_EDITW, 0);
        const HWND combo = Add(L"cboKind", kNoIndex, WC_COMBOBOXW, CBS_DROPDOWNLIST);
        for (const wchar_t* entry : {L"One", L"Two"})
            SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(entry));
        AddTree();
    }
    ~Form() { SetWindowLongPtrW(window_.Get(), GWLP_USERDATA, 0); }
    HWND Window() const { return window_.Get(); }
    HWND Child(const wchar_t* name, int index = kNoIndex) { return children_.at({name, index}); }
    int clicks = 0;
    int selections = 0;

  private:
    HWND Add(const wchar_t* name, int index, const wchar_t* type, DWORD style) {
        const HWND child = CreateWindowExW(0, type, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, 200, 120, window_.Get(),
                                           nullptr, Program(), nullptr);
        return children_[{name, index}] = child;
    }
    void AddTree() {
        const HWND tree = Add(L"tvw", kNoIndex, WC_TREEVIEWW, TVS_HASLINES);
        const HTREEITEM formats = Insert(tree, TVI_ROOT, L"Formats");
        Insert(tree, formats, L"1 - A");
        Insert(tree, Insert(tree, TVI_ROOT, L"Groups"), L"1 - A");
    }
    static HTREEITEM Insert(HWND tree, HTREEITEM parent, std::wstring text) {
        TVINSERTSTRUCTW item{};
        item.hParent = parent;
        item.hInsertAfter = TVI_LAST;
        item.item.mask = TVIF_TEXT;
        item.item.pszText = text.data();
        return TreeView_InsertItem(tree, &item);
    }
    /// The check that may be undetermined is so at first only.
    void Click(HWND button) {
        ++clicks;
        if (button == Child(L"chkUnknown"))
            SendMessageW(button, BM_SETCHECK, SendMessageW(button, BM_GETCHECK, 0, 0) != BST_CHECKED, 0);
    }
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
        auto* const self = reinterpret_cast<Form*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (self != nullptr && message == RegisterWindowMessageW(L"OrvFindControl")) {
            wchar_t name[64] = L"";
            GlobalGetAtomNameW(static_cast<ATOM>(wparam), name, 64);
            const auto found = self->children_.find({name, static_cast<int>(lparam)});
            return found == self->children_.end() ? 0 : reinterpret_cast<LRESULT>(found->second);
        }
        if (self != nullptr && message == WM_COMMAND && HIWORD(wparam) == BN_CLICKED)
            self->Click(reinterpret_cast<HWND>(lparam));
        if (self != nullptr && message == WM_COMMAND && HIWORD(wparam) == CBN_SELCHANGE)
            ++self->selections;
        return DefWindowProcW(window, message, wparam, lparam);
    }

    OwnedWindow window_;
    std::map<std::pair<std::wstring, int>, HWND> children_;
};

struct ControlDriverTest : testing::Test {
    HostPump pump;
    Form form;
    ControlDriver driver{form.Window()};

    std::string Complaint(const std::function<void()>& action) {
        try {
            action();
        } catch (const std::runtime_error& failure) {
            return failure.what();
        }
        return "";
    }
    std::wstring SelectedNode() {
        const HWND tree = form.Child(L"tvw");
        const HTREEITEM item = TreeView_GetSelection(tree);
        const HTREEITEM parent = TreeView_GetParent(tree, item);
        return parent == TreeView_GetRoot(tree) ? L"below the first" : L"elsewhere";
    }
};

TEST_F(ControlDriverTest, FindsByNameAndIndexAndSaysWhatIsWrong) {
    EXPECT_EQ(driver.Find(L"txtName", 2), form.Child(L"txtName", 2));
    EXPECT_EQ(Complaint([&] { driver.Find(L"txtName", 1); }), "there is no control txtName(1)");
    EXPECT_EQ(Complaint([&] { driver.Find(L"txtName", kNoIndex); }), "there is no control txtName");
    EnableWindow(form.Child(L"cmdApply"), FALSE);
    EXPECT_EQ(Complaint([&] { driver.Press(L"cmdApply", kNoIndex); }), "cmdApply is disabled");
    ShowWindow(form.Child(L"cmdApply"), SW_HIDE);
    EXPECT_EQ(Complaint([&] { driver.Press(L"cmdApply", kNoIndex); }), "cmdApply is not visible");
    EXPECT_NE(driver.Find(L"cmdApply", kNoIndex), nullptr) << "it can still be looked at";
    EnableWindow(form.Window(), FALSE);
    EXPECT_EQ(Complaint([&] { driver.Focus(L"txtName", 2); }), "txtName(2) is disabled") << "with all around it";
}

TEST_F(ControlDriverTest, SetsEveryKindAsAUserWould) {
    driver.Set(L"txtName", 2, L"new");
    EXPECT_EQ(driver.Value(L"txtName", 2), L"new");
    driver.Set(L"cboKind", kNoIndex, L"Two");
    EXPECT_EQ(SendMessageW(form.Child(L"cboKind"), CB_GETCURSEL, 0, 0), 1);
    EXPECT_TRUE(pump.PumpFor(2000, [&] { return form.selections == 1; })) << "the form hears of it, later";
    EXPECT_EQ(Complaint([&] { driver.Set(L"cboKind", kNoIndex, L"Three"); }), "there is no such entry");
    driver.Set(L"chkFlag", kNoIndex, L"1");
    EXPECT_TRUE(pump.PumpFor(2000, [&] { return driver.Value(L"chkFlag", kNoIndex) == L"1"; }));
    driver.Set(L"chkFlag", kNoIndex, L"1"); // it is on already
    pump.ProcessPending();
    EXPECT_EQ(driver.Value(L"chkFlag", kNoIndex), L"1");
    EXPECT_NE(Complaint([&] { driver.Set(L"chkFlag", kNoIndex, L"yes"); }), "");
}

TEST_F(ControlDriverTest, SetsAnUndeterminedCheckToEither) {
    for (const wchar_t* value : {L"0", L"1"}) {
        SendMessageW(form.Child(L"chkUnknown"), BM_SETCHECK, BST_INDETERMINATE, 0);
        EXPECT_EQ(driver.Value(L"chkUnknown", kNoIndex), L"");
        driver.Set(L"chkUnknown", kNoIndex, value);
        EXPECT_TRUE(pump.PumpFor(2000, [&] { return driver.Value(L"chkUnknown", kNoIndex) == value; })) << value;
        pump.ProcessPending();
        EXPECT_EQ(driver.Value(L"chkUnknown", kNoIndex), value);
    }
    EXPECT_EQ(form.clicks, 3);
}

TEST_F(ControlDriverTest, PressesLaterAndTypesIntoWhatHasTheKeyboard) {
    driver.Press(L"cmdApply", kNoIndex);
    EXPECT_EQ(form.clicks, 0) << "posted, so that a handler may wait";
    EXPECT_TRUE(pump.PumpFor(2000, [&] { return form.clicks == 1; }));
    driver.Focus(L"txtName", 2);
    TypeText(L"ab");
    EXPECT_TRUE(pump.PumpFor(2000, [&] { return driver.Value(L"txtName", 2) == L"ab"; }));
}

TEST_F(ControlDriverTest, ClicksNodesByTextOrPath) {
    driver.SelectNode(L"Formats/1 - A");
    EXPECT_TRUE(pump.PumpFor(2000, [&] { return SelectedNode() == L"below the first"; }));
    driver.SelectNode(L"Groups/1 - A");
    EXPECT_TRUE(pump.PumpFor(2000, [&] { return SelectedNode() == L"elsewhere"; }));
    driver.SelectNode(L"1 - A");
    EXPECT_TRUE(pump.PumpFor(2000, [&] { return SelectedNode() == L"below the first"; })) << "the first of that text";
    EXPECT_NE(Complaint([&] { driver.SelectNode(L"Formats/2"); }), "");
}

TEST(Keys, AreNamedWithTheirModifiers) {
    const KeyStroke stroke = ParseKey(L"Ctrl+Shift+Tab");
    EXPECT_EQ(stroke.key, VK_TAB);
    EXPECT_TRUE(stroke.shift && stroke.control);
    EXPECT_FALSE(stroke.alt);
    EXPECT_EQ(ParseKey(L"Alt+S").key, 'S');
    for (const wchar_t* wrong : {L"", L"Ctrl+", L"a", L"Tab+Ctrl", L"F99"})
        EXPECT_THROW(ParseKey(wrong), std::runtime_error) << wrong;
}

} // namespace
} // namespace orv::host
