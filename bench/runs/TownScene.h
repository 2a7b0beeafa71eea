#pragma once

#include <importing/plugin/SceneContainer.h>

/// Fills an empty scene with a town of about nodeCount nodes, the way scenes come from authoring programs: districts,
/// blocks, buildings and their wings, one of every two wings mirrored; 8 parts a wing, each a node with one surface.
/// The 800 meshes of 100 kinds of building are shared, 24 materials likewise. The parts have 31 triangles on average,
/// with four vertices of their own for every quad. The scene is the same on every run.
void FillTown(Importing::SceneContainer& scene, int nodeCount);
