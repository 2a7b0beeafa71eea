#pragma once

#include <importing/plugin/SceneContainer.h>

namespace Golden
{

/// A scene that went through every operation that needs no trigonometric function: meshes welded, oriented, smoothed
/// and given texture coordinates; mirroring removed; instances resolved; names made distinct; hierarchy flattened,
/// surfaces merged; a second scene appended; collision offsets set.
///
/// Made by + - * / and square roots alone, in one order of evaluation, so that every compiler and platform has to come
/// to the same bits. Trigonometric functions differ between platforms in their last bits.
Importing::SceneContainer ProcessedScene();

}  // namespace Golden
