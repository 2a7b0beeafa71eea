#include <sceneprep/export/gltf/Extensions.h>

#include <algorithm>
#include <utility>

namespace Sceneprep::Gltf
{

void AddExtension(const std::string& name, tinygltf::Value value, tinygltf::Model& model,
                  tinygltf::ExtensionMap& extensions)
{
    DeclareExtension(name, model);
    extensions[name] = std::move(value);
}

void DeclareExtension(const std::string& name, tinygltf::Model& model)
{
    std::vector<std::string>& used = model.extensionsUsed;
    if (std::find(used.begin(), used.end(), name) == used.end())
        used.push_back(name);
}

}  // namespace Sceneprep::Gltf
