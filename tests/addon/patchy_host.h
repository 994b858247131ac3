#pragma once
// The bench host, of which one object at a time can be missing: the host answers with nothing in its place.
#include <gtest/gtest.h>

#include <memory>
#include <utility>

#include "tests/addon/session.h"

namespace orv::test {

enum class Object { None, Application, Manager, Support, Configuration, Records, Record, Table, Service };

/// Which of them, and what stands in its place.
struct Missing {
    Object what = Object::None;
    template <typename Make>
    auto Unless(Object object, const Make& make) const -> decltype(make()) {
        return what == object ? nullptr : make();
    }
};

struct Record final : device::DeviceRecord {
    Record(const Missing& gone, std::shared_ptr<device::DeviceRecord> inner) : missing(gone), to(std::move(inner)) {}
    std::shared_ptr<device::ParameterTable> GetParameterTable(std::int32_t argument) override {
        return missing.Unless(Object::Table, [&] { return to->GetParameterTable(argument); });
    }
    const Missing& missing;
    std::shared_ptr<device::DeviceRecord> to;
};

struct Records final : device::DeviceRecords {
    Records(const Missing& gone, std::shared_ptr<device::DeviceRecords> inner) : missing(gone), to(std::move(inner)) {}
    std::shared_ptr<device::DeviceRecord> Record(std::int16_t cluster, std::int16_t device) override {
        return missing.Unless(Object::Record,
                              [&] { return std::make_shared<test::Record>(missing, to->Record(cluster, device)); });
    }
    const Missing& missing;
    std::shared_ptr<device::DeviceRecords> to;
};

struct Configuration final : device::Configuration {
    Configuration(const Missing& gone, std::shared_ptr<device::Configuration> inner)
        : missing(gone), to(std::move(inner)) {}
    std::int32_t AccessLevel() override { return to->AccessLevel(); }
    void SetAccessLevel(std::int32_t level) override { to->SetAccessLevel(level); }
    bool InteractiveMode() override { return to->InteractiveMode(); }
    void SetInteractiveMode(bool on) override { to->SetInteractiveMode(on); }
    std::shared_ptr<device::MibSapService> GetMibSapService() override {
        return missing.Unless(Object::Service, [&] { return to->GetMibSapService(); });
    }
    std::shared_ptr<device::DeviceRecords> GetDeviceRecords() override {
        return missing.Unless(Object::Records,
                              [&] { return std::make_shared<Records>(missing, to->GetDeviceRecords()); });
    }
    const Missing& missing;
    std::shared_ptr<device::Configuration> to;
};

struct Manager final : device::ConfigurationManager {
    Manager(const Missing& gone, std::shared_ptr<device::ConfigurationManager> inner)
        : missing(gone), to(std::move(inner)) {}
    std::shared_ptr<device::Configuration> GetConfiguration() override {
        return missing.Unless(Object::Configuration,
                              [&] { return std::make_shared<Configuration>(missing, to->GetConfiguration()); });
    }
    void ReleaseConfiguration(const std::shared_ptr<device::Configuration>& configuration) override {
        ASSERT_TRUE(configuration) << "nothing is given back";
        to->ReleaseConfiguration(dynamic_cast<Configuration&>(*configuration).to);
    }
    const Missing& missing;
    std::shared_ptr<device::ConfigurationManager> to;
};

/// The bench host, of which one object can be missing at a time.
class PatchyHost final : public Surroundings, public device::HostFactory {
  public:
    explicit PatchyHost(Bench& bench) : bench_(bench), state_(bench.platform.services, *this) {
        state_.current = bench.state.current;
    }
    addon::ProcessState& State() override { return state_; }
    std::shared_ptr<device::HostApplication> Application() override {
        return missing.Unless(Object::Application, [&] { return bench_.host.Application(); });
    }
    void Enter(const std::function<void()>& call) override { call(); }
    std::shared_ptr<device::ConfigurationManager> CreateConfigurationManager() override {
        return missing.Unless(Object::Manager, [&] {
            return std::make_shared<Manager>(missing, bench_.host.CreateConfigurationManager());
        });
    }
    std::shared_ptr<device::SupportObject> CreateSupportObject() override {
        return missing.Unless(Object::Support, [&] { return bench_.host.CreateSupportObject(); });
    }
    Missing missing;

  private:
    Bench& bench_;
    addon::ProcessState state_;
};

} // namespace orv::test
