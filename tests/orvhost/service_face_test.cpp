#include "host/com/service_face.h"

#include <gtest/gtest.h>

#include "host/app/orvhost/host_pump.h"
#include "host/app/orvhost/workspace.h"

namespace orv::host {
namespace {

class Sink final : public Dual<IOrvMIBSAPEvents> {
  public:
    STDMETHODIMP Connected() override {
        ++connected;
        return S_OK;
    }
    STDMETHODIMP Error(LONG number) override {
        codes.push_back(number);
        return E_FAIL; // a sink's own troubles stay its own
    }
    STDMETHODIMP ResponseReceived(BSTR text) override {
        responses.emplace_back(ComText::ViewOf(text));
        return S_OK;
    }
    int connected = 0;
    std::vector<LONG> codes;
    std::vector<std::wstring> responses;
};

TEST(ServiceFace, AnswersThroughTheSinkAndLetsItGo) {
    const long before = LiveFaces();
    {
        HostPump pump;
        Workspace workspace({}, ORV_SOURCE_DIR "/samples/tiny.json", pump, {});
        const auto configuration = workspace.Bench()->CreateConfigurationManager()->GetConfiguration();
        const auto face = Make<MibSapFace>(configuration->GetMibSapService());
        const auto sink = Make<Sink>();
        ASSERT_EQ(face->Connect(0, sink.Get()), S_OK);
        EXPECT_TRUE(pump.PumpFor(2000, [&] { return sink->connected == 1; }));
        ASSERT_EQ(face->StartSession(ComText(L"3").Get(), ComText(L"wrong").Get()), S_OK);
        EXPECT_TRUE(pump.PumpFor(2000, [&] { return sink->codes.size() == 1; }));
        ASSERT_EQ(face->GetEntry(ComText(L"/OutputFormat/FormatCount").Get()), S_OK);
        EXPECT_TRUE(pump.PumpFor(2000, [&] { return sink->responses.size() == 1; }));
        EXPECT_EQ(sink->responses[0], L"1");
        EXPECT_EQ(face->Disconnect(), S_OK);
        EXPECT_EQ(face->Connect(0, nullptr), E_POINTER);
    }
    EXPECT_EQ(LiveFaces(), before);
}

} // namespace
} // namespace orv::host
