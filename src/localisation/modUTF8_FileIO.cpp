#include "localisation/modUTF8_FileIO.h"

#include <string_view>

#include "core/AnsiText.h"
#include "localisation/BasicErrors.h"
#include "localisation/Scramble.h"
#include "localisation/Utf8Text.h"

namespace localisation {

namespace {

constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr const char* kSaving = "Error saving UTF-8 file: ";
constexpr const char* kCreating = "Error creating UTF-8 file: ";

// "53 File not found".
QString numberedError(int number) {
    return QString::number(number) + u' ' + BasicErrorDescription(number);
}

// The text of a failed write or create: the error, then the file on a line of its own.
QString fileError(const char* what, int number, const QString& path) {
    return QString::fromLatin1(what) + numberedError(number) + QStringLiteral("\r\n") + path;
}

}  // namespace

modUTF8_FileIO::modUTF8_FileIO(platform::Platform& platform)
    : files_(platform.files), codePage_(platform.codePage) {}

bool modUTF8_FileIO::ReadUTF8File(const QString& path, QString& text, QString& errorText,
                                  bool allowNotUTF8, bool allowEmpty, bool unscramble) {
    text.clear();
    errorText.clear();
    const auto fail = [&errorText](int number) {
        errorText = QStringLiteral("Error ") + numberedError(number);
        return false;
    };

    const std::string file = core::toAnsi(codePage_, path);
    const auto length = files_.FileLen(file);
    if (!length) {
        return fail(basicerror::FileNotFound);
    }
    if (*length == 0) {
        if (allowEmpty) {
            return true;
        }
        errorText = QStringLiteral("File not found or empty");
        return false;
    }
    auto bytes = files_.readFile(file);
    if (!bytes) {
        return fail(basicerror::PathFileAccessError);
    }

    const bool marked = std::string_view(*bytes).starts_with(kMark);
    if (!marked && !allowNotUTF8) {
        errorText =
            QStringLiteral("Error: The file ") + path + QStringLiteral(" is not UTF-8 encoded");
        return false;
    }
    if (marked) {
        bytes->erase(0, kMark.size());
    }
    // The payload array can't be sized for nothing: a file of the mark alone is an error.
    if (bytes->empty()) {
        return fail(basicerror::SubscriptOutOfRange);
    }
    if (unscramble) {
        UnscrambleBytes(*bytes);
    }
    text = marked ? decodeUtf8(*bytes) : core::fromAnsi(codePage_, *bytes);
    return true;
}

bool modUTF8_FileIO::WriteUTF8File(const QString& path, const QString& text, QString& errorText,
                                   bool scramble) {
    errorText.clear();
    int error = 0;
    const int handle = files_.openBinary(core::toAnsi(codePage_, path), &error);
    if (handle == 0) {
        errorText = fileError(kSaving, error, path);
        return false;
    }
    std::string bytes = encodeUtf8(text);
    if (bytes.empty()) {
        files_.closeFile(handle);
        return true;
    }
    if (scramble) {
        ScrambleBytes(bytes);
    }
    const bool written =
        files_.putBytes(handle, std::string(kMark)) && files_.putBytes(handle, bytes);
    files_.closeFile(handle);
    if (!written) {
        errorText = fileError(kSaving, basicerror::DiskFull, path);
    }
    return written;
}

bool modUTF8_FileIO::CreateUTF8File(const QString& path, int& fileHandle, QString& errorText) {
    errorText.clear();
    const std::string file = core::toAnsi(codePage_, path);
    files_.Kill(file);
    int error = 0;
    fileHandle = files_.openBinary(file, &error);
    if (fileHandle == 0) {
        errorText = fileError(kCreating, error, path);
        return false;
    }
    if (!files_.putBytes(fileHandle, std::string(kMark))) {
        files_.closeFile(fileHandle);
        fileHandle = 0;
        errorText = fileError(kCreating, basicerror::DiskFull, path);
        return false;
    }
    return true;
}

bool modUTF8_FileIO::AppendUTF8Line(int fileHandle, const QString& text) {
    return files_.putBytes(fileHandle, encodeUtf8(text + QStringLiteral("\r\n")));
}

}  // namespace localisation
