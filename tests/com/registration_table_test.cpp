// The table of the registration on keys of the test's own.
#include <gtest/gtest.h>

#include "addon/com/registration_table.h"
#include "tests/com/registry_tree.h"

namespace orv::tests {
namespace {

using namespace addon::com;
using platform::win32::OwnedKey;

constexpr wchar_t kPlace[] = L"Software\\OrvRegistrationTest";

OwnedKey Make(HKEY parent, const wchar_t* path, DWORD options = REG_OPTION_NON_VOLATILE) {
    HKEY key = nullptr;
    EXPECT_EQ(RegCreateKeyExW(parent, path, 0, nullptr, options, KEY_ALL_ACCESS, nullptr, &key, nullptr),
              ERROR_SUCCESS);
    return OwnedKey(key);
}

DWORD ChildrenOf(HKEY key) {
    DWORD keys = 0;
    RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                     nullptr);
    return keys;
}

RegistrationTable TableFor(const std::wstring& path) {
    return RegistrationTable({{L"CLSID\\{1}", L"", L"Name"},
                              {L"CLSID\\{1}\\InprocServer32", L"", path},
                              {L"CLSID\\{1}\\InprocServer32", L"ThreadingModel", L"Apartment"},
                              {L"CLSID\\{1}\\Control", L"", L""},
                              {L"A.B", L"", L"Name"}});
}

class Table : public testing::Test {
  protected:
    ~Table() override { RegDeleteTreeW(HKEY_CURRENT_USER, kPlace); }
    OwnedKey root = Make(HKEY_CURRENT_USER, kPlace);
    const RegistrationTable table = TableFor(L"c:\\here\\x.ocx");
    const std::function<RegistrationTable(HKEY)> whole = [this](HKEY) { return table; };
};

TEST_F(Table, AppliesChecksAndUndoes) {
    EXPECT_FALSE(table.Applied(root.Get()));
    EXPECT_FALSE(table.Present(root.Get()));
    EXPECT_EQ(table.Undo(root.Get()), ERROR_SUCCESS);
    EXPECT_EQ(table.Apply(root.Get()), ERROR_SUCCESS);
    EXPECT_TRUE(table.Applied(root.Get()));
    const OwnedKey server = Make(root.Get(), L"CLSID\\{1}\\InprocServer32");
    RegDeleteValueW(server.Get(), L"ThreadingModel");
    EXPECT_FALSE(table.Applied(root.Get()));
    EXPECT_EQ(table.Apply(root.Get()), ERROR_SUCCESS);
    EXPECT_TRUE(table.Applied(root.Get()));
    EXPECT_EQ(table.Undo(root.Get()), ERROR_SUCCESS);
    EXPECT_EQ(ChildrenOf(root.Get()), 0u);
}

TEST_F(Table, LeavesWhatOthersHaveWritten) {
    ASSERT_EQ(table.Apply(root.Get()), ERROR_SUCCESS);
    Make(root.Get(), L"CLSID\\{1}\\Foreign");
    Make(root.Get(), L"CLSID\\{2}");
    EXPECT_EQ(table.Undo(root.Get()), ERROR_SUCCESS);
    EXPECT_FALSE(table.Applied(root.Get()));
    EXPECT_EQ(ChildrenOf(Make(root.Get(), L"CLSID").Get()), 2u);
    EXPECT_EQ(ChildrenOf(Make(root.Get(), L"CLSID\\{1}").Get()), 1u);
    EXPECT_EQ(ChildrenOf(root.Get()), 1u);
}

TEST_F(Table, RepairsAStalePath) {
    ASSERT_EQ(TableFor(L"c:\\gone\\x.ocx").Apply(root.Get()), ERROR_SUCCESS);
    EXPECT_FALSE(table.Applied(root.Get()));
    Scope scope = Scope::None;
    EXPECT_EQ(Register(table, {root.Get(), nullptr}, scope), ERROR_SUCCESS);
    EXPECT_TRUE(table.Applied(root.Get()));
    EXPECT_EQ(scope, Scope::Machine);
}

TEST_F(Table, PutsEverythingBackWhenALaterEntryFails) {
    const OwnedKey cls = Make(Make(root.Get(), L"CLSID").Get(), L"{1}", REG_OPTION_VOLATILE);
    const OwnedKey server = Make(cls.Get(), L"InprocServer32", REG_OPTION_VOLATILE);
    const DWORD number = 7;
    RegSetValueExW(server.Get(), nullptr, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), sizeof number);
    const auto before = RegistryTree(HKEY_CURRENT_USER, kPlace);
    EXPECT_EQ(table.Apply(root.Get()), ERROR_CHILD_MUST_BE_VOLATILE);
    EXPECT_EQ(RegistryTree(HKEY_CURRENT_USER, kPlace), before);
    Scope scope = Scope::None;
    EXPECT_NE(Register(table, {nullptr, root.Get()}, scope), ERROR_SUCCESS);
    EXPECT_EQ(RegistryTree(HKEY_CURRENT_USER, kPlace), before) << "what works half is not torn down";
}

class TwoScopes : public Table {
  protected:
    OwnedKey machine = Make(root.Get(), L"Machine");
    OwnedKey user = Make(root.Get(), L"User");
    /// Takes no lasting keys: every attempt to register there fails.
    OwnedKey barred = Make(root.Get(), L"Barred", REG_OPTION_VOLATILE);
    Scope scope = Scope::None;
};

TEST_F(TwoScopes, TheMachineComesFirstAndNothingOfTheUsersHidesIt) {
    ASSERT_EQ(TableFor(L"c:\\gone\\x.ocx").Apply(user.Get()), ERROR_SUCCESS);
    EXPECT_EQ(Register(table, {machine.Get(), user.Get()}, scope), ERROR_SUCCESS);
    EXPECT_EQ(scope, Scope::Machine);
    EXPECT_TRUE(table.Applied(machine.Get()));
    EXPECT_FALSE(table.Present(user.Get()));
    EXPECT_EQ(Unregister(whole, {machine.Get(), user.Get()}), ERROR_SUCCESS);
    EXPECT_EQ(ChildrenOf(machine.Get()) + ChildrenOf(user.Get()), 0u);
}

TEST_F(TwoScopes, TheUserServesWhereTheMachineIsBarred) {
    EXPECT_EQ(Register(table, {barred.Get(), user.Get()}, scope), ERROR_SUCCESS);
    EXPECT_EQ(scope, Scope::User);
    EXPECT_TRUE(table.Applied(user.Get()));
    EXPECT_EQ(ChildrenOf(barred.Get()), 0u);
    EXPECT_EQ(Unregister(whole, {barred.Get(), user.Get()}), ERROR_SUCCESS);
    EXPECT_EQ(ChildrenOf(user.Get()), 0u);
    EXPECT_EQ(Register(table, {nullptr, user.Get()}, scope), ERROR_SUCCESS);
    EXPECT_EQ(scope, Scope::User);
}

TEST_F(TwoScopes, WhereNeitherTakesItTheResultSaysSo) {
    EXPECT_NE(Register(table, {barred.Get(), barred.Get()}, scope), ERROR_SUCCESS);
    EXPECT_EQ(scope, Scope::None);
    EXPECT_NE(Register(table, {nullptr, nullptr}, scope), ERROR_SUCCESS);
    EXPECT_EQ(ChildrenOf(barred.Get()), 0u);
}

} // namespace
} // namespace orv::tests
