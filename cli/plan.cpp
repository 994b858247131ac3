#include <ostream>

#include "cli/commands.h"
#include "cli/table.h"
#include "cli/values.h"
#include "device/parameter_access.h"
#include "host/sim/utf8.h"
#include "text/excerpt.h"

namespace orv::cli {

void PrintLeftOut(const DeviceFile& file, const std::vector<device::LeftOut>& leftOut, std::ostream& err) {
    for (const device::LeftOut& one : leftOut) {
        err << file.Name() << ": ";
        if (one.why == device::LeftOut::Why::NoPlace)
            err << "left out: the device has no place for " << sim::ToUtf8(one.reason) << '\n';
        else
            err << sim::ToUtf8(text::Excerpt(one.entry)) << " (" << one.number
                << ") is left out: " << sim::ToUtf8(one.reason) << '\n';
    }
}

void PrintPlan(DeviceFile& file, std::ostream& out, std::ostream& err) {
    const model::SavePlan plan = file.Model().Plan();
    device::ParameterAccess access(file.State());
    Table table("rrlll");
    table.Add({L"number", L"element", L"entry", L"type", L"value"});
    for (const device::MIBParameter& parameter : plan.writes) {
        const auto address = file.Store().FindName(parameter.entry);
        table.Add({address ? std::to_wstring(file.Store().Parameter(*address).number) : L"?",
                   address ? std::to_wstring(address->element) : L"?", parameter.entry,
                   TypeName(device::TypeOf(parameter.value)), DisplayValue(parameter.value, access)});
    }
    table.Print(out);
    PrintLeftOut(file, plan.leftOut, err);
}

} // namespace orv::cli
