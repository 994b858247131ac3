// What is promised to hosts and scripts that exist already: names and numbers, as the built files carry them.
#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "addon/com/component_registration.h"
#include "tests/com/component.h"
#include "tests/com/type_library_dump.h"

#include <oleauto.h>

namespace orv::tests {
namespace {

using Lines = std::vector<std::string>;

constexpr char kRecord[] = ORV_SOURCE_DIR "/docs/identifiers.txt";

ComPtr<ITypeLib> LibraryIn(const std::wstring& file) {
    ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(file.c_str(), REGKIND_NONE, library.Put())))
        throw std::runtime_error("no type library");
    return library;
}

/// The tests carry the contracts' library as every host does.
std::wstring OwnFile() {
    wchar_t path[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return path;
}

std::string Plain(const std::wstring& text) {
    std::string plain;
    std::transform(text.begin(), text.end(), std::back_inserter(plain), [](wchar_t c) { return static_cast<char>(c); });
    return plain;
}

void AddProgIds(Lines& lines) {
    constexpr std::wstring_view kClass = L"\\CLSID";
    const addon::com::RegistrationTable table = addon::com::ComponentTable(Component::Path());
    for (const addon::com::RegistryEntry& entry : table.Entries())
        if (entry.key.ends_with(kClass))
            lines.push_back("progid " + Plain(entry.key.substr(0, entry.key.size() - kClass.size())) + ": " +
                            Plain(entry.value));
}

void AddMiscStatus(Lines& lines) {
    const Component component;
    DWORD status = 0;
    if (SUCCEEDED(Query<IOleObject>(component.Create().Get())->GetMiscStatus(DVASPECT_CONTENT, &status)))
        lines.push_back("class AddOnControl status: " + std::to_string(status));
}

Lines Built() {
    Lines lines;
    AddProgIds(lines);
    AddMiscStatus(lines);
    // Held while the other is walked, which refers to it; neither is registered.
    const ComPtr<ITypeLib> contracts = LibraryIn(OwnFile());
    const ComPtr<ITypeLib> component = LibraryIn(Component::Path());
    for (ITypeLib* library : {component.Get(), contracts.Get()}) {
        const Lines more = DumpTypeLibrary(*library);
        lines.insert(lines.end(), more.begin(), more.end());
    }
    return lines;
}

/// Remarks of the record begin with '#'.
bool IsRemark(const std::string& line) {
    return line.empty() || line.front() == '#';
}

Lines Recorded() {
    std::ifstream file(kRecord);
    Lines lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

// Names count without their case, which the interface compiler takes from wherever it met the word first.
bool Before(const std::string& one, const std::string& other) {
    return _stricmp(one.c_str(), other.c_str()) < 0;
}

Lines Without(Lines from, Lines taken) {
    std::sort(from.begin(), from.end(), Before);
    std::sort(taken.begin(), taken.end(), Before);
    Lines rest;
    std::set_difference(from.begin(), from.end(), taken.begin(), taken.end(), std::back_inserter(rest), Before);
    return rest;
}

std::string Joined(const Lines& lines, const char* mark) {
    std::string text;
    for (const std::string& line : lines)
        text += std::string(mark) + line + "\n";
    return text;
}

void Record(const Lines& remarks, const Lines& built) {
    std::ofstream file(kRecord, std::ios::binary);
    file << Joined(remarks, "") << "\n" << Joined(built, "");
}

TEST(Identifiers, AreWhatWasPromised) {
    const Lines built = Built();
    ASSERT_GT(built.size(), 100u);
    Lines promised = Recorded();
    Lines remarks;
    std::copy_if(promised.begin(), promised.end(), std::back_inserter(remarks),
                 [](const std::string& line) { return !line.empty() && IsRemark(line); });
    std::erase_if(promised, IsRemark);
    const Lines gone = Without(promised, built);
    const Lines added = Without(built, promised);
    ASSERT_TRUE(gone.empty()) << "Gone or changed. Hosts that are built already break: take the change back.\n"
                              << Joined(gone, "- ") << Joined(added, "+ ");
    if (std::getenv("ORV_RECORD_IDENTIFIERS")) {
        Record(remarks, built);
        return;
    }
    EXPECT_TRUE(added.empty()) << "New, and a promise from now on. Run this test with ORV_RECORD_IDENTIFIERS=1 and "
                                  "commit docs/identifiers.txt with the change.\n"
                               << Joined(added, "+ ");
}

} // namespace
} // namespace orv::tests
