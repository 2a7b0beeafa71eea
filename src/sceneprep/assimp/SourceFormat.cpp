#include <sceneprep/assimp/SourceFormat.h>

#include <assimp/commonMetaData.h>

#include <string>

namespace Sceneprep
{

bool IsFromGltf(const aiScene& source)
{
    aiString format;
    return source.mMetaData != nullptr && source.mMetaData->Get(AI_METADATA_SOURCE_FORMAT, format) &&
           std::string(format.C_Str()) == "glTF2 Importer";
}

}  // namespace Sceneprep
