#pragma once

#include <sceneprep/export/gltf/TinyGltf.h>

#include <string>

namespace Sceneprep::Gltf
{

/// Puts an extension's value into a part of the model, and its name into the list of those that the model uses.
void AddExtension(const std::string& name, tinygltf::Value value, tinygltf::Model& model,
                  tinygltf::ExtensionMap& extensions);

/// Puts an extension's name into the list of those that the model uses.
void DeclareExtension(const std::string& name, tinygltf::Model& model);

}  // namespace Sceneprep::Gltf
