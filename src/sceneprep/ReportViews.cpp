#include <sceneprep/ReportViews.h>

#include <fmt/format.h>
#include <sceneprep/export/ExportModel.h>

#include <cstddef>
#include <string>

namespace Sceneprep
{

namespace
{

namespace fs = std::filesystem;
using Report::PageView;

/// Returns a number of bytes that the file of a scene exceeds: positions and, for triangles, 16-bit indices.
std::uintmax_t LeastBytes(const Importing::SceneContainer& scene)
{
    std::vector<bool> isCounted(scene.GeometryLibrary.size(), false);
    std::uintmax_t bytes = 0;
    for (const Importing::Surface& surface : scene.SurfaceLibrary)
    {
        const auto geometry = static_cast<std::size_t>(surface.GetGeometryID());
        if (geometry >= isCounted.size() || isCounted[geometry])
            continue;
        isCounted[geometry] = true;
        bytes += 12 * scene.GeometryLibrary[geometry].VertexArray.size() +
                 2 * scene.GeometryLibrary[geometry].IndexArray.size();
    }
    return bytes;
}

std::string Megabytes(std::uintmax_t bytes) { return fmt::format("{} MB", (bytes + 500'000) / 1'000'000); }

PageView TooLarge(std::uintmax_t bytes, std::uintmax_t limit)
{
    return {.remark = fmt::format(
                "The scene is not shown: as a .glb file it has {} or more, and this page embeds at most {}.",
                Megabytes(bytes), Megabytes(limit))};
}

}  // namespace

PageView WriteView(const Model& model, const fs::path& references, const fs::path& folder,
                   const Pipeline::PartListener& listener, std::uintmax_t limit)
{
    if (model.scene->NodeLibrary.size() > kMostViewNodes)
        return {.remark = fmt::format("The scene is not shown: it has {} nodes, and this page shows at most {}.",
                                      model.scene->NodeLibrary.size(), kMostViewNodes)};
    if (const std::uintmax_t least = LeastBytes(*model.scene); least > limit)
        return TooLarge(least, limit);
    const fs::path file = folder / ".sceneprep-view";
    std::string remark;
    WriteGlb(model, file, references, true, listener);
    if (const std::uintmax_t bytes = fs::file_size(file); bytes > limit)
    {
        remark = fmt::format("Shown without textures: with them the .glb file has {}, and this page embeds at most {}.",
                             Megabytes(bytes), Megabytes(limit));
        WriteGlb(model, file, references, false, listener);
    }
    PageView view = OpenView(file);
    fs::remove(file);
    if (view.bytes > limit)
        return TooLarge(view.bytes, limit);
    view.remark = remark;
    return view;
}

bool CanOpenView(const Model& model, const fs::path& file, std::uintmax_t limit)
{
    std::error_code error;
    const std::uintmax_t bytes = fs::file_size(file, error);
    return !error && bytes <= limit && model.scene->NodeLibrary.size() <= kMostViewNodes && file.extension() == ".glb";
}

PageView OpenView(const fs::path& file)
{
    return {.file = std::ifstream(file, std::ios::binary), .bytes = fs::file_size(file)};
}

}  // namespace Sceneprep
