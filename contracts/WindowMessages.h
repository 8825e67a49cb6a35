#pragma once

/// The one window message call the plug-in makes. On Windows it is the system's own; elsewhere the host
/// framework provides the same call and delivers to the host's message windows.

#ifdef _WIN32

#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>

#else

#include <cstdint>

#include "contracts/Export.h"

using HWND = void*;
using UINT = unsigned int;
using WPARAM = std::uintptr_t;
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;

/// Delivers a message to `window` and returns when the window has handled it. A handle that names no window
/// makes the message go nowhere; the result is then 0.
extern "C" KX_API LRESULT SendMessageW(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

#endif
