#pragma once

#include <sceneprep/compare/ClipKeys.h>
#include <sceneprep/compare/Pieces.h>
#include <sceneprep/compare/SurfacePieces.h>
#include <sceneprep/compare/ViewerCounts.h>
#include <sceneprep/model/Model.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace Sceneprep
{

enum class PieceKind
{
    Triangle,
    Line,
    Point,
    Camera,
    Light
};

/// What pieces have in common: their material, or the values of a camera or light.
struct Look
{
    PieceKind kind = PieceKind::Triangle;
    std::string name;  ///< of the material, camera or light
    std::string key;   ///< equal for looks that show the same
    double area = 0;   ///< of all triangles
};

/// A run of pieces that one node shows.
struct PieceRun
{
    std::uint32_t first = 0;  ///< index of its first piece
    std::string node;         ///< name of the node
};

/// Everything that a viewer shows of a model at rest, however its hierarchy is cut and its meshes are merged.
struct Appearance
{
    std::vector<Piece> pieces;
    std::vector<Look> looks;
    std::vector<PieceRun> runs;  ///< in the order of their first piece
    std::vector<ClipKey> clips;
    ViewerCounts counts;                            ///< without the bytes of the file
    std::vector<std::filesystem::path> imageFiles;  ///< that materials refer to, and that exist
    std::array<double, 3> min = {};
    std::array<double, 3> max = {};
    double noise = 0;        ///< how far rounding may move corners, in addition to rounding of their own coordinates
    std::size_t broken = 0;  ///< pieces with a corner that is NaN or infinite; they are not compared
};

struct AppearanceOptions
{
    IgnoredAttributes ignored = {};
    bool countsOnly = false;   ///< leave everything empty but the counts; read no image files
    bool isProcessed = false;  ///< steps have changed the model since it was read: every node counts
    std::vector<std::filesystem::path> imageFolders = {};  ///< further folders of image files
};

/// Takes the appearance of a model as it was read, before any step.
///
/// Linear in vertices and triangles; 48 bytes for each triangle, and no allocation for each.
/// @throws std::out_of_range if an index of the scene is not valid.
Appearance TakeAppearance(const Model& model, const AppearanceOptions& options = {});

}  // namespace Sceneprep
