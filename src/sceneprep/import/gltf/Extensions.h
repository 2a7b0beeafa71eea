#pragma once

#include <sceneprep/import/gltf/BufferViews.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Model.h>

namespace Sceneprep::GltfImport
{

/// Checks that meshes can be read right: a required extension that is not known must not be used by meshes, primitives,
/// accessors, buffer views or buffers. Elsewhere unknown extensions are carried as they are.
/// @throws FormatError naming the extension and the object that needs it.
void CheckRequired(const Field& document);

/// Carries what describes the whole document: its asset, its extras, and its extensions with the buffer views that they
/// refer to.
void CarryDocument(const Field& document, BufferViews& views, Carried& carried);

}  // namespace Sceneprep::GltfImport
