#pragma once
// Where the component comes from: the registry, or a file that needs no registration.
#include <OrvAddon.h>

#include <filesystem>

#include "host/app/orvhost/system.h"
#include "host/com/owned.h"

namespace orv::host {

class ComponentFile {
  public:
    /// An empty file means the class registered under the component's ProgID.
    explicit ComponentFile(std::filesystem::path file) : file_(std::move(file)) {}
    ~ComponentFile();
    ComponentFile(const ComponentFile&) = delete;
    ComponentFile& operator=(const ComponentFile&) = delete;

    /// A new instance. Raises orv::Error that says what could not be had.
    ComPtr<IAddOn> Create();
    /// Gives unused code back. Only from a stack without the component's frames on it.
    void Unload();

  private:
    ComPtr<IAddOn> CreateFromFile();
    std::filesystem::path file_;
    OwnedModule module_;
};

} // namespace orv::host
