// The one place that compiles the glTF library.
#define TINYGLTF_IMPLEMENTATION
#include <sceneprep/export/gltf/TinyGltf.h>
