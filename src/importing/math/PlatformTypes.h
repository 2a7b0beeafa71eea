#pragma once

/// @file
/// The platform's math value types, declared by the platform's own header, for programs that use that header too. Of
/// the functions that it declares the system uses its own definitions all the same: see D3DXMath.h.

#if !defined(_WIN32)
#error "IMPORTING_PLATFORM_MATH needs Windows, whose d3dx9math.h declares the value types"
#endif

#if !defined(NOMINMAX)
#define NOMINMAX
#endif
#include <windows.h>

#include <d3dx9math.h>
