#include <sceneprep/export/gltf/PinnedPrimitives.h>

#include <sceneprep/export/gltf/CarriedAccessors.h>

#include <map>
#include <string>
#include <utility>

namespace Sceneprep::Gltf
{

namespace
{

using Accessors = std::map<std::string, CarriedAccessor>;

/// Returns whether an attribute needs KHR_mesh_quantization, by the table of allowed types in the core format.
bool IsQuantized(const std::string& name, const CarriedAccessor& accessor)
{
    if (accessor.componentType == kFloat)
        return false;
    if (name == "POSITION" || name == "NORMAL" || name == "TANGENT")
        return true;
    if (!name.starts_with("TEXCOORD_"))
        return false;
    const bool isUnsigned = accessor.componentType == kUnsignedByte || accessor.componentType == kUnsignedShort;
    return !isUnsigned || !accessor.isNormalized;
}

Json WriteAccessors(const Accessors& attributes, Buffers& buffers, Document& document)
{
    Json result = Json::object();
    for (const auto& [name, accessor] : attributes)
    {
        result[name] = AddCarried(accessor, Usage::Vertices, name == "POSITION", buffers, document);
        if (IsQuantized(name, accessor))
        {
            document.impliedExtensions.insert("KHR_mesh_quantization");
            document.requiredExtensions.insert("KHR_mesh_quantization");
        }
    }
    return result;
}

}  // namespace

MeshArrays WritePinned(const CarriedPrimitive& primitive, Buffers& buffers, Document& document)
{
    MeshArrays arrays;
    arrays.mode = primitive.mode;
    arrays.attributes = WriteAccessors(primitive.attributes, buffers, document);
    for (const Accessors& target : primitive.targets)
        arrays.targets.push_back(WriteAccessors(target, buffers, document));
    if (primitive.indices)
        arrays.indices = AddCarried(*primitive.indices, Usage::Indices, false, buffers, document);
    arrays.isSkinned = primitive.attributes.contains("JOINTS_0");
    return arrays;
}

}  // namespace Sceneprep::Gltf
