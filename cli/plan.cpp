#include "cli/commands.h"
#include "cli/table.h"
#include "cli/values.h"
#include "device/parameter_access.h"

namespace orv::cli {

void PrintPlan(DeviceFile& file, std::ostream& out) {
    device::ParameterAccess access(file.State());
    Table table("rrlll");
    table.Add({L"number", L"element", L"entry", L"type", L"value"});
    for (const device::MIBParameter& parameter : file.Model().Plan()) {
        const auto address = file.Store().FindName(parameter.entry);
        table.Add({address ? std::to_wstring(file.Store().Parameter(*address).number) : L"?",
                   address ? std::to_wstring(address->element) : L"?", parameter.entry,
                   TypeName(device::TypeOf(parameter.value)), DisplayValue(parameter.value, access)});
    }
    table.Print(out);
}

} // namespace orv::cli
