#pragma once

/// @file
/// IMPORTING_API marks what the shared library SceneContainer shows to its users. Everything else stays hidden.

#if defined(_WIN32)
#if defined(IMPORTING_BUILD)
#define IMPORTING_API __declspec(dllexport)
#else
#define IMPORTING_API __declspec(dllimport)
#endif
#else
#define IMPORTING_API __attribute__((visibility("default")))
#endif
