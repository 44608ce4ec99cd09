#pragma once
// <windows.h> for the backend's sources, included before anything else. The interfaces name a
// class MessageBox, which the header would otherwise turn into MessageBoxA.
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#undef MessageBox
