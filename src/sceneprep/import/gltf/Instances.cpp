#include <sceneprep/import/gltf/Instances.h>

#include <fmt/format.h>
#include <sceneprep/import/gltf/LocalMatrix.h>

#include <array>
#include <string_view>

namespace Sceneprep::GltfImport
{

namespace
{

/// One attribute of all instances; empty where the file does not have it.
struct Values
{
    std::vector<float> numbers;
    std::size_t components;

    void CopyTo(std::size_t instance, double* target) const
    {
        for (std::size_t i = 0; !numbers.empty() && i < components; ++i)
            target[i] = static_cast<double>(numbers[instance * components + i]);
    }
};

}  // namespace

Instances ReadInstances(const Field& extension, Accessors& accessors)
{
    const Field attributes = extension.Member("attributes");
    std::optional<std::size_t> count;
    const auto read = [&](std::string_view name, std::string_view type, std::size_t components) {
        Values values{{}, components};
        const std::optional<Field> reference = attributes.Find(name);
        if (!reference)
            return values;
        values.numbers = accessors.Floats(*reference, {type});
        const std::size_t found = values.numbers.size() / components;
        if (count.value_or(found) != found)
            reference->Fail(fmt::format("{} elements, {} expected", found, *count));
        count = found;
        return values;
    };
    const Values translations = read("TRANSLATION", "VEC3", 3);
    const Values rotations = read("ROTATION", "VEC4", 4);
    const Values scales = read("SCALE", "VEC3", 3);

    Instances instances;
    for (const auto& [name, reference] : attributes.Members())
    {
        if (name == "TRANSLATION" || name == "ROTATION" || name == "SCALE")
            continue;
        const std::size_t further = accessors.Get(Field(reference, attributes.Where().Member(name))).elements.count;
        instances.attributesWithoutUse += 1;
        count = count.value_or(further);
    }
    for (std::size_t i = 0; i < count.value_or(0); ++i)
    {
        Placement placement;
        translations.CopyTo(i, placement.translation.data());
        rotations.CopyTo(i, placement.rotation.data());
        scales.CopyTo(i, placement.scale.data());
        instances.local.push_back(MatrixOf(placement));
    }
    return instances;
}

}  // namespace Sceneprep::GltfImport
