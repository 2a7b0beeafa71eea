#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/scene/SceneSupplement.h>
#include <pipeline/steps/PrepareOptions.h>
#include <pipeline/steps/RunStep.h>
#include <pipeline/steps/StepListener.h>

#include <vector>

namespace Pipeline
{

/// What PrepareScene() did.
struct PrepareResult
{
    std::vector<StepResult> steps;  ///< in the order in which they ran
};

/// Returns the recommended steps: those that make a scene lighter and tidier, and keep its appearance and the artist's
/// normals and texture coordinates.
PrepareOptions RecommendedSteps();

/// Runs the chosen steps in the order of Steps().
///
/// This is the safe sequence: the container's own operations, called one after the other, move nested mirrored nodes,
/// flip faces that a mirroring matrix is baked into, cut off animated nodes and tear skins from their joints.
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
