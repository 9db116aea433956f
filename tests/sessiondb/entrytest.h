// What the tests of operations on entries share.
#pragma once

#include <string>

#include "config/isessionconfig.h"
#include "config/sessionconfig.h"
#include "config/settingwalk.h"
#include "sessiondb/sessionpaths.h"
#include "support/fakesuite.h"

namespace connectdialog::test {

/// Makes another store the default one, until the next call or the end of the test.
inline void Use(VProfileStoreFactory& factory) {
    static VProfileStoreFactory* active = nullptr;
    active = &factory;
    SetProfileFactoryGetter([] { return active; });
}

class EntryOperationsTest : public LibraryTest {
  protected:
    void Arrange(SessionArrangement arrangement) {
        panels.global->sessionArrangementMode.Set(static_cast<int>(arrangement));
    }
    static VUnicodeString ListOf(const VUnicodeString& folder, const char16_t* listName) {
        VUnicodeString list = u"(none)";
        WithKey(BuildFolderDataKeyPath(folder).GetData(), [&](VProfileKey& key) { key.ReadString(listName, list); });
        return list;
    }
    static VUnicodeString SessionsOf(const VUnicodeString& folder) { return ListOf(folder, u"Session List"); }
    static VUnicodeString FoldersOf(const VUnicodeString& folder) { return ListOf(folder, u"Folder List"); }
    static void SetValue(const char16_t* session, const char16_t* name, const char16_t* text) {
        WithKey(BuildSessionKeyPath(session).GetData(), [&](VProfileKey& key) { key.WriteString(name, text); });
    }
    static VUnicodeString ValueOf(const VUnicodeString& session, const char16_t* name) {
        VUnicodeString text = u"(none)";
        WithKey(BuildSessionKeyPath(session).GetData(), [&](VProfileKey& key) { key.ReadString(name, text); });
        return text;
    }
    /// Every value that a session or a folder of these tests can have.
    static ValueNames AllNames() {
        ValueNames names = {u"Folder List", u"Session List", u"Is Expanded", u"Own Value"};
        const auto session = VRef<ISessionConfig>::Adopt(CreateSessionConfig(u"s", nullptr));
        VisitSettings(*session, [&](VProfileData& setting) { names.emplace_back(setting.GetName().View()); });
        return names;
    }
    std::string Dump() const { return DumpStore(*factory, AllNames()); }
};

}  // namespace connectdialog::test
