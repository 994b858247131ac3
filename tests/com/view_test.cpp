// What a container is told of a control that it looks at or keeps an eye on.
#include "tests/com/running.h"

namespace orv::tests {
namespace {

class Watcher final : public Counted<IAdviseSink> {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        *object = id == IID_IUnknown || id == IID_IAdviseSink ? this : nullptr;
        if (*object)
            AddRef();
        return *object ? S_OK : E_NOINTERFACE;
    }
    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    void STDMETHODCALLTYPE OnViewChange(DWORD aspect, LONG index) override {
        ++views;
        EXPECT_EQ(aspect, static_cast<DWORD>(DVASPECT_CONTENT));
        EXPECT_EQ(index, -1);
    }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override {}
    void STDMETHODCALLTYPE OnClose() override {
        ++closes;
        if (const auto act = std::exchange(within, nullptr))
            act();
    }
    int views = 0;
    int closes = 0;
    std::function<void()> within;
};

TEST(View, SaysThatItIsClosedOnce) {
    const Component component;
    const ComPtr<IUnknown> control = component.Create();
    const auto object = Query<IOleObject>(control.Get());
    Watcher watcher;
    DWORD connection = 0;
    ASSERT_EQ(object->Advise(&watcher, &connection), S_OK);
    watcher.within = [&] { EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK); };
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(watcher.closes, 1);
    EXPECT_EQ(object->Unadvise(connection), S_OK);
    EXPECT_EQ(watcher.references, 1u);
}

TEST(View, IsShownToWhoeverWantsItFirstAndForgetsWhoWantsItOnce) {
    struct Case {
        DWORD flags;
        int views;
        bool kept;
    };
    for (const Case& c : {Case{0, 0, true}, Case{ADVF_PRIMEFIRST, 1, true},
                          Case{ADVF_PRIMEFIRST | ADVF_ONLYONCE, 1, false}, Case{ADVF_ONLYONCE, 0, true}}) {
        SCOPED_TRACE(c.flags);
        const Component component;
        const auto view = Query<IViewObject2>(component.Create().Get());
        Watcher watcher;
        EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, c.flags, &watcher), S_OK);
        EXPECT_EQ(watcher.views, c.views);
        EXPECT_EQ(watcher.references, c.kept ? 2u : 1u);
        ComPtr<IAdviseSink> kept;
        DWORD flags = 0;
        EXPECT_EQ(view->GetAdvise(nullptr, &flags, kept.Put()), S_OK);
        EXPECT_EQ(kept.Get(), c.kept ? &watcher : nullptr);
        EXPECT_EQ(flags, c.kept ? c.flags : 0);
        kept = nullptr;
        EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, 0, nullptr), S_OK);
        EXPECT_EQ(watcher.references, 1u);
    }
}

TEST(View, IsWholeOrNotAtAll) {
    const Component component;
    const auto view = Query<IViewObject2>(component.Create().Get());
    const HDC dc = CreateCompatibleDC(nullptr);
    const RECTL area{0, 0, 9, 9};
    SIZEL size{};
    LOGPALETTE* palette = nullptr;
    DWORD frozen = 0;
    for (const LONG part : {0L, 1L, -2L}) {
        EXPECT_EQ(view->Draw(DVASPECT_CONTENT, part, nullptr, nullptr, nullptr, dc, &area, nullptr, nullptr, 0),
                  DV_E_LINDEX);
        EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, part, nullptr, &size), DV_E_LINDEX);
        EXPECT_EQ(view->GetColorSet(DVASPECT_CONTENT, part, nullptr, nullptr, nullptr, &palette), DV_E_LINDEX);
        EXPECT_EQ(view->Freeze(DVASPECT_CONTENT, part, nullptr, &frozen), DV_E_LINDEX);
    }
    EXPECT_EQ(view->GetExtent(DVASPECT_CONTENT, -1, nullptr, &size), S_OK);
    DeleteDC(dc);
}

} // namespace
} // namespace orv::tests
