// Class object, identity, counting, and what happens with pointers that lead nowhere.
#include <gtest/gtest.h>

#include "tests/com/component.h"

#include <ocidl.h>
#include <olectl.h>
#include <oleidl.h>

namespace orv::tests {
namespace {

TEST(Class, KeepsTheModuleWhileAnythingLives) {
    const Component component;
    EXPECT_TRUE(component.CanUnload());
    ComPtr<IUnknown> wrong;
    EXPECT_EQ(component.GetClass(CLSID_ConfigurationManager, IID_IClassFactory, wrong.PutVoid()),
              CLASS_E_CLASSNOTAVAILABLE);
    EXPECT_EQ(component.GetClass(CLSID_AddOnControl, IID_IOleObject, wrong.PutVoid()), E_NOINTERFACE);
    EXPECT_TRUE(component.CanUnload()) << "a refused query left its factory";
    ComPtr<IClassFactory> factory = component.Factory();
    EXPECT_FALSE(component.CanUnload());
    EXPECT_EQ(factory->LockServer(TRUE), S_OK);
    factory = nullptr;
    EXPECT_FALSE(component.CanUnload());
    EXPECT_EQ(component.Factory()->LockServer(FALSE), S_OK);
    EXPECT_TRUE(component.CanUnload());
}

TEST(Class, ControlsThatAreNeverShownComeAndGo) {
    const Component component;
    for (int i = 0; i < 20; ++i) {
        ComPtr<IUnknown> control = component.Create();
        EXPECT_FALSE(component.CanUnload());
        if (i % 3 == 1) {
            EXPECT_EQ(Query<IAddOnGUI>(control.Get())->Enable(), S_OK);
        } else if (i % 3 == 2) {
            EXPECT_EQ(Query<IOleObject>(control.Get())->Close(OLECLOSE_NOSAVE), S_OK);
        }
        control = nullptr;
        EXPECT_TRUE(component.CanUnload());
    }
    ComPtr<IUnknown> unavailable;
    EXPECT_EQ(component.Factory()->CreateInstance(nullptr, IID_IOleLink, unavailable.PutVoid()), E_NOINTERFACE);
    EXPECT_TRUE(component.CanUnload()) << "a control whose first query failed is left";
}

const IID* const kFaces[] = {&IID_IDispatch,
                             &IID_IAddOnControl,
                             &IID_IAddOn,
                             &IID_IAddOnGUI,
                             &IID_IAddOnCompatibility,
                             &IID_IOleObject,
                             &IID_IOleControl,
                             &IID_IOleWindow,
                             &IID_IOleInPlaceObject,
                             &IID_IOleInPlaceActiveObject,
                             &IID_IViewObject,
                             &IID_IViewObject2,
                             &IID_IPersist,
                             &IID_IPersistStreamInit,
                             &IID_IPersistPropertyBag,
                             &IID_IProvideClassInfo,
                             &IID_ISupportErrorInfo};

TEST(Class, EveryFaceLeadsToOneIdentityAndBack) {
    const Component component;
    const ComPtr<IUnknown> control = component.Create();
    for (const IID* from : kFaces) {
        ComPtr<IUnknown> face;
        ASSERT_EQ(control->QueryInterface(*from, face.PutVoid()), S_OK);
        ComPtr<IUnknown> identity;
        ASSERT_EQ(face->QueryInterface(IID_IUnknown, identity.PutVoid()), S_OK);
        EXPECT_EQ(identity.Get(), control.Get());
        for (const IID* to : kFaces) {
            ComPtr<IUnknown> other;
            EXPECT_EQ(face->QueryInterface(*to, other.PutVoid()), S_OK);
        }
        EXPECT_EQ(face->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    }
    control->AddRef();
    EXPECT_EQ(control->Release(), 1u) << "references were not given back";
}

/// A wrapper as extender containers put round a control.
class Wrapper final : public IUnknown {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (id != IID_IUnknown)
            return inner->QueryInterface(id, object);
        *object = this;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override { return --references; }
    ComPtr<IUnknown> inner;
    ULONG references = 1;
};

TEST(Class, CanBeWrapped) {
    const Component component;
    Wrapper wrapper;
    ComPtr<IUnknown> refused;
    EXPECT_EQ(component.Factory()->CreateInstance(&wrapper, IID_IOleObject, refused.PutVoid()), CLASS_E_NOAGGREGATION);
    ASSERT_EQ(component.Factory()->CreateInstance(&wrapper, IID_IUnknown, wrapper.inner.PutVoid()), S_OK);
    {
        const auto object = Query<IOleObject>(&wrapper);
        ASSERT_TRUE(object);
        EXPECT_EQ(wrapper.references, 2u);
        EXPECT_EQ(Query<IUnknown>(object.Get()).Get(), &wrapper);
    }
    EXPECT_EQ(wrapper.references, 1u);
    wrapper.inner = nullptr;
    EXPECT_TRUE(component.CanUnload());
}

TEST(Class, AnswersNullPointersWithAResult) {
    const Component component;
    const ComPtr<IUnknown> control = component.Create();
    const auto addOn = Query<IAddOn>(control.Get());
    EXPECT_EQ(addOn->get_Argument(nullptr), E_POINTER);
    EXPECT_EQ(addOn->put_Argument(nullptr), S_OK);
    EXPECT_EQ(addOn->get_CurrentClusterIndex(nullptr), E_POINTER);
    EXPECT_EQ(addOn->get_CurrentDeviceIndex(nullptr), E_POINTER);
    EXPECT_EQ(addOn->get_OrvProtocol(nullptr), E_POINTER);
    EXPECT_EQ(addOn->put_OrvProtocol(nullptr), S_OK);
    EXPECT_EQ(addOn->putref_OrvProtocol(nullptr), S_OK);
    EXPECT_EQ(addOn->get_MultipleInstances(nullptr), E_POINTER);
    EXPECT_EQ(addOn->get_ProgID(nullptr), E_POINTER);
    EXPECT_EQ(addOn->get_GetResult(nullptr), E_POINTER);
    EXPECT_EQ(addOn->Register(nullptr), S_OK);
    EXPECT_EQ(addOn->get_SelectedDevicesIndexes(nullptr), E_POINTER);
    const auto gui = Query<IAddOnGUI>(control.Get());
    VARIANT none{};
    EXPECT_EQ(gui->get_CloseOnActiveDeviceChange(nullptr), E_POINTER);
    EXPECT_EQ(gui->GetMenuEntry(0, nullptr, nullptr, none, nullptr), E_POINTER);
    EXPECT_EQ(gui->GetMinSize(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(gui->GetToolbarButton(0, nullptr, nullptr, nullptr, 0, none, nullptr), E_POINTER);
    EXPECT_EQ(gui->GetToolbarPicture(0, nullptr, none, nullptr), E_POINTER);
    EXPECT_EQ(gui->get_Modal(nullptr), E_POINTER);
    EXPECT_EQ(gui->get_Picture(nullptr), E_POINTER);
    EXPECT_EQ(gui->ToolbarButtonClicked(0, nullptr), S_OK);
    EXPECT_EQ(gui->RequestUnload(nullptr), E_POINTER);
    EXPECT_EQ(Query<IAddOnCompatibility>(control.Get())->get_MinSupportedVersion(nullptr), E_POINTER);
    EXPECT_EQ(Query<IAddOnControl>(control.Get())->get_Version(nullptr), E_POINTER);

    const auto object = Query<IOleObject>(control.Get());
    EXPECT_EQ(object->GetClientSite(nullptr), E_POINTER);
    EXPECT_EQ(object->SetHostNames(nullptr, nullptr), S_OK);
    EXPECT_EQ(object->GetMoniker(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(object->GetClipboardData(0, nullptr), E_POINTER);
    EXPECT_EQ(object->EnumVerbs(nullptr), E_POINTER);
    EXPECT_EQ(object->GetUserClassID(nullptr), E_POINTER);
    EXPECT_EQ(object->GetUserType(0, nullptr), E_POINTER);
    EXPECT_EQ(object->SetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
    EXPECT_EQ(object->GetExtent(DVASPECT_CONTENT, nullptr), E_POINTER);
    EXPECT_EQ(object->Advise(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(object->Unadvise(7), OLE_E_NOCONNECTION);
    EXPECT_EQ(object->EnumAdvise(nullptr), E_POINTER);
    EXPECT_EQ(object->GetMiscStatus(DVASPECT_CONTENT, nullptr), E_POINTER);
    EXPECT_TRUE(FAILED(object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr)));
    EXPECT_EQ(Query<IOleControl>(control.Get())->GetControlInfo(nullptr), E_POINTER);
    EXPECT_EQ(Query<IOleControl>(control.Get())->OnMnemonic(nullptr), E_POINTER);
    const auto inPlace = Query<IOleInPlaceObject>(control.Get());
    EXPECT_EQ(inPlace->GetWindow(nullptr), E_POINTER);
    EXPECT_EQ(inPlace->SetObjectRects(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Query<IOleInPlaceActiveObject>(control.Get())->TranslateAccelerator(nullptr), E_POINTER);
    const auto view = Query<IViewObject2>(control.Get());
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 0),
              E_INVALIDARG);
    EXPECT_EQ(view->GetColorSet(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(view->GetAdvise(nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Query<IPersistStreamInit>(control.Get())->GetClassID(nullptr), E_POINTER);
    EXPECT_EQ(Query<IPersistStreamInit>(control.Get())->GetSizeMax(nullptr), E_POINTER);
    EXPECT_EQ(Query<IProvideClassInfo>(control.Get())->GetClassInfo(nullptr), E_POINTER);
    const auto dispatch = Query<IDispatch>(control.Get());
    EXPECT_EQ(dispatch->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(dispatch->GetTypeInfo(0, 0, nullptr), E_POINTER);
    EXPECT_EQ(dispatch->GetIDsOfNames(IID_NULL, nullptr, 1, 0, nullptr), E_POINTER);
    EXPECT_EQ(dispatch->Invoke(1, IID_NULL, 0, DISPATCH_METHOD, nullptr, nullptr, nullptr, nullptr), E_POINTER);
}

TEST(Class, SaysWhatItIs) {
    const Component component;
    const ComPtr<IUnknown> control = component.Create();
    CLSID id{};
    EXPECT_EQ(Query<IPersist>(control.Get())->GetClassID(&id), S_OK);
    EXPECT_EQ(id, CLSID_AddOnControl);
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(Query<IProvideClassInfo>(control.Get())->GetClassInfo(info.Put()), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, CLSID_AddOnControl);
    EXPECT_NE(attributes->wTypeFlags & TYPEFLAG_FCONTROL, 0);
    info->ReleaseTypeAttr(attributes);
    FLOAT width = 0;
    FLOAT height = 0;
    EXPECT_EQ(Query<IAddOnGUI>(control.Get())->GetMinSize(&width, &height), S_OK);
    EXPECT_EQ(width, -1.0f);
    EXPECT_EQ(height, -1.0f);
    ComPtr<IDispatch> picture;
    ASSERT_EQ(Query<IAddOnGUI>(control.Get())->get_Picture(picture.Put()), S_OK);
    SHORT kind = 0;
    ASSERT_EQ(Query<IPicture>(picture.Get())->get_Type(&kind), S_OK);
    EXPECT_EQ(kind, PICTYPE_ICON);
}

TEST(Class, DrawsItselfWithoutAWindow) {
    const Component component;
    const auto view = Query<IViewObject2>(component.Create().Get());
    const HDC dc = CreateCompatibleDC(nullptr);
    const platform::win32::OwnedBitmap bitmap(CreateBitmap(200, 100, 1, 32, nullptr));
    {
        const platform::win32::Selected selected(dc, bitmap.Get());
        RECTL area{0, 0, 200, 100};
        EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, dc, &area, nullptr, nullptr, 0), S_OK);
        EXPECT_EQ(GetPixel(dc, 2, 2), GetSysColor(COLOR_BTNFACE));
        int inked = 0;
        for (int x = 0; x < 200; ++x)
            for (int y = 30; y < 70; ++y)
                inked += GetPixel(dc, x, y) != GetSysColor(COLOR_BTNFACE);
        EXPECT_GT(inked, 50) << "the name is missing";
        EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, dc, &area, nullptr, nullptr, 0),
                  DV_E_DVASPECT);
    }
    DeleteDC(dc);
}

} // namespace
} // namespace orv::tests
