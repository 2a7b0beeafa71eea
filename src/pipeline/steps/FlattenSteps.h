#pragma once

#include <importing/plugin/SceneContainer.h>
#include <pipeline/steps/StepSequence.h>

namespace Pipeline
{

/// How to flatten; the numbers are those of SceneContainer::MergeSurfaces().
struct FlattenOptions
{
    int minSurfaces = 2;
    int maxVertices = -1;
    bool ignoreAnimation = false;
};

/// Appends the steps that collapse a scene into its root, in this order: LeaveSkeletonsToJoints, TakeSkinnedSurfaces,
/// AnchorAnimatedNodes, TurnMirroredFaces, Flatten, ReleaseAnchors, HangBelowRoot, DropUnreachableNodes; without the
/// skeletons and the anchors when animation is ignored. The scene's surfaces must not share meshes.
void AddFlattenSteps(StepSequence& pipeline, const FlattenOptions& options);

/// Hangs the topmost animated nodes under anchors that are children of the root and stand where the nodes' parents
/// stood.
///
/// Flattening keeps animated nodes but erases nodes above them, which would cut them off. An anchor counts as animated
/// until ReleaseAnchors(): its animation index is the size of the animation library.
void AnchorAnimatedNodes(Importing::SceneContainer& scene);

/// Makes the anchors ordinary nodes without animation.
void ReleaseAnchors(Importing::SceneContainer& scene);

/// Turns the winding of the meshes that flattening is going to carry by a mirroring matrix, so that their faces look
/// the same way afterwards. A mesh below an animated node that stays is left alone.
void TurnMirroredFaces(Importing::SceneContainer& scene, bool ignoreAnimation);

/// Collapses everything below the root into the root; repeats until the number of nodes no longer changes.
void Flatten(Importing::SceneContainer& scene, const FlattenOptions& options);

}  // namespace Pipeline
