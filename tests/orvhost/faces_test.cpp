#include <OrvAddon.h>

#include <gtest/gtest.h>

#include "host/com/application_face.h"
#include "host/com/class_objects.h"
#include "host/com/configuration_faces.h"
#include "host/com/dual.h"
#include "host/com/values.h"
#include "tests/orvhost/late_bound.h"

namespace orv::host {
namespace {

struct FacesTest : testing::Test {
    long before = LiveFaces();
    std::shared_ptr<sim::BenchHost> bench =
        std::make_shared<sim::BenchHost>(sim::LoadDescription(ORV_SOURCE_DIR "/samples/tiny.json"));
    std::unique_ptr<ClassObjects> classes = std::make_unique<ClassObjects>(bench);

    void TearDown() override {
        classes.reset();
        EXPECT_EQ(LiveFaces(), before) << "every face was let go";
    }

    template <typename Interface>
    ComPtr<Interface> Create(REFCLSID id) {
        ComPtr<Interface> object;
        EXPECT_EQ(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, __uuidof(Interface), object.ReceiveVoid()), S_OK);
        return object;
    }
    ComPtr<IOrvConfiguration> Configuration() {
        const auto manager = Create<IOrvConfigurationManager>(CLSID_ConfigurationManager);
        ComPtr<IOrvConfiguration> configuration;
        EXPECT_EQ(manager->GetConfiguration(VARIANT{}, VARIANT{}, configuration.Receive()), S_OK);
        return configuration;
    }
    ComPtr<IOrvParameterTable> Table() {
        ComPtr<IOrvDeviceRecords> records;
        ComPtr<IOrvDeviceRecord> record;
        ComPtr<IOrvParameterTable> table;
        EXPECT_EQ(Configuration()->GetDeviceRecords(records.Receive()), S_OK);
        EXPECT_EQ(records->Record(0, 0, record.Receive()), S_OK);
        EXPECT_EQ(record->GetParameterTable(0, table.Receive()), S_OK);
        return table;
    }
};

TEST_F(FacesTest, TheClassesAreCreatedThroughComAndGoWithTheirRegistration) {
    EXPECT_TRUE(Create<IOrvSupport>(CLSID_Support));
    EXPECT_TRUE(Create<IDispatch>(CLSID_ConfigurationManager));
    ComPtr<IUnknown> none;
    EXPECT_EQ(CoCreateInstance(CLSID_Support, nullptr, CLSCTX_INPROC_SERVER, IID_IOrvApplication, none.ReceiveVoid()),
              E_NOINTERFACE);
    none.Detach();
    classes.reset();
    EXPECT_NE(CoCreateInstance(CLSID_Support, nullptr, CLSCTX_INPROC_SERVER, IID_IOrvSupport, none.ReceiveVoid()),
              S_OK);
    none.Detach();
    classes = std::make_unique<ClassObjects>(bench);
}

TEST_F(FacesTest, AConfigurationHandedBackIsCountedAndAForeignOneRefused) {
    const auto manager = Create<IOrvConfigurationManager>(CLSID_ConfigurationManager);
    ComPtr<IOrvConfiguration> configuration;
    ComVariant omitted;
    omitted.Get().vt = VT_ERROR;
    omitted.Get().scode = DISP_E_PARAMNOTFOUND;
    ASSERT_EQ(manager->GetConfiguration(omitted.Get(), omitted.Get(), configuration.Receive()), S_OK);
    EXPECT_EQ(bench->OpenConfigurations(), 1);
    EXPECT_EQ(manager->ReleaseConfiguration(nullptr), E_POINTER);
    EXPECT_EQ(manager->ReleaseConfiguration(configuration.Get()), S_OK);
    EXPECT_EQ(bench->OpenConfigurations(), 0);
    const ComVariant selector(std::int32_t{1});
    EXPECT_EQ(manager->GetConfiguration(selector.Get(), omitted.Get(), configuration.Receive()), ToHresult(5));
}

TEST_F(FacesTest, LateBoundCallsReachEveryKindOfMember) {
    const auto manager = Create<IDispatch>(CLSID_ConfigurationManager);
    const auto made = CallLate(manager.Get(), L"GetConfiguration", DISPATCH_METHOD, {});
    ASSERT_EQ(made.result, S_OK);
    ASSERT_EQ(made.value.Get().vt, VT_DISPATCH);
    IDispatch* const configuration = made.value.Get().pdispVal;
    const ComVariant two(std::int32_t{2});
    EXPECT_EQ(CallLate(configuration, L"accesslevel", DISPATCH_PROPERTYPUT, {two.Get()}).result, S_OK);
    EXPECT_EQ(bench->AccessLevel(), 2);
    EXPECT_EQ(CallLate(configuration, L"AccessLevel", DISPATCH_PROPERTYGET, {}).value.Get().lVal, 2);
    EXPECT_EQ(CallLate(configuration, L"Nonsense", DISPATCH_METHOD, {}).result, DISP_E_UNKNOWNNAME);
    const auto support = Create<IDispatch>(CLSID_Support);
    const ComVariant byte(std::wstring_view(L"200")); // coerced
    EXPECT_STREQ(CallLate(support.Get(), L"HexByte", DISPATCH_METHOD, {byte.Get()}).value.Get().bstrVal, L"C8");
}

TEST_F(FacesTest, FailingCallsCarryNumberAndDescription) {
    const auto configuration = Configuration();
    LONG level = 0;
    bench->Gate().FailNamed("Configuration.AccessLevel", 1, 9, L"No such level", 2);
    EXPECT_EQ(configuration->get_AccessLevel(&level), static_cast<HRESULT>(0x800A0009));
    try {
        Check(configuration->get_AccessLevel(&level));
        FAIL() << "the second failure did not come";
    } catch (const Error& failure) {
        EXPECT_EQ(failure.Number(), static_cast<std::int32_t>(0x800A0009));
        EXPECT_EQ(failure.Description(), L"No such level");
    }
    EXPECT_EQ(configuration->get_AccessLevel(&level), S_OK);
    bench->Gate().FailNamed("Configuration.AccessLevel", 1, static_cast<std::int32_t>(0x80070020), L"In use");
    const auto late = CallLate(configuration.Get(), L"AccessLevel", DISPATCH_PROPERTYGET, {});
    EXPECT_EQ(late.result, DISP_E_EXCEPTION);
    EXPECT_EQ(late.code, static_cast<HRESULT>(0x80070020)) << "a host's own number passes as it is";
    EXPECT_EQ(late.description, L"In use");
    EXPECT_EQ(configuration->get_AccessLevel(nullptr), E_POINTER);
}

TEST_F(FacesTest, TablesReadWriteAndDescribe) {
    const auto table = Table();
    LONG entry = 0;
    ASSERT_EQ(table->FindByNumber(7, &entry), S_OK);
    ASSERT_NE(entry, 0);
    ComText name;
    EXPECT_EQ(table->EntryName(entry, 0, 3, name.Receive()), S_OK);
    EXPECT_EQ(name.View(), L"/OutputFormat/Terminator");
    ComVariant value;
    EXPECT_EQ(table->GetValue(entry, 0, value.Receive()), S_OK);
    EXPECT_EQ(BytesOf(value.Get()), (Bytes{0x0D, 0x0A}));
    EXPECT_EQ(table->SetValue(entry, ToVariant(Bytes{}).Get()), S_OK);
    EXPECT_EQ(std::get<Bytes>(bench->Store(0, 0)->Get(7)), Bytes{});
    ASSERT_EQ(table->FindByNumber(72, &entry), S_OK);
    ComPtr<IOrvParameterDescription> description;
    ASSERT_EQ(table->Describe(entry, description.Receive()), S_OK);
    LONG count = 0;
    EXPECT_EQ(description->get_ChoicesCount(&count), S_OK);
    EXPECT_EQ(count, 4);
    ComText label;
    EXPECT_EQ(description->get_ChoiceLabel(2, label.Receive()), S_OK);
    EXPECT_EQ(label.View(), L"Logical combination");
    EXPECT_EQ(description->get_ChoiceLabel(4, label.Receive()), ToHresult(9));
    EXPECT_EQ(description->get_ChoiceLabel(-1, label.Receive()), ToHresult(9));
    ASSERT_EQ(table->FindByNumber(99999, &entry), S_OK);
    EXPECT_EQ(entry, 0);
}

TEST_F(FacesTest, ValuesKeepTheirKindOnTheWayThrough) {
    const std::vector<device::Value> values = {std::monostate{},  std::int16_t{-5},        std::int32_t{70000},
                                               std::uint8_t{200}, std::wstring(L"\u20AC"), Bytes{0, 255},
                                               Bytes{},           std::wstring()};
    for (const auto& value : values)
        EXPECT_EQ(FromVariant(ToVariant(value).Get()), value);
    ComVariant number;
    number.Get().vt = VT_R8;
    number.Get().dblVal = 1e12;
    EXPECT_THROW(FromVariant(number.Get()), Error);
    number.Get().dblVal = 41.0;
    EXPECT_EQ(FromVariant(number.Get()), device::Value(std::int32_t{41}));
    LONG target = 12;
    ComVariant reference;
    reference.Get().vt = VT_BYREF | VT_I4;
    reference.Get().plVal = &target;
    EXPECT_EQ(FromVariant(reference.Get()), device::Value(std::int32_t{12}));
    ComVariant object;
    object.Get().vt = VT_UNKNOWN;
    EXPECT_THROW(FromVariant(object.Get()), Error);
}

TEST_F(FacesTest, TheApplicationTellsTheHost) {
    const auto application = Make<ApplicationFace>(bench->Application());
    bench->Application()->exportNameSecond = L"Left";
    EXPECT_EQ(application->put_Caption(ComText(L"Caption").Get()), S_OK);
    EXPECT_EQ(bench->Application()->caption, L"Caption");
    ComText second;
    EXPECT_EQ(application->get_ExportNameSecond(second.Receive()), S_OK);
    EXPECT_EQ(second.View(), L"Left");
    EXPECT_EQ(application->put_Caption(nullptr), S_OK);
    EXPECT_EQ(bench->Application()->caption, L"") << "no text is the empty text";
}

} // namespace
} // namespace orv::host
