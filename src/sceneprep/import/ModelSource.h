#pragma once

#include <assimp/scene.h>
#include <sceneprep/run/Progress.h>

#include <filesystem>
#include <memory>
#include <vector>

namespace Sceneprep
{

/// A model file as Assimp reads it.
class ModelSource
{
public:
    /// Reads the file.
    /// @throws ToolError if the file does not exist, its format is not supported, or it cannot be read.
    ModelSource(const std::filesystem::path& file, Progress& progress);

    const std::filesystem::path& File() const { return file_; }
    const aiScene& Scene() const { return *scene_; }
    /// Returns the files that were opened for reading, some of them several times.
    const std::vector<std::filesystem::path>& OpenedFiles() const { return openedFiles_; }

    /// Frees the vertices and faces of a mesh that has been converted, so that the scene is not in memory twice. The
    /// numbers of vertices and faces remain.
    void Release(unsigned mesh);

private:
    std::filesystem::path file_;
    std::vector<std::filesystem::path> openedFiles_;
    std::unique_ptr<aiScene> scene_;
};

/// Checks the name of a model file before work begins, without reading it.
/// @throws ToolError if the file does not exist or its extension is not supported.
void CheckReadable(const std::filesystem::path& file);

}  // namespace Sceneprep
