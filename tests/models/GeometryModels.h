#pragma once

#include <importing/geometry/Geometry.h>
#include <importing/math/D3DXMath.h>

#include <cstdint>
#include <vector>

/// Plain models of the operations on one mesh: step by step, with ordered maps and with constants given by their bits.
/// They share only the records and the platform's math functions with the library, and call only accessors of the mesh,
/// which is their first argument. The library's operations must have the same bits, results, exceptions and hash
/// states.
namespace Models
{

using Importing::Geometry;

/// GeometryModels.cpp
/// @{
D3DXMATRIX NormalMatrix(const D3DXMATRIX& matrix);
int Transform(Geometry& mesh, const D3DXMATRIX& matrix);
int TransformUVs(Geometry& mesh, const D3DXMATRIX& matrix, int set);
int GetBoundingBox(const Geometry& mesh, D3DXVECTOR3& min, D3DXVECTOR3& max);
int Append(Geometry& mesh, const Geometry& other);
int Append(Geometry& mesh, const Geometry& other, const D3DXMATRIX& matrix);
int Optimize(Geometry& mesh);
int Release(Geometry& mesh);
/// @}

/// NormalModels.cpp
/// @{
int FlipNormals(Geometry& mesh);
int FlipFaces(Geometry& mesh);
int ComputeNormals(Geometry& mesh);
int ComputePointCacheNormals(Geometry& mesh);
int UnifyNormals(Geometry& mesh, bool suppress);
int FixFaceCulling(Geometry& mesh, bool suppress);
/// @}

/// UVModels.cpp
/// @{
int GenerateUVsPlanarX(Geometry& mesh, int set, bool worldUnits);
int GenerateUVsPlanarY(Geometry& mesh, int set, bool worldUnits);
int GenerateUVsPlanarZ(Geometry& mesh, int set, bool worldUnits);
int GenerateUVsCubic(Geometry& mesh, int set, bool worldUnits);
int GenerateUVsCylindrical(Geometry& mesh, int set, bool worldUnits);
int GenerateUVsSpherical(Geometry& mesh, int set, bool worldUnits);
/// @}

}  // namespace Models
