#include "controls/win32/mb_edit_accessible.h"

#include <new>

#include <objbase.h>

#include <oleacc.h>

#include "platform/win32/owned.h"

namespace orv::controls::win32 {
namespace {

bool IsSelf(const VARIANT& child) {
    return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

} // namespace

/// Name, value, description and role are the box's; the rest is the system's for any window.
class AccessibleEdit final : public IAccessible {
  public:
    /// With one reference.
    AccessibleEdit(HWND window, const MBEdit& edit);
    /// The box goes.
    void Disconnect() { edit_ = nullptr; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override;
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override;
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override;
    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override;
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override;
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* text) override;
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override;
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override;
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override;
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT child, long* topic) override;
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* keys) override;
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* children) override;
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override;
    HRESULT STDMETHODCALLTYPE accSelect(long flags, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height, VARIANT child) override;
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override;
    HRESULT STDMETHODCALLTYPE accHitTest(long left, long top, VARIANT* child) override;
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override;
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT, BSTR) override { return DISP_E_MEMBERNOTFOUND; }

  private:
    struct ReleaseIt {
        void operator()(IAccessible* object) const { object->Release(); }
    };
    virtual ~AccessibleEdit() = default;
    template <typename Text>
    HRESULT Answer(const VARIANT& child, BSTR* result, Text&& text) const;
    template <typename... Parameters, typename... Arguments>
    HRESULT Standard(HRESULT (STDMETHODCALLTYPE IAccessible::*method)(Parameters...), Arguments... arguments);

    const MBEdit* edit_;
    platform::win32::Owned<IAccessible*, ReleaseIt> standard_;
    ULONG references_ = 1;
};

AccessibleEdit::AccessibleEdit(HWND window, const MBEdit& edit) : edit_(&edit) {
    void* made = nullptr;
    if (SUCCEEDED(CreateStdAccessibleObject(window, OBJID_CLIENT, __uuidof(IAccessible), &made)))
        standard_.Reset(static_cast<IAccessible*>(made));
}

HRESULT AccessibleEdit::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(IDispatch) && iid != __uuidof(IAccessible))
        return E_NOINTERFACE;
    *object = static_cast<IAccessible*>(this);
    AddRef();
    return S_OK;
}

ULONG AccessibleEdit::AddRef() {
    return ++references_;
}

ULONG AccessibleEdit::Release() {
    const ULONG left = --references_;
    if (left == 0)
        delete this;
    return left;
}

HRESULT AccessibleEdit::GetTypeInfoCount(UINT* count) {
    if (count == nullptr)
        return E_POINTER;
    *count = 0;
    return S_OK;
}

template <typename... Parameters, typename... Arguments>
HRESULT AccessibleEdit::Standard(HRESULT (STDMETHODCALLTYPE IAccessible::*method)(Parameters...),
                                 Arguments... arguments) {
    if (edit_ == nullptr || !standard_)
        return CO_E_OBJNOTCONNECTED;
    return (standard_.Get()->*method)(arguments...);
}

template <typename Text>
HRESULT AccessibleEdit::Answer(const VARIANT& child, BSTR* result, Text&& text) const {
    if (result == nullptr)
        return E_POINTER;
    *result = nullptr;
    if (edit_ == nullptr)
        return CO_E_OBJNOTCONNECTED;
    if (!IsSelf(child))
        return E_INVALIDARG;
    try {
        const std::wstring said = text(*edit_);
        *result = SysAllocStringLen(said.data(), static_cast<UINT>(said.size()));
    } catch (const std::bad_alloc&) {
    }
    return *result != nullptr ? S_OK : E_OUTOFMEMORY;
}

HRESULT AccessibleEdit::get_accName(VARIANT child, BSTR* name) {
    return Answer(child, name, [](const MBEdit& edit) { return edit.AccessibleName(); });
}

