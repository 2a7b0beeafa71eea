#include <pictures/MeshPictures.h>
#include <pictures/Png.h>
#include <pictures/ScenePictures.h>
#include <pictures/UVPictures.h>
#include <pictures/WorkshopPicture.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

namespace
{

using Importing::Geometry;
using Pictures::Image;

struct Picture
{
    const char* name;
    std::function<Image()> draw;
};

std::vector<Picture> ListPictures(const std::filesystem::path& workshop)
{
    const auto mapping = [](Pictures::GenerateUVs uvs) { return [uvs] { return Pictures::DrawMapping(uvs); }; };
    return {
        {"workshop-before-after", [workshop] { return Pictures::DrawWorkshop(workshop, std::cout); }},
        {"weld", Pictures::DrawWeld},
        {"normals", Pictures::DrawComputeNormals},
        {"unify-normals", Pictures::DrawUnifyNormals},
        {"fix-culling", Pictures::DrawFixFaceCulling},
        {"uvs-planar-x", mapping(&Geometry::GenerateUVsPlanarX)},
        {"uvs-planar-y", mapping(&Geometry::GenerateUVsPlanarY)},
        {"uvs-planar-z", mapping(&Geometry::GenerateUVsPlanarZ)},
        {"uvs-cubic", mapping(&Geometry::GenerateUVsCubic)},
        {"uvs-cylindrical", mapping(&Geometry::GenerateUVsCylindrical)},
        {"uvs-spherical", [] { return Pictures::DrawMappingFromAbove(&Geometry::GenerateUVsSpherical); }},
        {"repair-mirrors", Pictures::DrawRepairMirrors},
        {"resolve-instances", Pictures::DrawResolveInstances},
        {"collision-offsets", Pictures::DrawCollisionOffsets},
    };
}

/// Draws those that are named behind the two paths, or all.
int DrawPictures(const std::filesystem::path& workshop, const std::filesystem::path& folder,
                 const std::vector<std::string>& names)
{
    for (const Picture& picture : ListPictures(workshop))
    {
        if (!names.empty() && std::find(names.begin(), names.end(), picture.name) == names.end())
            continue;
        const std::filesystem::path file = folder / (std::string(picture.name) + ".png");
        Pictures::WritePng(picture.draw(), file);
        std::cout << file.string() << '\n';
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
    {
        std::cerr << "usage: draw_pictures WORKSHOP.gltf FOLDER [PICTURE...]\n";
        return 2;
    }
    try
    {
        return DrawPictures(argv[1], argv[2], {argv + 3, argv + argc});
    }
    catch (const std::exception& error)
    {
        std::cerr << "draw_pictures: " << error.what() << '\n';
        return 1;
    }
}
