// Late-bound calls as careless callers make them, on the control and on the bench host's objects.
#include <gtest/gtest.h>

#include "addon/com/automation.h"
#include "addon/com/event_sink.h"
#include "host/com/application_face.h"
#include "host/sim/bench_host.h"
#include "tests/com/component.h"

namespace orv::tests {
namespace {

using addon::com::Bstr;
using addon::com::Variant;

constexpr UINT kNobody = 77;

struct Answer {
    HRESULT result = E_FAIL;
    UINT wrong = kNobody;
    Variant value;
};

/// `arguments` as IDispatch has them: the last one first.
Answer Call(IDispatch& face, DISPID member, WORD flags, std::vector<VARIANT> arguments, std::vector<DISPID> names = {},
            REFIID reserved = IID_NULL) {
    Answer answer;
    EXCEPINFO failure{};
    DISPPARAMS parameters{arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                          static_cast<UINT>(names.size())};
    answer.result = face.Invoke(member, reserved, LOCALE_USER_DEFAULT, flags, &parameters, answer.value.Put(), &failure,
                                &answer.wrong);
    SysFreeString(failure.bstrDescription);
    SysFreeString(failure.bstrSource);
    return answer;
}

VARIANT Number(LONG number) {
    VARIANT variant{};
    variant.vt = VT_I4;
    variant.lVal = number;
    return variant;
}

VARIANT Text(const Bstr& text) {
    VARIANT variant{};
    variant.vt = VT_BSTR;
    variant.bstrVal = text.Get();
    return variant;
}

VARIANT LeftOut() {
    return Variant::Missing().Detach();
}

template <typename T>
VARIANT Reference(VARTYPE type, T* place) {
    VARIANT variant{};
    variant.vt = static_cast<VARTYPE>(VT_BYREF | type);
    variant.byref = place;
    return variant;
}

constexpr DISPID kArgument = 1;
constexpr DISPID kDevice = 3;
constexpr DISPID kResult = 7;
constexpr DISPID kRegister = 8;
constexpr DISPID kGetMinSize = 105;
constexpr DISPID kMenuClicked = 108;
constexpr DISPID kButtonClicked = 111;

class LateBound : public testing::Test {
  protected:
    Answer GetMinSize(VARIANT width, VARIANT height) {
        return Call(*face.Get(), kGetMinSize, DISPATCH_METHOD, {height, width});
    }

