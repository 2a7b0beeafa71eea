#pragma once

#include <sceneprep/import/gltf/BufferViews.h>
#include <sceneprep/import/gltf/Field.h>
#include <sceneprep/model/Model.h>

namespace Sceneprep::GltfImport
{

/// Reads the images of a document into Carried::images, in the order of the file. Embedded images are copied
/// without decoding; files are not opened.
/// @throws FormatError if an embedded image does not exist.
void ReadImages(const Field& document, BufferViews& views, Model& model);

}  // namespace Sceneprep::GltfImport
