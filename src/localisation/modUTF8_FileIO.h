#pragma once
#include <QString>

#include "platform/Platform.h"

namespace localisation {

// The one place where files become UTF-16 text and text becomes files. Files are written as
// UTF-8 behind the byte order mark EF BB BF; a file without the mark is read in the
// machine's ANSI code page. Failures come back as text for the caller to show or log;
// nothing here shows or logs anything.
class modUTF8_FileIO {
public:
    explicit modUTF8_FileIO(platform::Platform& platform);

    // The whole file as text, line ends as they are. An empty file is accepted only with
    // allowEmpty, a file without the mark only with allowNotUTF8; unscramble undoes
    // ScrambleBytes on the bytes after the mark. On failure text is empty and errorText says
    // why: "Error 53 File not found" and the like, or the texts of the two refusals.
    bool ReadUTF8File(const QString& path, QString& text, QString& errorText, bool allowNotUTF8,
                      bool allowEmpty, bool unscramble);
    // Writes the mark and the text over the start of the file without truncating it, so a
    // caller that replaces a longer file deletes it first. An empty text writes nothing, not
    // even the mark.
    bool WriteUTF8File(const QString& path, const QString& text, QString& errorText, bool scramble);
    // Deletes the file, opens it anew into fileHandle and writes the mark. The caller adds
    // lines with AppendUTF8Line and closes the handle with FileSystem::closeFile.
    bool CreateUTF8File(const QString& path, int& fileHandle, QString& errorText);
    // The text and CR LF at the handle's current position.
    bool AppendUTF8Line(int fileHandle, const QString& text);

private:
    platform::FileSystem& files_;
    const platform::CodePage& codePage_;
};

}  // namespace localisation
