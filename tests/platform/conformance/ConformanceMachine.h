#pragma once
#include <memory>
#include <string>

#include "platform/Platform.h"

namespace conformance {

// Where a test keeps what it makes: files below this folder, and registry keys below this key
// of HKEY_LOCAL_MACHINE and HKEY_CURRENT_USER. On Windows the tests share one real computer,
// so a new machine first removes both, and nothing else of the computer is touched but one
// INI file of the Windows folder, which the test that writes it removes.
inline constexpr const char* kFolder = "C:\\Conformance";
inline constexpr const char* kKey = "Software\\Tallowick Conformance";

// The Windows computer one test runs on, seen through the platform interfaces, plus what a
// test needs to set it up the way a user would.
class Machine {
public:
    virtual ~Machine() = default;

    virtual platform::Platform& platform() = 0;
    // Writes a file at a Windows path, making its folders.
    virtual void placeFile(const std::string& winPath, const std::string& bytes) = 0;
    // Imports .reg text (regedit's UTF-16LE or UTF-8/ANSI bytes) as RegEdit::importFile would
    // import a file with these bytes; the refusal's message, or "" when it was imported.
    virtual std::string importReg(const std::string& regText) = 0;
    // Removes the write permission of a folder below kFolder for this user, or gives it back;
    // false when the backend can't.
    virtual bool denyWrites(const std::string& winFolder, bool denied) = 0;
    // The same computer as a second process sees it, for rules about what is shared between
    // processes.
    virtual std::unique_ptr<Machine> secondProcess() = 0;
};

// A fresh machine for one test, of the backend the suite is built with; with codePage, a
// machine whose ANSI code page is that one, or nothing when the backend can't make one.
std::unique_ptr<Machine> newMachine(unsigned codePage = 0);

// The bytes of a file of tests/data.
std::string readTestData(const std::string& name);

}  // namespace conformance
