#pragma once

#include <sceneprep/model/Model.h>

namespace Sceneprep
{

/// Appends one model to another by SceneContainer::AppendSC(), its textures included.
///
/// Embedded images are renumbered, those of the other file after those of the first, and referenced by index. Images
/// lose a name that another image or a texture file has too. References of the other model that are relative to its own
/// folder become relative to the folder of the first one.
///
/// Supplement and carried data are appended by AppendCarried(). Materials with different carried data
/// stay separate, even if they are equal in the container. Roots that the import added are replaced by their children.
///
/// Both texture libraries are rewritten. The spare node that SceneContainer::AppendSC() leaves, and roots that were
/// replaced, are not removed; they cannot be reached from the root.
void AppendModel(Model& first, Model other);

}  // namespace Sceneprep
