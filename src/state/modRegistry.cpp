#include "state/modRegistry.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <initializer_list>
#include <utility>

#include "core/AnsiText.h"
#include "core/BasicText.h"

namespace state {

namespace {

constexpr std::uint32_t kReadBufferSize = 255;
const QString kErrorWord = QStringLiteral("Error");

}  // namespace

bool IsFailureWord(const QString& value) {
    return core::textCompare(value, kErrorWord);
}

modRegistry::modRegistry(platform::Platform& platform)
    : registry_(platform.registry), codePage_(platform.codePage) {}

platform::RegHandle modRegistry::GetMainKeyHandle(const QString& name) {
    static const std::array<std::pair<const char*, platform::RegHandle>, 7> roots{{
        {"HKEY_CLASSES_ROOT", platform::hkey::ClassesRoot},
        {"HKEY_CURRENT_USER", platform::hkey::CurrentUser},
        {"HKEY_LOCAL_MACHINE", platform::hkey::LocalMachine},
        {"HKEY_USERS", platform::hkey::Users},
        {"HKEY_PERFORMANCE_DATA", platform::hkey::PerformanceData},
        {"HKEY_CURRENT_CONFIG", platform::hkey::CurrentConfig},
        {"HKEY_DYN_DATA", platform::hkey::DynData},
    }};
    for (const auto& [rootName, handle] : roots) {
        if (name == QLatin1String(rootName)) {
            return handle;
        }
    }
    return 0;
}

void modRegistry::ParseKey(QString& path, platform::RegHandle& root) const {
    const qsizetype separator = path.indexOf('\\');
    if (!path.startsWith(QLatin1String("HKEY_")) || path.endsWith('\\')) {
        return;
    }
    if (separator < 0) {
        root = GetMainKeyHandle(path);
        path.clear();
        return;
    }
    root = GetMainKeyHandle(path.left(separator));
    path = path.mid(separator + 1);
}

long modRegistry::openKey(const QString& keyPath, std::uint32_t access) {
    QString subKey = keyPath;
    ParseKey(subKey, mainKeyHandle_);
    lastStatus_ =
        registry_.RegOpenKeyExA(mainKeyHandle_, core::toAnsi(codePage_, subKey), 0, access, &hKey_);
    return lastStatus_;
}

QString modRegistry::GetStringValue(const QString& keyPath, const QString& valueName) {
    if (openKey(keyPath, platform::access::KeyRead) != platform::status::Success) {
        return mainKeyHandle_ == 0 ? QString() : kErrorWord;
    }
    std::array<std::uint8_t, kReadBufferSize> buffer;
    buffer.fill(' ');
    std::uint32_t type = 0;
    std::uint32_t size = kReadBufferSize;
    lastStatus_ = registry_.RegQueryValueExA(hKey_, core::toAnsi(codePage_, valueName), &type,
                                             buffer.data(), &size);
    registry_.RegCloseKey(hKey_);
    if (lastStatus_ != platform::status::Success) {
        return kErrorWord;
    }
    const auto* text = reinterpret_cast<const char*>(buffer.data());
    const auto* end = static_cast<const char*>(std::memchr(text, 0, buffer.size()));
    const std::string bytes(text, end != nullptr ? size_t(end - text) : buffer.size());
    return core::trim(core::fromAnsi(codePage_, bytes));
}

QVariant modRegistry::GetDwordValue(const QString& keyPath, const QString& valueName) {
    if (openKey(keyPath, platform::access::KeyRead) != platform::status::Success) {
        return mainKeyHandle_ == 0 ? QVariant() : QVariant(kErrorWord);
    }
    // Four bytes, as Windows takes them: a string of up to three characters fits with its
    // terminator and gives those bytes as the number; one of four or more does not fit, the
    // query answers ERROR_MORE_DATA and the read is "Error", never the string's first bytes.
    std::array<std::uint8_t, 4> buffer{};
    std::uint32_t type = platform::regtype::Dword;
    std::uint32_t size = buffer.size();
    lastStatus_ = registry_.RegQueryValueExA(hKey_, core::toAnsi(codePage_, valueName), &type,
                                             buffer.data(), &size);
    registry_.RegCloseKey(hKey_);
    if (lastStatus_ != platform::status::Success) {
        return kErrorWord;
    }
    const std::uint32_t number = std::uint32_t(buffer[0]) | std::uint32_t(buffer[1]) << 8 |
                                 std::uint32_t(buffer[2]) << 16 | std::uint32_t(buffer[3]) << 24;
    return QVariant(static_cast<qint32>(number));
}

void modRegistry::SetStringValue(const QString& keyPath, const QString& valueName,
                                 const QString& data) {
    if (openKey(keyPath, platform::access::KeyWrite) != platform::status::Success) {
        return;
    }
    // Handed over without the terminating NUL, as the program always has; Windows counts the
    // NUL that follows the text in memory, so the value is stored with it.
    const std::string bytes = core::toAnsi(codePage_, data);
    lastStatus_ = registry_.RegSetValueExA(
        hKey_, core::toAnsi(codePage_, valueName), platform::regtype::Sz,
        reinterpret_cast<const std::uint8_t*>(bytes.data()), std::uint32_t(bytes.size()));
    registry_.RegCloseKey(hKey_);
}

long modRegistry::CreateKey(const QString& keyPath) {
    QString subKey = keyPath;
    ParseKey(subKey, mainKeyHandle_);
    lastStatus_ = registry_.RegCreateKeyA(mainKeyHandle_, core::toAnsi(codePage_, subKey), &hKey_);
    if (lastStatus_ == platform::status::Success) {
        lastStatus_ = registry_.RegCloseKey(hKey_);
    }
    return lastStatus_;
}

void modRegistry::DeleteValue(const QString& keyPath, const QString& valueName) {
    QString subKey = keyPath;
    ParseKey(subKey, mainKeyHandle_);
    // Unconditional, as always: a failed open leaves no handle and the delete fails with it.
    registry_.RegOpenKeyA(mainKeyHandle_, core::toAnsi(codePage_, subKey), &hKey_);
    lastStatus_ = registry_.RegDeleteValueA(hKey_, core::toAnsi(codePage_, valueName));
    registry_.RegCloseKey(hKey_);
}

QString modRegistry::RegistryErrorText(
    long status, const std::function<QString(const QString&)>& getStrLocValue) {
    struct Entry {
        std::initializer_list<long> statuses;
        const char* variable;
    };
    static const Entry table[] = {
        {{2, 1010}, "strLoc_SH_ErrMSg_BadKeyName"},
        {{4, 1012}, "strLoc_SH_ErrMSg_CantReadKey"},
        {{5}, "strLoc_SH_ErrMSg_AccessDenied"},
        {{8, 14}, "strLoc_SH_ErrMSg_OutOfMemory"},
        {{87}, "strLoc_SH_ErrMSg_InvalParam"},
        {{234}, "strLoc_SH_ErrMSg_Overflow"},
        {{1009, 1015}, "strLoc_SH_ErrMSg_RegistryCorrupt"},
        {{1011}, "strLoc_SH_ErrMSg_CantOpenKey"},
        {{1013}, "strLoc_SH_ErrMSg_CantWriteKey"},
    };
    for (const Entry& entry : table) {
        if (std::find(entry.statuses.begin(), entry.statuses.end(), status) !=
            entry.statuses.end()) {
            return getStrLocValue(QLatin1String(entry.variable));
        }
    }
    return getStrLocValue(QStringLiteral("strLoc_SH_ErrMSg_UndefinedErr")) + " " +
           QString::number(status);
}

}  // namespace state
