#pragma once

/// Marks what the host framework's shared library exports (when it is built) and what everybody else
/// imports from it.
#ifdef _WIN32
#ifdef KX_BUILDING_FRAMEWORK
#define KX_API __declspec(dllexport)
#else
#define KX_API __declspec(dllimport)
#endif
#else
#define KX_API __attribute__((visibility("default")))
#endif
