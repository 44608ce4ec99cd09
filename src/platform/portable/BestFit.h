#pragma once

namespace platform::portable {

// The letter Windows writes for a Latin letter with a diacritic, a stroke or a hook that a
// code page lacks ("ł" as "l", "Ő" as "O"), as its best-fit table for code page 1252 has it;
// 0 for any other character. The caller takes it only when the code page has that letter.
char16_t bestFitLetter(char16_t letter);

}  // namespace platform::portable
