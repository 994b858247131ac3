// Bytes as people read them: display form, hexadecimal, code page and the edit box agree and lead back.
#include <algorithm>

#include "controls/mb_edit_core.h"
#include "device/parameter_access.h"
#include "fuzz/fuzz.h"
#include "host/sim/bench_host.h"
#include "host/sim/portable_platform.h"
#include "text/bytes.h"
#include "text/error.h"

namespace orv::fuzz {
namespace {

using controls::MBEditCore;
using device::BytesForm;

struct Host {
    sim::PortablePlatform platform;
    sim::BenchHost host{sim::SystemDescription{}};
    device::DeviceState state{platform.services, host};
    device::ParameterAccess access{state};
};

device::ParameterAccess& Access() {
    static Host host;
    return host.access;
}

void CheckDisplayForm(const Bytes& bytes) {
    const std::wstring shown = text::DisplayForm(bytes);
    const Bytes parsed = MBEditCore::Parse(shown);
    Require(text::DisplayForm(parsed) == shown, "what is parsed from a display form shows as that form");
    // A "<" that stands for itself may be the beginning of what reads as a name.
    if (std::find(bytes.begin(), bytes.end(), '<') == bytes.end())
        Require(parsed == bytes, "a display form parses back");
    Require(Access().BytesToDisplayText(bytes, BytesForm::Display) == shown, "both display forms agree");
}

void CheckHex(const Bytes& bytes) {
    const std::wstring digits = text::Hex(bytes);
    Require(text::FromHex(digits) == bytes, "hexadecimal leads back");
    std::wstring spaced = Access().BytesToDisplayText(bytes, BytesForm::Hexadecimal);
    Require(spaced == text::Hex(bytes, L" "), "both hexadecimal forms agree");
    std::erase(spaced, L' ');
    Require(device::ParameterAccess::HexTextToBytes(spaced) == bytes, "hexadecimal with blanks leads back");
}

void CheckEditBox(const Bytes& bytes) {
    MBEditCore box;
    box.SetData(bytes);
    Require(box.Data() == bytes, "the edit box keeps its bytes");
    Require(box.Text() == text::DisplayForm(bytes), "the edit box shows the display form");
    box.SelectAll();
    Require(box.SelectedData() == bytes, "all of it can be selected");
    Require(box.HexTip().empty() == bytes.empty(), "the tip shows what there is");
}

/// The input as a text that somebody types or pastes.
void CheckText(const std::wstring& typed) {
    Require(MBEditCore::Parse(typed).size() <= typed.size(), "no character makes two bytes");
    std::wstring upper = typed;
    for (wchar_t& c : upper)
        c = c >= L'a' && c <= L'f' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    try {
        Require(text::Hex(text::FromHex(typed)) == upper, "accepted digits lead back");
        ++Accepted();
    } catch (const Error& error) {
        Require(error.Number() == error_number::kTypeMismatch, "other digits are a type mismatch");
    }
}

void Check(const Bytes& bytes) {
    CheckDisplayForm(bytes);
    CheckHex(bytes);
    CheckEditBox(bytes);
    Require(Access().StringToBytes(Access().BytesToString(bytes)) == bytes, "the code page leads back");
    CheckText(Widened(bytes.data(), bytes.size()));
}

} // namespace
} // namespace orv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    orv::fuzz::Check(orv::Bytes(data, data + size));
    return 0;
}
