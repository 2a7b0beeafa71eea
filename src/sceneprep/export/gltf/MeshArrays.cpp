#include <sceneprep/export/gltf/MeshArrays.h>

#include <fmt/format.h>

namespace Sceneprep::Gltf
{

void MendedValues::AddNotes(Notes& notes) const
{
    notes.AddLoss("triangles", "dropped triangles with NaN or infinite positions", triangles);
    const auto count = [&notes](const char* text, std::size_t number) {
        if (number > 0)
            notes.Add(fmt::format("{} ({})", text, number));
    };
    count("replaced normals without a direction by the normals of faces", normals);
    count("replaced tangents without a direction", tangents);
    count("replaced NaN and infinite texture coordinates by (0, 0)", texCoords);
    count("replaced NaN and infinite values of other vertex attributes by 0", attributes);
    notes.AddLoss("skins", "dropped skins without weights, or with weights of joints that do not exist", skins);
    count("normalized the weights of vertices whose weights did not add up to 1", weights);
}

std::size_t MeshArrays::CountTexCoords() const
{
    std::size_t count = 0;
    for (const auto& attribute : attributes.items())
        count += attribute.key().starts_with("TEXCOORD_") ? 1 : 0;
    return count;
}

}  // namespace Sceneprep::Gltf
