#pragma once

/// @file
/// The platform's math value types as the platform's own header declares them, for programs that include that header
/// too. The library still uses its own definitions of the functions: see D3DXMath.h.

#if !defined(_WIN32)
#error "IMPORTING_PLATFORM_MATH needs Windows, whose d3dx9math.h declares the value types"
#endif

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <d3dx9math.h>
