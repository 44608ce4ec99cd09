#include "platform/portable/RegistryTree.h"

#include <QChar>
#include <QString>

#include <algorithm>

#include "platform/WinTypes.h"

namespace platform::portable {

namespace {

constexpr size_t kMaxNameLength = 255;

std::string utf8(std::u16string_view text) {
    return QString::fromUtf16(text.data(), qsizetype(text.size())).toStdString();
}

}  // namespace

std::u16string foldName(std::u16string_view name) {
    std::u16string folded(name);
    for (char16_t& unit : folded) {
        if (unit < 0x80) {
            unit = (unit >= u'a' && unit <= u'z') ? char16_t(unit - 32) : unit;
        } else if (!QChar::isSurrogate(unit)) {
            unit = char16_t(QChar::toUpper(char32_t(unit)));
        }
    }
    return folded;
}

RegKey::RegKey(std::u16string name) : name_(std::move(name)), folded_(foldName(name_)) {}

std::vector<std::unique_ptr<RegKey>>::const_iterator RegKey::lowerBound(
    std::u16string_view folded) const {
    return std::lower_bound(subkeys_.begin(), subkeys_.end(), folded,
                            [](const std::unique_ptr<RegKey>& key, std::u16string_view name) {
                                return key->folded_ < name;
                            });
}

RegKey* RegKey::subkey(std::u16string_view folded) const {
    const auto found = lowerBound(folded);
    return (found != subkeys_.end() && (*found)->folded_ == folded) ? found->get() : nullptr;
}

RegKey& RegKey::addSubkey(std::u16string_view name, bool* created) {
    const std::u16string folded = foldName(name);
    const auto found = lowerBound(folded);
    *created = found == subkeys_.end() || (*found)->folded_ != folded;
    if (!*created) {
        return **found;
    }
    return **subkeys_.insert(found, std::make_unique<RegKey>(std::u16string(name)));
}

bool RegKey::removeSubkey(std::u16string_view folded) {
    const auto found = lowerBound(folded);
    if (found == subkeys_.end() || (*found)->folded_ != folded) {
        return false;
    }
    subkeys_.erase(found);
    return true;
}

const RegValue* RegKey::value(std::u16string_view name) const {
    const auto found = valueIndex_.find(foldName(name));
    return found != valueIndex_.end() ? &values_[found->second] : nullptr;
}

bool RegKey::setValue(std::u16string_view name, std::uint32_t type,
                      std::vector<std::uint8_t> data) {
    std::u16string folded = foldName(name);
    const auto found = valueIndex_.find(folded);
    if (found == valueIndex_.end()) {
        valueIndex_.emplace(folded, values_.size());
        values_.push_back(RegValue{std::u16string(name), std::move(folded), type, std::move(data)});
        return true;
    }
    RegValue& value = values_[found->second];
    if (value.type == type && value.data == data) {
        return false;
    }
    value.type = type;
    value.data = std::move(data);
    return true;
}

bool RegKey::removeValue(std::u16string_view name) {
    const auto found = valueIndex_.find(foldName(name));
    if (found == valueIndex_.end()) {
        return false;
    }
    const size_t position = found->second;
    valueIndex_.erase(found);
    values_.erase(values_.begin() + std::ptrdiff_t(position));
    for (size_t i = position; i < values_.size(); ++i) {
        valueIndex_[values_[i].folded] = i;
    }
    return true;
}

long splitKeyPath(std::u16string_view path, std::vector<std::u16string>* names) {
    names->clear();
    while (!path.empty() && path.back() == u'\\') {
        path.remove_suffix(1);
    }
    if (path.empty()) {
        return status::Success;
    }
    size_t start = 0;
    for (;;) {
        const size_t end = std::min(path.find(u'\\', start), path.size());
        const std::u16string_view name = path.substr(start, end - start);
        if (name.empty()) {
            return regstatus::BadPathname;
        }
        if (name.size() > kMaxNameLength || name.find_first_of(u"\r\n") != name.npos ||
            names->size() == kMaxKeyDepth) {
            return status::InvalidParameter;
        }
        names->emplace_back(name);
        if (end == path.size()) {
            return status::Success;
        }
        start = end + 1;
    }
}

const RegKey* findKey(const RegKey& root, const std::vector<std::u16string>& foldedPath) {
    const RegKey* key = &root;
    for (const std::u16string& name : foldedPath) {
        key = key->subkey(name);
        if (key == nullptr) {
            return nullptr;
        }
    }
    return key;
}

void writeKeyTree(RegTextWriter& writer, const RegKey& key, const std::u16string& path) {
    writer.key(path);
    for (const RegValue& value : key.values()) {
        writer.value(value.name, value.type, value.data);
    }
    for (const auto& subkey : key.subkeys()) {
        writeKeyTree(writer, *subkey, path + u'\\' + subkey->name());
    }
}

SkippedLine applyRegOperations(const std::vector<RegOperation>& operations, const RootTrees& trees,
                               bool stopAtSkip, RootFlags* changed) {
    SkippedLine first;
    RegKey* current = nullptr;
    int currentRoot = 0;
    std::vector<std::u16string> names;
    for (const RegOperation& op : operations) {
        std::string why;
        if (op.kind == RegOperation::Kind::Key || op.kind == RegOperation::Kind::DeleteKey) {
            current = nullptr;
            RegKey* tree = op.root ? trees[size_t(*op.root)] : nullptr;
            if (!op.root) {
                why = "the key line names no root key";
            } else if (tree == nullptr) {
                why = "no registry is kept for " + utf8(regRootName(*op.root));
            } else if (splitKeyPath(op.subKey, &names) != status::Success) {
                why = "the key path is not valid";
            } else if (op.kind == RegOperation::Kind::DeleteKey && names.empty()) {
                why = "a root key cannot be deleted";
            } else if (op.kind == RegOperation::Kind::Key) {
                current = tree;
                currentRoot = int(*op.root);
                for (const std::u16string& name : names) {
                    bool created = false;
                    current = &current->addSubkey(name, &created);
                    (*changed)[size_t(currentRoot)] |= created;
                }
            } else {
                const std::u16string last = foldName(names.back());
                names.pop_back();
                std::transform(names.begin(), names.end(), names.begin(), foldName);
                if (RegKey* parent = findKey(*tree, names)) {
                    (*changed)[size_t(*op.root)] |= parent->removeSubkey(last);
                }
            }
        } else if (current == nullptr) {
            // Values behind a line that was passed over are passed over with it.
            why = stopAtSkip ? "value outside a key" : std::string();
        } else if (op.kind == RegOperation::Kind::SetValue) {
            (*changed)[size_t(currentRoot)] |= current->setValue(op.name, op.type, op.data);
        } else {
            (*changed)[size_t(currentRoot)] |= current->removeValue(op.name);
        }
        if (!why.empty() && first.line == 0) {
            first = SkippedLine{op.line, why};
            if (stopAtSkip) {
                return first;
            }
        }
    }
    return first;
}

}  // namespace platform::portable
