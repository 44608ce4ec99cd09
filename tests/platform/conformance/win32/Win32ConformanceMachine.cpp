// The conformance suite on the Windows the test program runs on. Tests share that computer, so
// each machine first removes what earlier tests left below kFolder and kKey.
#include "platform/win32/WindowsApi.h"

#include <aclapi.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ConformanceMachine.h"
#include "platform/win32/FileBytes.h"
#include "platform/win32/FolderTree.h"
#include "platform/win32/Win32Computer.h"

namespace conformance {

namespace {

using platform::win32::Win32Computer;

constexpr DWORD kWriteRights =
    FILE_WRITE_DATA | FILE_APPEND_DATA | FILE_WRITE_EA | FILE_WRITE_ATTRIBUTES | FILE_DELETE_CHILD;

// The key below a root of the registry's 32-bit view, with all it holds.
void removeKey(HKEY root) {
    HKEY key = nullptr;
    if (::RegOpenKeyExA(root, kKey, 0, KEY_ALL_ACCESS | KEY_WOW64_32KEY, &key) != ERROR_SUCCESS) {
        return;
    }
    ::RegDeleteTreeA(key, nullptr);
    ::RegCloseKey(key);
    ::RegDeleteKeyExA(root, kKey, KEY_WOW64_32KEY, 0);
}

std::string temporaryFolder() {
    char folder[MAX_PATH];
    const DWORD length = ::GetTempPathA(MAX_PATH, folder);
    return platform::win32::joinPath(std::string(folder, length), "Tallowick conformance");
}

// The SID of the user the process runs as, in a buffer that holds it.
std::vector<BYTE> currentUser() {
    HANDLE token = nullptr;
    std::vector<BYTE> user;
    if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return user;
    }
    DWORD size = 0;
    ::GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    user.resize(size);
    if (!::GetTokenInformation(token, TokenUser, user.data(), size, &size)) {
        user.clear();
    }
    ::CloseHandle(token);
    return user;
}

// Adds an inheritable ACE that denies this user writes to the entry's DACL, or takes this
// user's explicit ACEs away again.
bool changeWriteRights(const std::string& entry, bool denied) {
    const std::vector<BYTE> user = currentUser();
    if (user.empty()) {
        return false;
    }
    PACL current = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (::GetNamedSecurityInfoA(entry.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                nullptr, &current, nullptr, &descriptor) != ERROR_SUCCESS) {
        return false;
    }
    EXPLICIT_ACCESSA change{};
    change.grfAccessPermissions = kWriteRights;
    change.grfAccessMode = denied ? DENY_ACCESS : REVOKE_ACCESS;
    change.grfInheritance = SUB_CONTAINERS_AND_OBJECTS_INHERIT;
    ::BuildTrusteeWithSidA(&change.Trustee,
                           reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid);
    PACL changed = nullptr;
    bool ok = ::SetEntriesInAclA(1, &change, current, &changed) == ERROR_SUCCESS;
    if (ok) {
        std::string path = entry;
        ok = ::SetNamedSecurityInfoA(path.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                                     nullptr, nullptr, changed, nullptr) == ERROR_SUCCESS;
        ::LocalFree(changed);
    }
    ::LocalFree(descriptor);
    return ok;
}

// The change for a folder and everything in it. Windows hands an inheritable ACE on to the
// entries that are already there; Wine does not, so each entry gets it too.
bool changeWriteRightsBelow(const std::string& folder, bool denied) {
    bool ok = changeWriteRights(folder, denied);
    WIN32_FIND_DATAA entry;
    const HANDLE search = ::FindFirstFileA(platform::win32::joinPath(folder, "*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) {
        return ok;
    }
    do {
        const std::string name = entry.cFileName;
        if (name == "." || name == "..") {
            continue;
        }
        const std::string path = platform::win32::joinPath(folder, name);
        ok &= (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0
                  ? changeWriteRightsBelow(path, denied)
                  : changeWriteRights(path, denied);
    } while (::FindNextFileA(search, &entry));
    ::FindClose(search);
    return ok;
}

// Whether a new file can be made in the folder.
bool canCreateIn(const std::string& folder) {
    const std::string probe = platform::win32::joinPath(folder, "write probe.tmp");
    const HANDLE file = ::CreateFileA(probe.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                      FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    ::CloseHandle(file);
    return true;
}

class Win32Machine final : public Machine {
public:
    platform::Platform& platform() override { return computer_.platform(); }

    void placeFile(const std::string& winPath, const std::string& bytes) override {
        const std::string folder = platform::GetParentFolderName(winPath);
        ASSERT_TRUE(platform::win32::makeFolders(folder)) << folder;
        ASSERT_TRUE(computer_.platform().files.writeFile(winPath, bytes)) << winPath;
    }

    std::string importReg(const std::string& regText) override {
        const std::string folder = temporaryFolder();
        const std::string file = platform::win32::joinPath(folder, "import.reg");
        if (!platform::win32::makeFolders(folder) ||
            !computer_.platform().files.writeFile(file, regText)) {
            return file + ": cannot be written";
        }
        const auto result = computer_.platform().regEdit.importFile(file);
        return result.ok ? std::string() : result.message;
    }

    // Windows keeps the deny; a system that stores ACLs without enforcing them is found out by
    // a file that can still be made.
    bool denyWrites(const std::string& winFolder, bool denied) override {
        if (!changeWriteRightsBelow(winFolder, denied)) {
            return false;
        }
        if (denied && canCreateIn(winFolder)) {
            changeWriteRightsBelow(winFolder, false);
            return false;
        }
        return true;
    }

    std::unique_ptr<Machine> secondProcess() override { return std::make_unique<Win32Machine>(); }

private:
    Win32Computer computer_;
};

// A copy of tests/data that TALLOWICK_CONFORMANCE_DATA names comes first: the tree the suite
// was built in may be out of the test user's reach.
std::string testDataFolder() {
    constexpr const char* kVariable = "TALLOWICK_CONFORMANCE_DATA";
    const DWORD size = ::GetEnvironmentVariableA(kVariable, nullptr, 0);
    if (size <= 1) {
        return TALLOWICK_TEST_DATA_WINDOWS;
    }
    std::string folder(size, '\0');
    folder.resize(::GetEnvironmentVariableA(kVariable, folder.data(), size));
    return folder;
}

}  // namespace

std::unique_ptr<Machine> newMachine(unsigned codePage) {
    if (codePage != 0 && codePage != ::GetACP()) {
        return nullptr;
    }
    // A test that ended early may have left a folder it can't write into.
    if (::GetFileAttributesA(kFolder) != INVALID_FILE_ATTRIBUTES) {
        changeWriteRightsBelow(kFolder, false);
        platform::win32::deleteFolder(kFolder, true);
    }
    if (::GetFileAttributesA(kFolder) != INVALID_FILE_ATTRIBUTES) {
        ADD_FAILURE() << kFolder << " is left from an earlier test and cannot be removed";
    }
    removeKey(HKEY_LOCAL_MACHINE);
    removeKey(HKEY_CURRENT_USER);
    return std::make_unique<Win32Machine>();
}

std::string readTestData(const std::string& name) {
    const std::string path = platform::win32::joinPath(testDataFolder(), name);
    const auto bytes = platform::win32::readWholeFile(path);
    if (!bytes) {
        ADD_FAILURE() << path << " cannot be read";
    }
    return bytes.value_or(std::string());
}

}  // namespace conformance
