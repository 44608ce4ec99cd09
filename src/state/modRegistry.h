#pragma once
#include <QString>
#include <QVariant>

#include <functional>

#include "platform/Platform.h"

namespace state {

// The program's only direct way into the registry: keys by whole path strings, reads that
// answer the word "Error" when a value can't be read, and a module state (last key, last
// root, last status) shared by all calls, as the program has always had it. One thread only.
// The failure word the reads answer, in any case: a value whose text is "error" counts as
// missing too.
bool IsFailureWord(const QString& value);

class modRegistry {
public:
    explicit modRegistry(platform::Platform& platform);

    // The value's text trimmed of blanks, "Error" when the key or the value can't be read
    // (also for a value of 255 or more characters), "" for an unknown root.
    QString GetStringValue(const QString& keyPath, const QString& valueName);
    // A 32-bit number, or the text "Error"; empty for an unknown root. The value's type is
    // not looked at: a string of up to three characters reads as a number, one of four or more
    // as "Error".
    QVariant GetDwordValue(const QString& keyPath, const QString& valueName);
    // Stores REG_SZ, handed over without its terminator, which Windows adds; the status stays
    // in lastStatus().
    void SetStringValue(const QString& keyPath, const QString& valueName, const QString& data);
    long CreateKey(const QString& keyPath);
    void DeleteValue(const QString& keyPath, const QString& valueName);

    // Splits "HKEY_...\sub\key" into root and sub key. A path that does not begin with
    // "HKEY_" or that ends in "\" is left as it is and the root of the previous call stays.
    void ParseKey(QString& path, platform::RegHandle& root) const;
    static platform::RegHandle GetMainKeyHandle(const QString& name);
    // The language variable that describes a registry status, resolved by getStrLocValue.
    static QString RegistryErrorText(long status,
                                     const std::function<QString(const QString&)>& getStrLocValue);

    long lastStatus() const { return lastStatus_; }

private:
    // ParseKey, then open the key into hKey_; the status, also kept in lastStatus_.
    long openKey(const QString& keyPath, std::uint32_t access);

    platform::Registry& registry_;
    const platform::CodePage& codePage_;
    platform::RegHandle hKey_ = 0;
    platform::RegHandle mainKeyHandle_ = 0;
    long lastStatus_ = 0;
};

}  // namespace state
