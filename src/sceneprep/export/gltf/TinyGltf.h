#pragma once

/// @file
/// The glTF library in a namespace of its own: other libraries that are loaded carry versions of it under the same
/// names, and the loader would mix them up. Pictures are read and written as the files that they are, without it.

#define tinygltf SceneprepTinyGltf
#define TINYGLTF_NO_STB_IMAGE
#define TINYGLTF_NO_STB_IMAGE_WRITE
#include <tiny_gltf.h>
