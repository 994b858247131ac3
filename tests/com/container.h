#pragma once
// A small container that writes down what a control says to it, and can be as careless as real ones are.
#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "addon/com/automation.h"
#include "tests/com/component.h"

#include <ocidl.h>
#include <olectl.h>
#include <oleidl.h>

namespace orv::tests {

/// Counts, and lives on the test's stack: what is left at the end was not given back.
template <typename... Interfaces>
class Counted : public Interfaces... {
  public:
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    ULONG references = 1;
};

enum class ExtenderKind { None, Applies, OnlyKeeps, Refuses };

struct Manners {
    ExtenderKind extender = ExtenderKind::None;
    bool windowContext = true;
    bool frame = true;
    bool document = false;
    bool controlSite = true;
    std::optional<bool> userMode;
};

using Journal = std::vector<std::string>;

class Container;

/// The frame, or with a name in front of its lines the document.
class Frame final : public Counted<IOleInPlaceFrame> {
  public:
    explicit Frame(Container& container, std::string name = {}) : container_(container), name_(std::move(name)) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS widths) override;
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR name) override;
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

    ComPtr<IOleInPlaceActiveObject> active;

  private:
    Container& container_;
    std::string name_;
};

/// The extender object: the two properties that the product sets.
class Extender final : public Counted<IDispatch> {
  public:
    explicit Extender(Container& container) : container_(container) {}
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                     UINT*) override;

  private:
    Container& container_;
};

class Container final : public Counted<IOleClientSite, IOleInPlaceSite, IOleControlSite, IDispatch> {
  public:
    explicit Container(Manners given = {});
    ~Container();
    HWND Window() const { return window_.Get(); }
    bool Wrote(const std::string& line) const {
        return std::find(journal.begin(), journal.end(), line) != journal.end();
    }

    /// In the order that containers use: site, extent, activation, rectangles.
    HRESULT Embed(const ComPtr<IUnknown>& control);
    HRESULT Verb(LONG verb);
    HWND ControlWindow() const;
    HWND Find(const wchar_t* name) const;
    /// Lets go of the control as containers do.
    void Discard();

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return Counted::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return Counted::Release(); }
    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOINTERFACE; }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return Write("ShowObject"); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
    // IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return Write("CanInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return Write("OnInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return Write("OnUIActivate"); }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                               LPRECT position, LPRECT clip, LPOLEINPLACEFRAMEINFO info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return Write("OnUIDeactivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return Write("OnInPlaceDeactivate"); }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT) override { return S_OK; }
    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return S_OK; }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** extender) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD) override;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL focus) override { return Write(focus ? "OnFocus in" : "OnFocus out"); }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }
    // IDispatch: ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override;

    HRESULT Write(const std::string& line);

    Manners manners;
    Journal journal;
    /// Runs in each of the container's methods; what it causes itself is only written down.
    std::function<void(const std::string& line)> within;
    ComPtr<IUnknown> control;
    RECT place{10, 10, 810, 610};

  private:
    platform::win32::OwnedWindow window_;

    bool inside_ = false;

  public:
    Frame frame{*this};
    Frame document{*this, "document "};
    Extender extender{*this};
};

} // namespace orv::tests
