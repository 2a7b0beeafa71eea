#pragma once

/// @file
/// BRINDLE_API marks what the host stand-in exports.
/// A static library defines BRINDLE_STATIC, for itself and for its users: then nothing is exported or imported.

#if defined(BRINDLE_STATIC)
#define BRINDLE_API
#elif defined(_WIN32)
#if defined(BRINDLE_BUILD)
#define BRINDLE_API __declspec(dllexport)
#else
#define BRINDLE_API __declspec(dllimport)
#endif
#else
#define BRINDLE_API __attribute__((visibility("default")))
#endif
