#pragma once

#include "contracts/UserInterface.h"

/// The entry of a user interface in a shared library of its own (`libkxui_wx.so`, `kxui_wx.dll`). The host
/// loads it only when windows are asked for, so that everything else runs without a toolkit and without a
/// display.
///
/// Both functions are called on the user-interface thread, and the library is never unloaded before the
/// program ends: toolkits do not survive it.

#ifdef _WIN32
#define KX_UI_MODULE_API __declspec(dllexport)
#else
#define KX_UI_MODULE_API __attribute__((visibility("default")))
#endif

extern "C" {

/// Starts the toolkit and makes the user interface. Null when no display can be reached; never throws and
/// never ends the program. Called once. The caller gives the result back to kxDestroyUserInterface.
KX_UI_MODULE_API UserInterface* kxCreateUserInterface();

/// Ends the user interface and the toolkit. Every dialog it made, and every window that extensions made, is
/// gone by then. Null is allowed.
KX_UI_MODULE_API void kxDestroyUserInterface(UserInterface* userInterface);

}  // extern "C"

/// Types and names for loading them.
using KxCreateUserInterface = UserInterface* (*)();
using KxDestroyUserInterface = void (*)(UserInterface*);
inline constexpr char KxCreateUserInterfaceName[] = "kxCreateUserInterface";
inline constexpr char KxDestroyUserInterfaceName[] = "kxDestroyUserInterface";
