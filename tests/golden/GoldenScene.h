#pragma once

#include <importing/plugin/SceneContainer.h>

namespace Golden
{

/// Returns a scene that has passed through every operation that needs no trigonometric function: meshes welded,
/// oriented, smoothed and given texture coordinates; negative scale removed; instances resolved; names made distinct;
/// hierarchy flattened, surfaces merged; a second scene appended; collision offsets set.
///
/// It is computed only by + - * / and square roots, in one order of evaluation, so every compiler and platform must get
/// the same bits. Trigonometric functions differ between platforms in their last bits.
Importing::SceneContainer ProcessedScene();

}  // namespace Golden
