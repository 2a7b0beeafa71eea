#pragma once

#include <sceneprep/model/Json.h>

#include <functional>

namespace Sceneprep
{

/// @file
/// Finds the references to accessors and buffer views in glTF extensions, so that readers and writers renumber the same
/// members.

/// Receives an integer of the object, which it may replace.
using ReferenceVisitor = std::function<void(Json& index)>;

/// Visits the references to accessors in the extensions of a mesh or a primitive: the members "indices", "accessor",
/// "mergeIndices" and "mergeValues", and all members of "attributes".
/// @param extensions  the object with the extensions by name
void VisitAccessorReferences(Json& extensions, const ReferenceVisitor& visit);

/// Visits the references to buffer views in the extensions of a document: the members "bufferView", and "values",
/// "arrayOffsets" and "stringOffsets" in the property tables of EXT_structural_metadata.
/// @param extensions  the object with the extensions by name
void VisitBufferViewReferences(Json& extensions, const ReferenceVisitor& visit);

}  // namespace Sceneprep
