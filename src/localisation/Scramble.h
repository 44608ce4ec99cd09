#pragma once
#include <string>

namespace localisation {

// The light scrambling of the shipped language files: byte pairs from the start, leaving the
// last two bytes of an even-sized array and the last byte of an odd-sized one plain; arrays
// of fewer than three bytes stay as they are. Bytes 0 to 6 at even positions and 251 to 255
// at odd ones pass the scrambler unchanged and so do not come back from the unscrambler;
// the files written so far carry that, so it stays.
void ScrambleBytes(std::string& bytes);
void UnscrambleBytes(std::string& bytes);

}  // namespace localisation
