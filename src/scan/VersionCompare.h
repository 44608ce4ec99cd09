#pragma once
#include <QString>

namespace scan {

// True when `available` is a newer version than `installed`. Parts between points compare as
// 32-bit numbers when both are numeric and as text by character code otherwise; the shorter
// side is padded with zero parts, a leading "v" of the first part is ignored, and blanks
// between digits count as points. An empty installed version is always older; an empty
// available one never newer.
bool IsVersionNewer(const QString& installed, const QString& available);

}  // namespace scan
