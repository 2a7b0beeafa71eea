#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/SceneSupplement.h>
#include <pipeline/steps/PrepareOptions.h>
#include <pipeline/steps/RunStep.h>
#include <pipeline/steps/StepListener.h>

#include <string>
#include <vector>

namespace Pipeline
{

/// The result of PrepareScene().
struct PrepareResult
{
    std::vector<StepResult> steps;              ///< in the order in which they ran
    std::vector<std::string> unusedKeeps = {};  ///< those of PrepareOptions::keep that match no node
};

/// Returns the recommended steps: they reduce nodes, draw calls and vertices, and keep the appearance of the scene and
/// the normals and texture coordinates of the file.
PrepareOptions RecommendedSteps();

/// Runs the chosen steps in the order of Steps(). Nodes that PrepareOptions::keep names are frozen first, by the names
/// that they have before any step.
///
/// This is the safe sequence. Called directly, one after the other, the container's own operations move nested mirrored
/// nodes, show back faces where a mirroring matrix is baked, and merge skinned meshes with others.
///
/// The two-argument form prepares a scene of which the host knows nothing more than the container holds. The other form
/// also keeps `supplement` consistent with the container, and reports progress.
///
/// @throws std::out_of_range before anything has changed, when an index in the container is outside its library or
/// mesh.
/// @throws std::runtime_error before anything has changed, when a node has two parents or is below itself.
/// An exception from a step itself (of memory, or of the listener) leaves the scene partly prepared, but destructible
/// and assignable.
PrepareResult PrepareScene(Importing::SceneContainer& scene, const PrepareOptions& options = RecommendedSteps());
PrepareResult PrepareScene(Importing::SceneContainer& scene, const PrepareOptions& options, SceneSupplement& supplement,
                           StepListener& listener);

}  // namespace Pipeline
