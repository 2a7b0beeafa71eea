#pragma once

/// @file
/// IMPORTING_API marks what the shared library SceneContainer exports. Everything else is hidden.
/// A static library defines IMPORTING_STATIC, for itself and for its users: then nothing is exported or imported.

#if defined(IMPORTING_STATIC)
#define IMPORTING_API
#elif defined(_WIN32)
#if defined(IMPORTING_BUILD)
#define IMPORTING_API __declspec(dllexport)
#else
#define IMPORTING_API __declspec(dllimport)
#endif
#else
#define IMPORTING_API __attribute__((visibility("default")))
#endif
