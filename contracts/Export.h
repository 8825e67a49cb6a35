#pragma once

/// Marks what the host framework's shared library exports.
#ifdef _WIN32
#ifdef KX_BUILDING_FRAMEWORK
#define KX_API __declspec(dllexport)
#else
#define KX_API  // not dllimport: that would shut out a fake framework linked into a program
#endif
#else
#define KX_API __attribute__((visibility("default")))
#endif
