// A container that acts on the control from inside each of its own methods.
#include <set>

#include "tests/com/running.h"

namespace orv::tests {
namespace {

struct Action {
    const char* name;
    std::function<void(Container&)> act;
};

/// A member of the control called without holding it: the container's last reference may go meanwhile.
template <typename I, typename Method, typename... Arguments>
HRESULT Borrowed(Container& container, Method method, Arguments... arguments) {
    I* const face = Query<I>(container.control.Get()).Get();
    return face ? (face->*method)(arguments...) : E_NOINTERFACE;
}

HRESULT Verb(Container& container, LONG verb) {
    return Borrowed<IOleObject>(container, &IOleObject::DoVerb, verb, nullptr, nullptr, 0, container.Window(),
                                &container.place);
}

void LetGo(Container& container) {
    container.frame.active = nullptr;
    container.document.active = nullptr;
    container.control = nullptr;
}

const Action kActions[] = {
    {"HIDE", [](Container& c) { Verb(c, OLEIVERB_HIDE); }},
    {"SHOW", [](Container& c) { Verb(c, OLEIVERB_SHOW); }},
    {"INPLACEACTIVATE", [](Container& c) { Verb(c, OLEIVERB_INPLACEACTIVATE); }},
    {"UIACTIVATE", [](Container& c) { Verb(c, OLEIVERB_UIACTIVATE); }},
    {"UIDeactivate", [](Container& c) { Borrowed<IOleInPlaceObject>(c, &IOleInPlaceObject::UIDeactivate); }},
    {"InPlaceDeactivate", [](Container& c) { Borrowed<IOleInPlaceObject>(c, &IOleInPlaceObject::InPlaceDeactivate); }},
    {"SetObjectRects",
     [](Container& c) { Borrowed<IOleInPlaceObject>(c, &IOleInPlaceObject::SetObjectRects, &c.place, &c.place); }},
    {"SetExtent",
     [](Container& c) {
         SIZEL extent{9000, 8000};
         Borrowed<IOleObject>(c, &IOleObject::SetExtent, DVASPECT_CONTENT, &extent);
     }},
    {"Close", [](Container& c) { Borrowed<IOleObject>(c, &IOleObject::Close, OLECLOSE_NOSAVE); }},
    {"no site", [](Container& c) { Borrowed<IOleObject>(c, &IOleObject::SetClientSite, nullptr); }},
    {"last release", &LetGo},
};

/// A control's life as containers lead it, as far as the control goes along.
void Lead(Container& container) {
    const std::function<void()> steps[] = {
        [&] { Borrowed<IOleObject>(container, &IOleObject::SetClientSite, &container); },
        [&] { Verb(container, OLEIVERB_INPLACEACTIVATE); },
        [&] { Verb(container, OLEIVERB_UIACTIVATE); },
        [&] { Borrowed<IOleInPlaceObject>(container, &IOleInPlaceObject::UIDeactivate); },
        [&] {
            SetForegroundWindow(container.Window());
            SetFocus(container.Find(L"cmdCancel"));
        },
        [&] { Verb(container, OLEIVERB_HIDE); },
        [&] { Verb(container, OLEIVERB_UIACTIVATE); },
        [&] { Borrowed<IOleInPlaceObject>(container, &IOleInPlaceObject::InPlaceDeactivate); },
        [&] { Verb(container, OLEIVERB_UIACTIVATE); },
        [&] { Borrowed<IOleObject>(container, &IOleObject::Close, OLECLOSE_NOSAVE); },
        [&] { Borrowed<IOleObject>(container, &IOleObject::SetClientSite, nullptr); },
    };
    for (const auto& step : steps)
        if (container.control)
            step();
    container.within = nullptr;
    LetGo(container);
}

/// Each end after its beginning, the inner ones inside the outer ones, and none left open.
testing::AssertionResult Balanced(const Journal& journal) {
    int inPlace = 0;
    int ui = 0;
    for (const std::string& line : journal) {
        inPlace += line == "OnInPlaceActivate" ? 1 : line == "OnInPlaceDeactivate" ? -1 : 0;
        ui += line == "OnUIActivate" ? 1 : line == "OnUIDeactivate" ? -1 : 0;
        if (inPlace < 0 || inPlace > 1 || ui < 0 || ui > inPlace)
            return testing::AssertionFailure() << line << " at the wrong time";
    }
    if (inPlace != 0 || ui != 0)
        return testing::AssertionFailure() << "no end of it";
    return testing::AssertionSuccess();
}

class Reentry : public testing::Test {
  protected:
    void ExpectNothingLeft(const Container& container) {
        EXPECT_TRUE(Balanced(container.journal)) << testing::PrintToString(container.journal);
        EXPECT_EQ(GetWindow(container.Window(), GW_CHILD), nullptr) << "a window is left";
        EXPECT_FALSE(container.frame.active) << "the frame still has the object";
        EXPECT_FALSE(container.document.active) << "the document still has the object";
        EXPECT_EQ(container.references, 1u);
        EXPECT_EQ(container.frame.references, 1u);
        EXPECT_EQ(container.document.references, 1u);
        EXPECT_TRUE(Within([this] { return component.CanUnload(); }));
    }

    static Manners Given() {
        Manners manners;
        manners.document = true;
        return manners;
    }

    Component component;
};

TEST_F(Reentry, WhateverIsDoneInWhicheverMethodEndsInOrder) {
    std::set<std::string> methods;
    {
        Container container(Given());
        container.control = component.Create();
        container.within = [&](const std::string& line) { methods.insert(line); };
        Lead(container);
        ExpectNothingLeft(container);
    }
    EXPECT_GE(methods.size(), 15u) << testing::PrintToString(methods);
    for (const std::string& method : methods)
        for (const Action& action : kActions) {
            SCOPED_TRACE(std::string(action.name) + " in " + method);
            Container container(Given());
            container.control = component.Create();
            bool acted = false;
            container.within = [&](const std::string& line) {
                if (line != method || !container.control)
                    return;
                acted = true;
                action.act(container);
            };
            Lead(container);
            EXPECT_TRUE(acted);
            ExpectNothingLeft(container);
            if (HasFailure())
                return;
        }
}

TEST_F(Reentry, WhatIsTakenBackMeanwhileStaysTakenBack) {
    struct Case {
        const char* method;
        const char* action;
        bool active;
    };
    // Hidden is still active; whoever takes the site or closes has ended it.
    for (const Case& c : {Case{"GetWindowContext", "HIDE", true}, Case{"ShowObject", "HIDE", true},
                          Case{"OnUIActivate", "HIDE", true}, Case{"GetWindowContext", "InPlaceDeactivate", false},
                          Case{"OnInPlaceActivate", "no site", false}, Case{"OnUIActivate", "Close", false}}) {
        SCOPED_TRACE(std::string(c.action) + " in " + c.method);
        Container container(Given());
        container.control = component.Create();
        Query<IOleObject>(container.control.Get())->SetClientSite(&container);
        container.within = [&](const std::string& line) {
            if (line == c.method)
                for (const Action& action : kActions)
                    if (std::string(action.name) == c.action)
                        action.act(container);
        };
        EXPECT_NE(Verb(container, OLEIVERB_UIACTIVATE), S_OK) << "it is not what the verb asks for";
        const HWND window = container.ControlWindow();
        EXPECT_EQ(window != nullptr, c.active);
        EXPECT_FALSE(window && IsWindowVisible(window));
        EXPECT_FALSE(container.frame.active);
        container.within = nullptr;
        container.Discard();
        ExpectNothingLeft(container);
    }
}

} // namespace
} // namespace orv::tests