HRESULT AccessibleEdit::get_accValue(VARIANT child, BSTR* value) {
    return Answer(child, value, [](const MBEdit& edit) { return edit.SpokenValue(); });
}

HRESULT AccessibleEdit::get_accDescription(VARIANT child, BSTR* text) {
    return Answer(child, text, [](const MBEdit& edit) { return edit.Hint(); });
}

HRESULT AccessibleEdit::get_accRole(VARIANT child, VARIANT* role) {
    if (role == nullptr)
        return E_POINTER;
    role->vt = VT_EMPTY;
    if (edit_ == nullptr)
        return CO_E_OBJNOTCONNECTED;
    if (!IsSelf(child))
        return E_INVALIDARG;
    role->vt = VT_I4;
    role->lVal = ROLE_SYSTEM_TEXT;
    return S_OK;
}

HRESULT AccessibleEdit::get_accState(VARIANT child, VARIANT* state) {
    const HRESULT result = Standard(&IAccessible::get_accState, child, state);
    if (SUCCEEDED(result) && state->vt == VT_I4 && edit_->Locked())
        state->lVal |= STATE_SYSTEM_READONLY;
    return result;
}

HRESULT AccessibleEdit::get_accParent(IDispatch** parent) {
    return Standard(&IAccessible::get_accParent, parent);
}

HRESULT AccessibleEdit::get_accChildCount(long* count) {
    return Standard(&IAccessible::get_accChildCount, count);
}

HRESULT AccessibleEdit::get_accChild(VARIANT child, IDispatch** object) {
    return Standard(&IAccessible::get_accChild, child, object);
}

HRESULT AccessibleEdit::get_accHelp(VARIANT child, BSTR* help) {
    return Standard(&IAccessible::get_accHelp, child, help);
}

HRESULT AccessibleEdit::get_accHelpTopic(BSTR* file, VARIANT child, long* topic) {
    return Standard(&IAccessible::get_accHelpTopic, file, child, topic);
}

HRESULT AccessibleEdit::get_accKeyboardShortcut(VARIANT child, BSTR* keys) {
    return Standard(&IAccessible::get_accKeyboardShortcut, child, keys);
}

HRESULT AccessibleEdit::get_accFocus(VARIANT* child) {
    return Standard(&IAccessible::get_accFocus, child);
}

HRESULT AccessibleEdit::get_accSelection(VARIANT* children) {
    return Standard(&IAccessible::get_accSelection, children);
}

HRESULT AccessibleEdit::get_accDefaultAction(VARIANT child, BSTR* action) {
    return Standard(&IAccessible::get_accDefaultAction, child, action);
}

HRESULT AccessibleEdit::accSelect(long flags, VARIANT child) {
    return Standard(&IAccessible::accSelect, flags, child);
}

HRESULT AccessibleEdit::accLocation(long* left, long* top, long* width, long* height, VARIANT child) {
    return Standard(&IAccessible::accLocation, left, top, width, height, child);
}

HRESULT AccessibleEdit::accNavigate(long direction, VARIANT start, VARIANT* end) {
    return Standard(&IAccessible::accNavigate, direction, start, end);
}

HRESULT AccessibleEdit::accHitTest(long left, long top, VARIANT* child) {
    return Standard(&IAccessible::accHitTest, left, top, child);
}

HRESULT AccessibleEdit::accDoDefaultAction(VARIANT child) {
    return Standard(&IAccessible::accDoDefaultAction, child);
}

MBEditAccessible::MBEditAccessible(HWND window, const MBEdit& edit) : object_(new AccessibleEdit(window, edit)) {}

MBEditAccessible::~MBEditAccessible() {
    object_->Disconnect();
    CoDisconnectObject(object_, 0); // clients in other processes hold it no longer
    object_->Release();
}

LRESULT MBEditAccessible::Answer(WPARAM wparam) const {
    return LresultFromObject(__uuidof(IAccessible), wparam, object_);
}

} // namespace orv::controls::win32
