#pragma once

#include <assimp/scene.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>
#include <memory>

namespace Sceneprep
{

/// A model file as the model library holds it.
class ModelSource
{
public:
    /// Reads the file.
    /// @throws ToolError when there is no such file, its format is not known, or it cannot be read.
    ModelSource(const std::filesystem::path& file, Progress& progress);

    const std::filesystem::path& File() const { return file_; }
    const aiScene& Scene() const { return *scene_; }

    /// Frees a mesh's vertices and faces, of which no more than the numbers remain: a scene that has taken them over
    /// need not lie in memory twice.
    void Release(unsigned mesh);

private:
    std::filesystem::path file_;
    std::unique_ptr<aiScene> scene_;
};

/// Looks at a model file's name without reading it, before work begins.
/// @throws ToolError when there is no such file or its ending is not known.
void CheckReadable(const std::filesystem::path& file);

}  // namespace Sceneprep
