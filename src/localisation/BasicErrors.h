#pragma once
#include <QString>

namespace localisation {

// Basic's run-time errors of the operations used here.
namespace basicerror {
inline constexpr int InvalidProcedureCall = 5;
inline constexpr int Overflow = 6;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int BadFileNameOrNumber = 52;
inline constexpr int FileNotFound = 53;
inline constexpr int DiskFull = 61;
inline constexpr int PathFileAccessError = 75;
inline constexpr int PathNotFound = 76;
}  // namespace basicerror

// The description Basic's Err.Description gives for the number, as in "File not found";
// Basic's text for an unassigned number otherwise.
QString BasicErrorDescription(int number);

}  // namespace localisation
