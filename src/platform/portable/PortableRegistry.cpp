#include "platform/portable/PortableRegistry.h"

#include <QFile>
#include <QString>

#include <algorithm>
#include <cstring>

#include "platform/WinTypes.h"

namespace platform::portable {

namespace {

constexpr std::uint32_t kQueryValue = 0x1;
constexpr std::uint32_t kSetValue = 0x2;
constexpr std::uint32_t kCreateSubKey = 0x4;
constexpr std::uint32_t kEnumerateSubKeys = 0x8;
constexpr std::uint32_t kAllAccess = 0xf003f;
constexpr std::uint32_t kMaximumAllowed = 0x02000000;
constexpr std::uint32_t kGenericAll = 0x10000000;
constexpr std::uint32_t kGenericExecute = 0x20000000;
constexpr std::uint32_t kGenericWrite = 0x40000000;
constexpr std::uint32_t kGenericRead = 0x80000000;

constexpr RegHandle kFirstRoot = hkey::ClassesRoot;
constexpr size_t kMaxValueNameLength = 16383;

// The rights a key handle gets for the access it asked for; the machine has no owners, so
// everything asked for is granted.
std::uint32_t grantedAccess(std::uint32_t desired) {
    if ((desired & (kMaximumAllowed | kGenericAll)) != 0) {
        return kAllAccess;
    }
    if ((desired & (kGenericRead | kGenericExecute)) != 0) {
        desired |= access::KeyRead;
    }
    if ((desired & kGenericWrite) != 0) {
        desired |= access::KeyWrite;
    }
    return desired;
}

bool isStringType(std::uint32_t type) {
    return type == regtype::Sz || type == regtype::ExpandSz || type == regtype::MultiSz;
}

std::u16string utf16FromBytes(const std::vector<std::uint8_t>& data) {
    std::u16string text(data.size() / 2, u'\0');
    for (size_t i = 0; i < text.size(); ++i) {
        text[i] = char16_t(data[2 * i] | (data[2 * i + 1] << 8));
    }
    return text;
}

std::vector<std::uint8_t> bytesFromUtf16(const std::u16string& text) {
    std::vector<std::uint8_t> data;
    data.reserve(text.size() * 2);
    for (char16_t unit : text) {
        data.push_back(std::uint8_t(unit & 0xff));
        data.push_back(std::uint8_t(unit >> 8));
    }
    return data;
}

// regedit's command line also takes the short names of the roots.
std::optional<RegRoot> rootOfExportPath(std::u16string_view name) {
    static constexpr std::pair<std::u16string_view, RegRoot> kShortNames[] = {
        {u"HKCR", RegRoot::ClassesRoot},   {u"HKCU", RegRoot::CurrentUser},
        {u"HKLM", RegRoot::LocalMachine},  {u"HKU", RegRoot::Users},
        {u"HKCC", RegRoot::CurrentConfig},
    };
    const std::u16string folded = foldName(name);
    for (const auto& [shortName, root] : kShortNames) {
        if (folded == shortName) {
            return root;
        }
    }
    return regRootFromName(name);
}

RegEdit::Result failure(std::string message) {
    return RegEdit::Result{false, std::move(message)};
}

}  // namespace

PortableRegistry::PortableRegistry(std::filesystem::path registryFolder, const CodePage& codePage)
    : codePage_(codePage), store_(std::move(registryFolder), codePage) {}

PortableRegistry::~PortableRegistry() = default;

// Names cross the "A" calls as C strings: they end at the first NUL.
std::u16string PortableRegistry::wide(const std::string& ansi) const {
    return codePage_.toWide(ansi.substr(0, ansi.find('\0')));
}

bool PortableRegistry::lookup(RegHandle handle, OpenKey* key) const {
    if (handle >= kFirstRoot && handle < kFirstRoot + kRegRootCount) {
        *key = OpenKey{RegRoot(handle - kFirstRoot), {}, kAllAccess};
        return true;
    }
    const auto found = handles_.find(handle);
    if (found == handles_.end()) {
        return false;
    }
    *key = found->second;
    return true;
}

const RegKey* PortableRegistry::resolve(RegHandle handle, std::uint32_t access, OpenKey* open,
                                        long* status, RegistryStore::Freshness freshness) {
    if (!lookup(handle, open)) {
        *status = status::InvalidHandle;
        return nullptr;
    }
    const RegKey* tree = store_.current(open->root, status, freshness);
    if (tree == nullptr) {
        return nullptr;
    }
    const RegKey* key = findKey(*tree, open->path);
    *status = key == nullptr                      ? regstatus::KeyDeleted
              : (open->access & access) != access ? status::AccessDenied
                                                  : status::Success;
    return *status == status::Success ? key : nullptr;
}

long PortableRegistry::updateKey(const OpenKey& open,
                                 const std::function<long(RegKey&, bool*)>& change) {
    return store_.update({open.root}, [&](const RootTrees& trees, RootFlags* changed) {
        RegKey* key = findKey(*trees[size_t(open.root)], open.path);
        if (key == nullptr) {
            return regstatus::KeyDeleted;
        }
        return change(*key, &(*changed)[size_t(open.root)]);
    });
}

long PortableRegistry::openKey(RegHandle parent, const std::string& subKey, std::uint32_t access,
                               bool create, RegHandle* result) {
    if (result == nullptr) {
        return status::InvalidParameter;
    }
    // A failed open leaves no handle behind, as on Windows.
    *result = 0;
    OpenKey parentKey;
    long status = status::Success;
    const RegKey* below = resolve(parent, 0, &parentKey, &status, RegistryStore::Freshness::Now);
    if (below == nullptr) {
        return status;
    }
    std::vector<std::u16string> names;
    status = splitKeyPath(wide(subKey), &names);
    if (status != status::Success) {
        return status;
    }
    if (parentKey.path.size() + names.size() > kMaxKeyDepth) {
        return status::InvalidParameter;
    }
    std::vector<std::u16string> folded(names.size());
    std::transform(names.begin(), names.end(), folded.begin(), foldName);
    if (findKey(*below, folded) == nullptr) {
        if (!create) {
            return status::FileNotFound;
        }
        if ((parentKey.access & kCreateSubKey) == 0) {
            return status::AccessDenied;
        }
        status = updateKey(parentKey, [&](RegKey& key, bool* changed) {
            RegKey* created = &key;
            for (const std::u16string& name : names) {
                bool added = false;
                created = &created->addSubkey(name, &added);
                *changed |= added;
            }
            return status::Success;
        });
        if (status != status::Success) {
            return status;
        }
    }
    OpenKey key{parentKey.root, parentKey.path, access};
    key.path.insert(key.path.end(), folded.begin(), folded.end());
    *result = nextHandle_;
    nextHandle_ += 4;
    handles_.emplace(*result, std::move(key));
    return status::Success;
}

long PortableRegistry::RegOpenKeyExA(RegHandle key, const std::string& subKey,
                                     std::uint32_t /*options*/, std::uint32_t samDesired,
                                     RegHandle* result) {
    return openKey(key, subKey, grantedAccess(samDesired), false, result);
}

// Windows hands back the same handle for an empty subkey, without opening anything.
long PortableRegistry::RegOpenKeyA(RegHandle key, const std::string& subKey, RegHandle* result) {
    if (result != nullptr && wide(subKey).empty()) {
        *result = key;
        return status::Success;
    }
    return openKey(key, subKey, kAllAccess, false, result);
}

long PortableRegistry::RegCreateKeyA(RegHandle key, const std::string& subKey, RegHandle* result) {
    return openKey(key, subKey, kAllAccess, true, result);
}

long PortableRegistry::RegCloseKey(RegHandle key) {
    if (key >= kFirstRoot && key < kFirstRoot + kRegRootCount) {
        return status::Success;
    }
    return handles_.erase(key) == 1 ? status::Success : status::InvalidHandle;
}

long PortableRegistry::RegQueryValueExA(RegHandle key, const std::string& valueName,
                                        std::uint32_t* type, std::uint8_t* data,
                                        std::uint32_t* dataSize) {
    if (data != nullptr && dataSize == nullptr) {
        return status::InvalidParameter;
    }
    OpenKey open;
    long status = status::Success;
    const RegKey* found = resolve(key, kQueryValue, &open, &status);
    if (found == nullptr) {
        return status;
    }
    const RegValue* value = found->value(wide(valueName));
    if (value == nullptr) {
        return status::FileNotFound;
    }
    std::string ansi;
    const bool string = isStringType(value->type);
    if (string) {
        ansi = codePage_.toAnsi(utf16FromBytes(value->data));
    }
    const auto* bytes =
        string ? reinterpret_cast<const std::uint8_t*>(ansi.data()) : value->data.data();
    const auto size = std::uint32_t(string ? ansi.size() : value->data.size());
    if (type != nullptr) {
        *type = value->type;
    }
    if (data != nullptr) {
        if (size > *dataSize) {
            *dataSize = size;
            return status::MoreData;
        }
        std::copy(bytes, bytes + size, data);
        // A string stored without its terminator gets one when the buffer has room for it.
        if (string && size > 0 && size < *dataSize && bytes[size - 1] != 0) {
            data[size] = 0;
        }
    }
    if (dataSize != nullptr) {
        *dataSize = size;
    }
    return status::Success;
}

// String data is converted as given, except that a terminator the size leaves out is counted
// in when the byte after the data is NUL, as Windows NT does: that byte is read.
long PortableRegistry::RegSetValueExA(RegHandle key, const std::string& valueName,
                                      std::uint32_t type, const std::uint8_t* data,
                                      std::uint32_t dataSize) {
    if (data == nullptr && dataSize != 0) {
        return regstatus::NoAccess;
    }
    if (isStringType(type) && dataSize > 0 && data[dataSize - 1] != 0 && data[dataSize] == 0) {
        ++dataSize;
    }
    OpenKey open;
    long status = status::Success;
    if (resolve(key, kSetValue, &open, &status) == nullptr) {
        return status;
    }
    const std::u16string name = wide(valueName);
    if (name.size() > kMaxValueNameLength) {
        return status::InvalidParameter;
    }
    std::vector<std::uint8_t> bytes(data, data + dataSize);
    if (isStringType(type)) {
        bytes = bytesFromUtf16(codePage_.toWide(std::string(bytes.begin(), bytes.end())));
    }
    return updateKey(open, [&](RegKey& target, bool* changed) {
        *changed = target.setValue(name, type, std::move(bytes));
        return status::Success;
    });
}

long PortableRegistry::RegDeleteValueA(RegHandle key, const std::string& valueName) {
    OpenKey open;
    long status = status::Success;
    if (resolve(key, kSetValue, &open, &status) == nullptr) {
        return status;
    }
    const std::u16string name = wide(valueName);
    return updateKey(open, [&](RegKey& target, bool* changed) {
        *changed = target.removeValue(name);
        return *changed ? status::Success : status::FileNotFound;
    });
}

long PortableRegistry::RegDeleteKeyA(RegHandle key, const std::string& subKey) {
    OpenKey parent;
    long status = status::Success;
    if (resolve(key, 0, &parent, &status, RegistryStore::Freshness::Now) == nullptr) {
        return status;
    }
    std::vector<std::u16string> names;
    status = splitKeyPath(wide(subKey), &names);
    if (status != status::Success) {
        return status;
    }
    if (names.empty()) {
        return status::InvalidParameter;
    }
    std::vector<std::u16string> folded(names.size());
    std::transform(names.begin(), names.end(), folded.begin(), foldName);
    const std::u16string last = folded.back();
    folded.pop_back();
    return updateKey(parent, [&](RegKey& below, bool* changed) {
        RegKey* owner = findKey(below, folded);
        RegKey* doomed = owner == nullptr ? nullptr : owner->subkey(last);
        if (doomed == nullptr) {
            return status::FileNotFound;
        }
        if (!doomed->subkeys().empty()) {
            return status::AccessDenied;
        }
        *changed = owner->removeSubkey(last);
        return status::Success;
    });
}

long PortableRegistry::RegEnumKeyExA(RegHandle key, std::uint32_t index, char* name,
                                     std::uint32_t* nameSize) {
    if (name == nullptr || nameSize == nullptr) {
        return status::InvalidParameter;
    }
    OpenKey open;
    long status = status::Success;
    const RegKey* found = resolve(key, kEnumerateSubKeys, &open, &status);
    if (found == nullptr) {
        return status;
    }
    if (index >= found->subkeys().size()) {
        return status::NoMoreItems;
    }
    const std::string ansi = codePage_.toAnsi(found->subkeys()[index]->name());
    if (ansi.size() >= *nameSize) {
        return status::MoreData;
    }
    std::memcpy(name, ansi.data(), ansi.size());
    name[ansi.size()] = '\0';
    *nameSize = std::uint32_t(ansi.size());
    return status::Success;
}

RegEdit::Result PortableRegistry::importFile(const std::string& hostFile) {
    QFile file(QString::fromStdString(hostFile));
    if (!file.open(QIODevice::ReadOnly)) {
        return failure(hostFile + ": cannot be read: " + file.errorString().toStdString());
    }
    const QByteArray bytes = file.readAll();
    const RegParseResult parsed =
        parseRegText(std::string_view(bytes.constData(), size_t(bytes.size())), codePage_);
    if (!parsed.ok()) {
        return failure(hostFile + ":" + std::to_string(parsed.errorLine) + ": " + parsed.error);
    }
    std::vector<RegRoot> roots;
    for (const RegOperation& op : parsed.operations) {
        if (op.root && RegistryStore::keeps(*op.root)) {
            roots.push_back(*op.root);
        }
    }
    if (roots.empty()) {
        return RegEdit::Result{true, {}};
    }
    const long status = store_.update(roots, [&](const RootTrees& trees, RootFlags* changed) {
        applyRegOperations(parsed.operations, trees, false, changed);
        return status::Success;
    });
    if (status == status::RegistryCorrupt) {
        return failure(hostFile +
                       ": not imported, the registry store is damaged: " + store_.lastProblem());
    }
    if (status != status::Success) {
        return failure(hostFile + ": not imported, the registry store cannot be written (error " +
                       std::to_string(status) + ")");
    }
    return RegEdit::Result{true, {}};
}

RegEdit::Result PortableRegistry::exportKey(const std::string& keyPath, std::string* text) {
    const std::u16string path = wide(keyPath);
    const size_t separator = path.find(u'\\');
    const auto root = rootOfExportPath(std::u16string_view(path).substr(0, separator));
    if (!root) {
        return failure(keyPath + ": not a key of the registry");
    }
    std::vector<std::u16string> names;
    if (separator != std::u16string::npos &&
        splitKeyPath(std::u16string_view(path).substr(separator + 1), &names) != status::Success) {
        return failure(keyPath + ": not a valid key path");
    }
    long status = status::Success;
    const RegKey* key = store_.current(*root, &status);
    if (status == status::RegistryCorrupt) {
        return failure(store_.problem(*root));
    }
    if (key == nullptr) {
        return failure(keyPath + ": no registry is kept for this root");
    }
    std::u16string fullPath(regRootName(*root));
    for (const std::u16string& name : names) {
        key = key->subkey(foldName(name));
        if (key == nullptr) {
            return failure(keyPath + ": no such key");
        }
        fullPath += u'\\' + key->name();
    }
    RegTextWriter writer;
    writeKeyTree(writer, *key, fullPath);
    const std::u16string exported = writer.text();
    *text = QString::fromStdU16String(exported).toUtf8().toStdString();
    return RegEdit::Result{true, {}};
}

}  // namespace platform::portable