    Component component;
    ComPtr<IDispatch> face = Query<IDispatch>(component.Create().Get());
};

TEST_F(LateBound, FillsWhateverItIsGivenToFill) {
    float single = 0;
    double precise = 0;
    LONG whole = 0;
    SHORT small = 0;
    LONGLONG large = 0;
    CY money{};
    BSTR text = SysAllocString(L"before");
    Variant variable;
    variable.Get() = Text(Bstr(L"owned by the variable"));
    variable.Get().bstrVal = SysAllocString(L"owned by the variable");
    VARIANT nested = Reference(VT_R8, &precise);
    const VARIANT places[] = {Reference(VT_R4, &single),     Reference(VT_R8, &precise),
                              Reference(VT_I4, &whole),      Reference(VT_I2, &small),
                              Reference(VT_I8, &large),      Reference(VT_CY, &money),
                              Reference(VT_BSTR, &text),     Reference(VT_VARIANT, &variable.Get()),
                              Reference(VT_VARIANT, &nested)};
    for (const VARIANT& width : places)
        for (const VARIANT& height : places) {
            single = 0, precise = 0, whole = 0, small = 0, large = 0, money.int64 = 0;
            ASSERT_EQ(GetMinSize(width, height).result, S_OK) << width.vt << " and " << height.vt;
            for (const VARIANT* given : {&width, &height}) {
                Variant number;
                ASSERT_EQ(VariantCopyInd(number.Put(), const_cast<VARIANT*>(given)), S_OK);
                ASSERT_EQ(VariantChangeType(&number.Get(), &number.Get(), 0, VT_R8), S_OK) << given->vt;
                EXPECT_EQ(number.Get().dblVal, -1.0) << given->vt;
            }
        }
    EXPECT_STREQ(text, L"-1");
    SysFreeString(text);
    EXPECT_EQ(variable.Get().vt, VT_R4);
    Variant early[2];
    early[0].Get() = Reference(VT_R8, &precise);
    precise = 0;
    EXPECT_EQ(Query<IAddOnControl>(face.Get())->GetMinSize(&early[0].Get(), &early[1].Get()), S_OK);
    EXPECT_EQ(precise, -1.0);
    EXPECT_EQ(early[1].Get().fltVal, -1.0f);
}

TEST_F(LateBound, LeavesAloneWhatItCannotFill) {
    const Bstr text(L"the caller's own, and longer than a number");
    double filled = 5;
    BYTE unsignedByte = 7;
    SAFEARRAY* array = nullptr;
    VARIANT ring{};
    ring.vt = VT_BYREF | VT_VARIANT;
    ring.pvarVal = &ring;
    const std::pair<VARIANT, HRESULT> cases[] = {
        {Text(text), DISP_E_TYPEMISMATCH},
        {Number(3), DISP_E_TYPEMISMATCH},
        {VARIANT{}, DISP_E_TYPEMISMATCH},
        {Reference<double>(VT_R8, nullptr), DISP_E_TYPEMISMATCH},
        {Reference<VARIANT>(VT_VARIANT, nullptr), DISP_E_TYPEMISMATCH},
        {Reference(VT_ARRAY | VT_R4, &array), DISP_E_TYPEMISMATCH},
        {ring, DISP_E_TYPEMISMATCH},
        {Reference(VT_UI1, &unsignedByte), DISP_E_OVERFLOW},
        {LeftOut(), DISP_E_PARAMNOTOPTIONAL},
    };
    for (const auto& [given, result] : cases)
        for (const bool first : {false, true}) {
            const VARIANT other = Reference(VT_R8, &filled);
            const Answer answer = first ? GetMinSize(given, other) : GetMinSize(other, given);
            EXPECT_EQ(answer.result, result) << given.vt;
            EXPECT_EQ(answer.wrong, first ? 1u : 0u) << given.vt;
            EXPECT_EQ(filled, 5) << "half of it was filled";
            EXPECT_EQ(unsignedByte, 7);
        }
    EXPECT_EQ(text.Text(), L"the caller's own, and longer than a number");
}

TEST_F(LateBound, TakesArgumentsInEveryDress) {
    SHORT index = 5;
    VARIANT inner = Reference(VT_I2, &index);
    VARIANT outer = Reference(VT_VARIANT, &inner);
    const Bstr seven(L"7");
    const std::vector<std::pair<VARIANT, LONG>> dresses = {
        {Number(3), 3}, {Text(seven), 7}, {Reference(VT_I2, &index), 5}, {Reference(VT_VARIANT, &outer), 5}};
    for (const auto& [given, wanted] : dresses) {
        EXPECT_EQ(Call(*face.Get(), kDevice, DISPATCH_PROPERTYPUT, {given}, {DISPID_PROPERTYPUT}).result, S_OK);
        const Answer read = Call(*face.Get(), kDevice, DISPATCH_PROPERTYGET | DISPATCH_METHOD, {});
        EXPECT_EQ(read.result, S_OK);
        EXPECT_EQ(read.value.Get().iVal, wanted);
    }
    const Bstr key(L"key");
    EXPECT_EQ(Call(*face.Get(), kButtonClicked, DISPATCH_METHOD, {Number(1), Text(key)}, {0, 1}).result, S_OK);
    EXPECT_EQ(Call(*face.Get(), kButtonClicked, DISPATCH_METHOD, {Text(key), Number(1)}, {1}).result, S_OK);
    EXPECT_EQ(Call(*face.Get(), kRegister, DISPATCH_METHOD, {Reference(VT_VARIANT, &outer)}).wrong, 0u);
}

TEST_F(LateBound, RefusesWhatDoesNotFitAndSaysWhere) {
    const Bstr word(L"word");
    struct Case {
        const char* what;
        DISPID member;
        WORD flags;
        std::vector<VARIANT> arguments;
        std::vector<DISPID> names;
        HRESULT result;
        UINT wrong;
    };
    const Case cases[] = {
        {"a text for a number", kMenuClicked, DISPATCH_METHOD, {Text(word)}, {}, DISP_E_TYPEMISMATCH, 0},
        {"the second of two", kButtonClicked, DISPATCH_METHOD, {Text(word), Text(word)}, {}, DISP_E_TYPEMISMATCH, 1},
        {"a number too large", kMenuClicked, DISPATCH_METHOD, {Number(70000)}, {}, DISP_E_OVERFLOW, 0},
        {"left out", kMenuClicked, DISPATCH_METHOD, {LeftOut()}, {}, DISP_E_PARAMNOTOPTIONAL, 0},
        {"a number for an object", kRegister, DISPATCH_METHOD, {Number(1)}, {}, DISP_E_TYPEMISMATCH, 0},
        {"one too few", kButtonClicked, DISPATCH_METHOD, {Number(1)}, {}, DISP_E_BADPARAMCOUNT, kNobody},
        {"a name twice", kButtonClicked, DISPATCH_METHOD, {Number(1), Number(1)}, {0, 0}, DISP_E_PARAMNOTFOUND, 1},
        {"a place twice", kButtonClicked, DISPATCH_METHOD, {Number(1), Number(1)}, {0}, DISP_E_PARAMNOTFOUND, 0},
        {"a name unknown", kButtonClicked, DISPATCH_METHOD, {Number(1), Number(1)}, {9}, DISP_E_PARAMNOTFOUND, 0},
        {"a new value unnamed", kDevice, DISPATCH_PROPERTYPUT, {Number(1)}, {}, DISP_E_PARAMNOTOPTIONAL, kNobody},
        {"a new value for a method",
         kMenuClicked,
         DISPATCH_PROPERTYPUT,
         {Number(1)},
         {DISPID_PROPERTYPUT},
         DISP_E_MEMBERNOTFOUND,
         kNobody},
        {"a new value for what is only read",
         kResult,
         DISPATCH_PROPERTYPUT,
         {Number(1)},
         {DISPID_PROPERTYPUT},
         DISP_E_MEMBERNOTFOUND,
         kNobody},
        {"a method read", kMenuClicked, DISPATCH_PROPERTYGET, {Number(1)}, {}, DISP_E_MEMBERNOTFOUND, kNobody},
        {"no such member", 4711, DISPATCH_METHOD, {}, {}, DISP_E_MEMBERNOTFOUND, kNobody},
        {"a member that every object has", 0x60000001, DISPATCH_METHOD, {}, {}, DISP_E_MEMBERNOTFOUND, kNobody},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Answer answer = Call(*face.Get(), c.member, c.flags, c.arguments, c.names);
        EXPECT_EQ(answer.result, c.result);
        EXPECT_EQ(answer.wrong, c.wrong);
    }
    DISPPARAMS torn{nullptr, nullptr, 1, 0};
    EXPECT_EQ(face->Invoke(kMenuClicked, IID_NULL, 0, DISPATCH_METHOD, &torn, nullptr, nullptr, nullptr), E_INVALIDARG);
}

/// Every member of a face, as its own description lists them.
void TryEachMember(IDispatch& face) {
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(face.GetTypeInfo(0, 0, info.Put()), S_OK);
    FUNCDESC* function = nullptr;
    int members = 0;
    for (UINT i = 0; SUCCEEDED(info->GetFuncDesc(i, &function)); ++i) {
        const auto kind = static_cast<WORD>(function->invkind);
        const auto count = static_cast<std::size_t>(function->cParams);
        const MEMBERID member = function->memid;
        info->ReleaseFuncDesc(function);
        if (member >= 0x60000000)
            continue;
        SCOPED_TRACE(testing::Message() << "member " << member << ", kind " << kind);
        ++members;
        const bool puts = (kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
        const std::vector<DISPID> names(puts ? 1 : 0, DISPID_PROPERTYPUT);
        const std::vector<VARIANT> surplus(count + 1, Number(1));
        EXPECT_EQ(Call(face, member, kind, surplus, names).result, DISP_E_BADPARAMCOUNT);
        EXPECT_EQ(Call(face, member, kind, std::vector<VARIANT>(count, Number(1)), names, IID_IUnknown).result,
                  DISP_E_UNKNOWNINTERFACE);
        EXPECT_EQ(Call(face, member, 0, std::vector<VARIANT>(count, Number(1)), names).result, DISP_E_MEMBERNOTFOUND);
        if (kind == DISPATCH_METHOD) {
            EXPECT_EQ(Call(face, member, DISPATCH_PROPERTYPUT, {Number(1)}, {DISPID_PROPERTYPUT}).result,
                      DISP_E_MEMBERNOTFOUND);
        }
    }
    EXPECT_GT(members, 0);
    wchar_t name[] = L"NoSuchName";
    wchar_t inherited[] = L"AddRef";
    LPOLESTR names[] = {name, nullptr};
    LPOLESTR everyones[] = {inherited};
    DISPID ids[2] = {5, 5};
    EXPECT_EQ(face.GetIDsOfNames(IID_IUnknown, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(face.GetIDsOfNames(IID_NULL, names, 0, 0, ids), E_INVALIDARG);
    EXPECT_EQ(face.GetIDsOfNames(IID_NULL, names, 2, 0, ids), E_INVALIDARG);
    EXPECT_EQ(face.GetIDsOfNames(IID_NULL, names, 1, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    EXPECT_EQ(face.GetIDsOfNames(IID_NULL, everyones, 1, 0, ids), DISP_E_UNKNOWNNAME);
}

TEST_F(LateBound, HoldsForEveryMemberOfEveryFace) {
    const auto bench = std::make_shared<sim::BenchHost>(sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json"));
    {
        SCOPED_TRACE("the control");
        TryEachMember(*face.Get());
    }
    {
        SCOPED_TRACE("the application");
        TryEachMember(*host::Make<host::ApplicationFace>(bench->Application()).Get());
    }
    const auto support = host::Make<host::SupportFace>(bench->CreateSupportObject());
    {
        SCOPED_TRACE("the support object");
        TryEachMember(*support.Get());
    }
    // Named arguments find their places.
    const Bstr list(L"a"), item(L"b"), separator(L";");
    const Answer joined = Call(*support.Get(), 4, DISPATCH_METHOD, {Text(item), Text(separator), Text(list)}, {1, 2});
    EXPECT_EQ(joined.result, S_OK);
    EXPECT_STREQ(joined.value.Get().bstrVal, L"a;b");
}

TEST(EventSinkLate, RefusesWhatIsNotMeantForIt) {
    const ComPtr<addon::com::EventSink> sink(new addon::com::EventSink(nullptr));
    EXPECT_EQ(Call(*sink.Get(), 1, DISPATCH_METHOD, {}, {}, IID_IUnknown).result, DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(Call(*sink.Get(), 1, DISPATCH_METHOD, {Number(1)}).result, DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(Call(*sink.Get(), 2, DISPATCH_METHOD, {Number(1)}, {0}).result, DISP_E_NONAMEDARGS);
    EXPECT_EQ(Call(*sink.Get(), 2, DISPATCH_PROPERTYPUT, {Number(1)}, {DISPID_PROPERTYPUT}).result,
              DISP_E_MEMBERNOTFOUND);
    const Bstr word(L"word");
    const Answer wrong = Call(*sink.Get(), 2, DISPATCH_METHOD, {Text(word)});
    EXPECT_EQ(wrong.result, DISP_E_TYPEMISMATCH);
    EXPECT_EQ(wrong.wrong, 0u);
}

} // namespace
} // namespace orv::tests
