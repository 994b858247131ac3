// Values and failures across the border to the host.
#include <limits>

#include <gtest/gtest.h>

#include "addon/com/event_sink.h"
#include "addon/com/failure.h"
#include "addon/com/host_adapters.h"
#include "addon/com/values.h"
#include "host/com/application_face.h"
#include "host/com/class_objects.h"
#include "platform/services.h"

namespace orv::tests {
namespace {

using namespace addon::com;

TEST(Values, TravelThereAndBack) {
    Bytes all;
    for (int i = 0; i < 256; ++i)
        all.push_back(static_cast<std::uint8_t>(i));
    const device::Value values[] = {
        {},
        std::int16_t{-32768},
        std::numeric_limits<std::int32_t>::min(),
        std::uint8_t{255},
        std::wstring(),
        std::wstring(L"a\0b\x20AC", 4),
        Bytes(),
        all,
    };
    for (const device::Value& value : values)
        EXPECT_EQ(ToValue(ToVariant(value).Get()), value) << value.index();
}

TEST(Values, OfOtherKindsConvertOrAreRefused) {
    Variant variant;
    variant.Get().vt = VT_BOOL;
    variant.Get().boolVal = VARIANT_TRUE;
    EXPECT_EQ(ToValue(variant.Get()), device::Value(std::int16_t{1}));
    LONG number = 77;
    VARIANT reference{};
    reference.vt = VT_BYREF | VT_I4;
    reference.plVal = &number;
    EXPECT_EQ(ToValue(reference), device::Value(std::int32_t{77}));
    variant.Get().vt = VT_R8;
    variant.Get().dblVal = 12.0;
    EXPECT_EQ(ToValue(variant.Get()), device::Value(std::int32_t{12}));
    const auto refused = [](const VARIANT& given) {
        try {
            ToValue(given);
        } catch (const Error& error) {
            return error.Number();
        }
        return 0;
    };
    variant.Get().dblVal = 1e12;
    EXPECT_EQ(refused(variant.Get()), error_number::kTypeMismatch);
    variant.Get().vt = VT_UNKNOWN;
    variant.Get().punkVal = nullptr;
    EXPECT_EQ(refused(variant.Get()), error_number::kTypeMismatch);
    Variant square;
    SAFEARRAYBOUND bounds[2] = {{2, 0}, {2, 0}};
    square.Get().parray = SafeArrayCreate(VT_UI1, 2, bounds);
    square.Get().vt = VT_ARRAY | VT_UI1;
    EXPECT_EQ(refused(square.Get()), error_number::kTypeMismatch);
    EXPECT_THROW(ToByteArray(ToVariant(std::wstring(L"x")).Get()), Error);
    EXPECT_EQ(ToByteArray(Variant().Get()), Bytes());
}

TEST(Failures, BecomeResultsAndComeBackWithNumberAndText) {
    EXPECT_EQ(Guarded([] { throw std::bad_alloc(); }), E_OUTOFMEMORY);
    EXPECT_EQ(Guarded([] { throw platform::WaitAbandoned(); }), E_ABORT);
    EXPECT_EQ(Guarded([] { throw 5; }), E_UNEXPECTED);
    EXPECT_EQ(Guarded([] { throw Error(error_number::kSubscript); }), static_cast<HRESULT>(0x800A0009));
    EXPECT_EQ(Guarded([] { throw Error(static_cast<std::int32_t>(E_ACCESSDENIED), L"closed"); }), E_ACCESSDENIED);
    ComPtr<IErrorInfo> left;
    ASSERT_EQ(GetErrorInfo(0, left.Put()), S_OK);
    Bstr text;
    left->GetDescription(text.Put());
    EXPECT_EQ(text.Text(), L"closed");
    EXPECT_EQ(SystemError(E_ACCESSDENIED).Number(), static_cast<std::int32_t>(E_ACCESSDENIED));
    EXPECT_FALSE(SystemError(E_ACCESSDENIED).Description().empty());
}

class Adapters : public testing::Test {
  protected:
    std::shared_ptr<sim::BenchHost> bench =
        std::make_shared<sim::BenchHost>(sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json"));
    host::ClassObjects classes{bench};
    ComHostFactory factory;
};

TEST_F(Adapters, ReadAndWriteWhatTheHostHolds) {
    const auto manager = factory.CreateConfigurationManager();
    const auto configuration = manager->GetConfiguration();
    EXPECT_EQ(configuration->AccessLevel(), 3);
    const auto table = configuration->GetDeviceRecords()->Record(0, 0)->GetParameterTable(0);
    const auto contents = bench->Contents();
    for (const auto& wanted : contents.devices.front().parameters) {
        const auto entry = table->FindByNumber(wanted.number);
        ASSERT_NE(entry, 0) << wanted.number;
        const auto direct = bench->CreateConfigurationManager()
                                ->GetConfiguration()
                                ->GetDeviceRecords()
                                ->Record(0, 0)
                                ->GetParameterTable(0);
        const auto there = direct->FindByNumber(wanted.number);
        EXPECT_EQ(table->GetValue(entry, 0), direct->GetValue(there, 0)) << wanted.number;
        const auto described = table->Describe(entry);
        const auto expected = direct->Describe(there);
        EXPECT_EQ(described.choices, expected.choices) << wanted.number;
        EXPECT_EQ(described.elementCount, expected.elementCount);
        EXPECT_EQ(described.hasRange, expected.hasRange);
        EXPECT_EQ(described.minimum, expected.minimum);
        EXPECT_EQ(described.maximum, expected.maximum);
        EXPECT_EQ(described.maximumStringLength, expected.maximumStringLength);
        table->SetValue(entry, table->GetValue(entry, 0));
        EXPECT_EQ(table->EntryName(entry, 0, 3), direct->EntryName(there, 0, 3));
    }
    manager->ReleaseConfiguration(configuration);
}

TEST_F(Adapters, EveryFailureOfAHostCallFliesAsItsNumberAndText) {
    constexpr auto kNumber = static_cast<std::int32_t>(0x80040777);
    const auto configuration = factory.CreateConfigurationManager()->GetConfiguration();
    const auto support = factory.CreateSupportObject();
    const auto application =
        AdaptApplication(ComPtr<IOrvApplication>(host::Make<host::ApplicationFace>(bench->Application()).Get()));
    const auto table = configuration->GetDeviceRecords()->Record(0, 0)->GetParameterTable(0);
    const std::function<void()> calls[] = {
        [&] { configuration->AccessLevel(); },
        [&] { configuration->SetAccessLevel(3); },
        [&] { configuration->SetInteractiveMode(true); },
        [&] { configuration->GetDeviceRecords(); },
        [&] { table->FindByNumber(6); },
        [&] { table->FindByPath(L"/Cluster/Descr", 3); },
        [&] { table->EntryName(table->FindByNumber(6), 0, 3); },
        [&] { table->SetInteractiveMode(true); },
        [&] { support->TextToBytes(L"x", 128, 1033); },
        [&] { support->BytesToText({65}, 64, 1033); },
        [&] { support->HexByte(5); },
        [&] { support->Minimum(1, 2); },
        [&] { support->ShowProgress(L"a", L"b"); },
        [&] { support->Settle(7.0f); },
        [&] { application->SetCaption(L"c"); },
        [&] { application->CloseAddOn(); },
        [&] { application->HelpName(); },
    };
    int index = 0;
    for (const auto& call : calls) {
        bench->Gate().FailCall(1, kNumber, L"refused by the host");
        try {
            call();
            ADD_FAILURE() << "call " << index << " succeeded";
        } catch (const Error& error) {
            EXPECT_EQ(error.Number(), kNumber) << index;
            EXPECT_EQ(error.Description(), L"refused by the host") << index;
        }
        EXPECT_NO_THROW(call()) << index;
        ++index;
    }
}

struct Heard : device::MibSapEvents {
    void Connected() override { ++connected; }
    void Error(std::int32_t code) override { codes.push_back(code); }
    void ResponseReceived(const std::wstring& text) override { texts.push_back(text); }
    int connected = 0;
    std::vector<std::int32_t> codes;
    std::vector<std::wstring> texts;
};

TEST(EventSink, ForwardsEarlyAndLateBoundUntilItIsSilenced) {
    const auto heard = std::make_shared<Heard>();
    const ComPtr<EventSink> sink(new EventSink(heard));
    EXPECT_EQ(sink->Connected(), S_OK);
    EXPECT_EQ(sink->Error(308), S_OK);
    EXPECT_EQ(sink->ResponseReceived(nullptr), S_OK);
    const auto fire = [&](const wchar_t* name, VARIANTARG* argument) {
        std::wstring writable = name;
        LPOLESTR names[] = {writable.data()};
        DISPID id = 0;
        const HRESULT found = sink->GetIDsOfNames(IID_NULL, names, 1, 0, &id);
        DISPPARAMS parameters{argument, nullptr, argument ? 1u : 0u, 0};
        return FAILED(found) ? found
                             : sink->Invoke(id, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr);
    };
    Variant code;
    code.Get().vt = VT_I2;
    code.Get().iVal = 309;
    EXPECT_EQ(fire(L"error", &code.Get()), S_OK);
    Variant text = ToVariant(std::wstring(L"42"));
    EXPECT_EQ(fire(L"ResponseReceived", &text.Get()), S_OK);
    EXPECT_EQ(fire(L"Connected", nullptr), S_OK);
    EXPECT_EQ(fire(L"Error", nullptr), DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(fire(L"Nothing", nullptr), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(heard->connected, 2);
    EXPECT_EQ(heard->codes, (std::vector<std::int32_t>{308, 309}));
    EXPECT_EQ(heard->texts, (std::vector<std::wstring>{L"", L"42"}));
    sink->Silence();
    EXPECT_EQ(sink->Error(1), S_OK);
    EXPECT_EQ(heard->codes.size(), 2u);
    EXPECT_EQ(heard.use_count(), 1) << "a silent sink still holds its receiver";
}

} // namespace
} // namespace orv::tests
