#pragma once

#include <sceneprep/model/Model.h>

namespace Sceneprep
{

/// Adds a loss for everything that a model carries in addition to the container and that only glTF can hold, each kind
/// with its number: vertex attributes, morph targets, points and lines, what materials say beyond the container,
/// further clips, orthographic cameras, extras and extensions. To be called for every other format.
void AddCarriedLosses(const Model& model, Notes& notes);

}  // namespace Sceneprep
