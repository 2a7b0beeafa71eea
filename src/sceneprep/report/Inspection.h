#pragma once

#include <sceneprep/model/ImageSize.h>
#include <sceneprep/model/Model.h>
#include <sceneprep/report/Budget.h>
#include <sceneprep/report/Findings.h>
#include <sceneprep/report/PrepareReport.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace Sceneprep
{

struct MeshSummary
{
    std::size_t geometry = 0;  ///< index into the library
    std::string name = {};
    std::size_t vertices = 0;
    std::size_t indices = 0;
    std::size_t uses = 0;                      ///< surfaces
    std::uint64_t bytes = 0;                   ///< of vertices and indices as glTF stores them without compression
    std::vector<std::string> attributes = {};  ///< as in glTF
};

struct TextureSummary
{
    std::string name = {};                    ///< as the model file refers to it
    std::string kind = {};                    ///< media type, as "image/png"; empty if unknown or missing
    std::optional<ImageSize> size = {};       ///< none if unknown
    std::optional<std::uint64_t> bytes = {};  ///< of the image file; none if it is missing
    bool isEmbedded = false;
};

struct MaterialSummary
{
    std::string name = {};
    std::size_t uses = 0;  ///< surfaces
};

struct ClipSummary
{
    std::string name = {};
    double seconds = 0;
    std::size_t channels = 0;
};

/// What `inspect` prints about a model.
struct Inspection
{
    SceneFigures figures;
    std::vector<std::filesystem::path> files = {};
    std::vector<MeshSummary> meshes = {};  ///< largest first
    std::vector<TextureSummary> textures = {};
    std::vector<MaterialSummary> materials = {};  ///< in the order of the library
    std::vector<ClipSummary> clips = {};
    std::vector<Finding> findings = {};
};

/// Computes the inspection of a model. Image files are opened for their extent; images are not decoded.
/// @param files  the files that the model consists of
/// @param bytes  of the files together
Inspection InspectModel(Model& model, const std::vector<std::filesystem::path>& files, std::uint64_t bytes);

/// Returns the inspection in sections: numbers, attributes, the ten largest meshes, textures, materials, clips,
/// findings.
std::string InspectionText(const Inspection& inspection);

/// Returns a JSON object with the keys "file" and "files", those of FiguresAsJson(), "attributes", "meshes",
/// "textures", "materials", "clips", "findings" and "surfaces"; with limits also "budget", and with the tree "root" and
/// "nodes". Lists of surfaces and nodes are in the order of their libraries, with indices as references.
std::string InspectionJson(const std::filesystem::path& file, Importing::SceneContainer& scene,
                           const Inspection& inspection, const std::vector<BudgetResult>& budget, bool withTree);

}  // namespace Sceneprep
