#pragma once

#include <sceneprep/model/Model.h>

namespace Sceneprep
{

/// Adds a loss for everything that a model carries in addition to the container and that only glTF can hold, each kind
/// with its number: vertex attributes, morph targets, points and lines, properties of materials that the container does
/// not have, further clips, orthographic cameras, extras and extensions. Call it for every format other than glTF.
void AddCarriedLosses(const Model& model, Notes& notes);

}  // namespace Sceneprep
