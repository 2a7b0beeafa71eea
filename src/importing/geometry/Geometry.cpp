#include <importing/geometry/Geometry.h>

#include <importing/records/ContentHash.h>

namespace Importing
{

Geometry::Geometry() { D3DXMatrixIdentity(&bindShapeTransform_); }

Geometry::Geometry(const Geometry&) = default;
Geometry::Geometry(Geometry&&) noexcept = default;
Geometry& Geometry::operator=(const Geometry&) = default;
Geometry& Geometry::operator=(Geometry&&) noexcept = default;
Geometry::~Geometry() = default;

void Geometry::CalculeteHash()
{
    ContentHash hash;
    hash.Add(polySize_);
    for (Vertex& vertex : VertexArray)
        hash.Add(vertex.GetHash());
    for (const std::uint32_t index : IndexArray)
        hash.Add(index);
    StoreHash(hash.Value());
}

std::string Geometry::GetName() { return name_; }

void Geometry::SetName(const std::string& name) { name_ = name; }

std::uint64_t Geometry::GetPolySize() const { return polySize_; }

void Geometry::SetPolySize(std::uint64_t size)
{
    polySize_ = size;
    SetHashInvalid();
}

int Geometry::Release()
{
    name_.clear();
    // Assigning new arrays frees the memory, which "= {}" would keep. Emptied meshes remain in their library.
    VertexArray = std::vector<Vertex>();
    IndexArray = std::vector<std::uint32_t>();
    JointArray = std::vector<Joint>();
    SetHashInvalid();
    return 0;
}

D3DXMATRIX Geometry::GetBindShapeTransform() { return bindShapeTransform_; }

void Geometry::SetBindShapeTransform(const D3DXMATRIX& matrix)
{
    bindShapeTransform_ = matrix;
    SetHashInvalid();
}

}  // namespace Importing
