#pragma once

#include <sceneprep/compare/Pieces.h>

#include <cstdint>
#include <vector>

namespace Sceneprep
{

/// Which values of two pieces have to agree, and how well.
struct PieceTolerance
{
    double position = 0;     ///< at least this much, in addition to the rounding of coordinates
    double factor = 1;       ///< multiplies all tolerances
    bool placeOnly = false;  ///< compare position and size only, not looks and attributes
    bool winding = true;
    bool normals = true;
    bool texCoords = true;
    bool others = true;
    /// Whether normals of meshes that have none may become any others.
    bool mayAddNormals = false;
};

/// Which values of two pieces at one place differ.
struct PieceDifferences
{
    bool look = false;
    bool winding = false;
    bool normals = false;
    bool texCoords = false;
    bool others = false;
    bool tangents = false;

    bool HasAny() const { return look || winding || normals || texCoords || others || tangents; }
};

/// Two pieces, as indices into their lists.
struct PiecePair
{
    std::uint32_t before;
    std::uint32_t after;
};

/// Returns how far the corners of a piece may move by rounding.
double RoundingOf(const Piece& piece);

/// Compares the attributes of two pieces at one place.
/// @param lookOfBefore  [looks of before] number of the look; equal numbers show the same
/// @param lookOfAfter   [looks of after]
PieceDifferences ComparePieces(const Piece& before, const Piece& after, const std::vector<int>& lookOfBefore,
                               const std::vector<int>& lookOfAfter, const PieceTolerance& tolerance);

/// Matches runs of pieces that are in the same order on both sides, as merging leaves the triangles of a mesh. This is
/// several times as fast as MatchPieces(), which is for the rest.
/// @param starts  the pieces before with which a run begins, in ascending order
/// @param before, after  on return, what has no match, in ascending order
void MatchRuns(const std::vector<Piece>& beforePieces, const std::vector<Piece>& afterPieces,
               const std::vector<int>& lookOfBefore, const std::vector<int>& lookOfAfter,
               const PieceTolerance& tolerance, const std::vector<std::uint32_t>& starts,
               std::vector<std::uint32_t>& before, std::vector<std::uint32_t>& after);

/// Matches pieces, each with one other at most.
/// @param before, after  on return, what has no match, in ascending order
/// @return the pairs, if `tolerance.placeOnly`; otherwise empty
std::vector<PiecePair> MatchPieces(const std::vector<Piece>& beforePieces, const std::vector<Piece>& afterPieces,
                                   const std::vector<int>& lookOfBefore, const std::vector<int>& lookOfAfter,
                                   const PieceTolerance& tolerance, std::vector<std::uint32_t>& before,
                                   std::vector<std::uint32_t>& after);

}  // namespace Sceneprep
