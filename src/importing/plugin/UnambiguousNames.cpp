#include <importing/base/CheckedAccess.h>
#include <importing/plugin/Disambiguate.h>
#include <importing/plugin/SceneContainer.h>

namespace Importing
{
namespace
{

/// Applies FindRenamings to a library. Other records and their cached hashes do not change.
template <typename Record>
void RenameDuplicates(std::vector<Record>& library)
{
    std::vector<std::string> names;
    names.reserve(library.size());
    for (Record& record : library)
        names.push_back(record.GetName());
    for (const Renaming& renaming : FindRenamings(names))
        library[renaming.index].SetName(renaming.name);
}

/// Returns the name of a record, or an empty name for index -1.
template <typename Record>
std::string NameOf(std::vector<Record>& library, int index)
{
    return index == -1 ? std::string() : At(library, index).GetName();
}

template <typename Record>
void CheckUnlessNone(int index, const std::vector<Record>& library)
{
    if (index != -1)
        CheckIndex(index, library.size());
}

}  // namespace

int SceneContainer::MakeNodeNamesUnambiguous()
{
    RenameDuplicates(NodeLibrary);
    return 0;
}

int SceneContainer::MakeGeometryNamesUnambiguous()
{
    RenameDuplicates(GeometryLibrary);
    return 0;
}

int SceneContainer::MakeMaterialNamesUnambiguous()
{
    RenameDuplicates(MaterialLibrary);
    return 0;
}

int SceneContainer::MakeSurfaceNamesUnambiguous()
{
    RenameDuplicates(SurfaceLibrary);
    return 0;
}

int SceneContainer::CreateSurfaceNames()
{
    for (const Surface& surface : SurfaceLibrary)
    {
        CheckUnlessNone(surface.GetGeometryID(), GeometryLibrary);
        CheckUnlessNone(surface.GetMaterialID(), MaterialLibrary);
    }
    for (Surface& surface : SurfaceLibrary)
    {
        const std::string mesh = NameOf(GeometryLibrary, surface.GetGeometryID());
        const std::string material = NameOf(MaterialLibrary, surface.GetMaterialID());
        surface.SetName(mesh.empty() ? material : mesh + "\r\n" + material);
    }
    return 0;
}

}  // namespace Importing
