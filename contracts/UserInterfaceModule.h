#pragma once

#include "contracts/UserInterface.h"

/// The entry of a user interface in a shared library of its own (`libkxui_wx.so`, `kxui_wx.dll`). The host
/// loads it only when windows are asked for, so that everything else runs without a toolkit and without a
/// display.
///
/// All functions are called on the user-interface thread, and the library is never unloaded before the
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

/// Lets the user interface, while a modal dialog is open, ask `interrupted` several times a second. Once it
/// answers true, modal dialogs are closed as by their close box, the one in front first. A message box stays
/// until it is answered. `interrupted` must not throw.
KX_UI_MODULE_API void kxCloseOnInterrupt(UserInterface* userInterface, bool (*interrupted)());

/// Ends the user interface and the toolkit. Every dialog it made, and every window that extensions made, is
/// gone by then. Null is allowed.
KX_UI_MODULE_API void kxDestroyUserInterface(UserInterface* userInterface);

}  // extern "C"

/// Types and names for loading them.
using KxCreateUserInterface = UserInterface* (*)();
using KxCloseOnInterrupt = void (*)(UserInterface*, bool (*interrupted)());
using KxDestroyUserInterface = void (*)(UserInterface*);
inline constexpr char KxCreateUserInterfaceName[] = "kxCreateUserInterface";
inline constexpr char KxCloseOnInterruptName[] = "kxCloseOnInterrupt";
inline constexpr char KxDestroyUserInterfaceName[] = "kxDestroyUserInterface";
