#pragma once

#include <sceneprep/import/gltf/BufferViews.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Model.h>

namespace Sceneprep::GltfImport
{

/// Checks that meshes can be read correctly: meshes, primitives, accessors, buffer views and buffers must not use a
/// required extension that is not supported. Unknown extensions of other objects are carried unchanged.
/// @throws FormatError with the extension and the object that needs it.
void CheckRequired(const Field& document);

/// Carries the properties of the whole document: its asset, its extras, and its extensions with the buffer views that
/// they refer to.
void CarryDocument(const Field& document, BufferViews& views, Carried& carried);

}  // namespace Sceneprep::GltfImport
