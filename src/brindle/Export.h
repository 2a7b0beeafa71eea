#pragma once

/// @file
/// BRINDLE_API marks what the host stand-in shows to its users.

#if defined(_WIN32)
#if defined(BRINDLE_BUILD)
#define BRINDLE_API __declspec(dllexport)
#else
#define BRINDLE_API __declspec(dllimport)
#endif
#else
#define BRINDLE_API __attribute__((visibility("default")))
#endif
