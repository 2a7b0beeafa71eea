#pragma once

#include <importing/base/Export.h>
#include <importing/math/D3DXMath.h>
#include <importing/records/HashObject.h>

#include <cstddef>
#include <cstdint>
#include <utility>

namespace Importing
{

/// One vertex of a mesh: position, normal, any number of texture coordinates and any number of skin weights.
///
/// Layout: 64 bytes where pointers have 8 bytes. Up to InlineTexCoords UV sets are stored in the vertex itself. A
/// vertex with more UV sets, or with weights, stores both sequences in one block on the heap, so it owns at most one
/// allocation.
///
/// Every operation that changes a field invalidates the content hash; getters never do. The hash covers, in this
/// order, the texture coordinates, the weights (unmasked), the normal and the position.
///
/// Cost: copies are linear in the number of UV sets and weights, everything else is constant; adding UV sets or weights
/// is amortised constant for each. An operation that throws changes nothing.
class IMPORTING_API Vertex : public HashObject
{
public:
    /// A skin weight: joint index and weight.
    using Weight = std::pair<std::uint32_t, float>;

    /// The number of UV sets that users are expected to fill, as a compile-time constant. A vertex may hold more.
    static const int MAX_NUM_MAP = 3;

    /// The number of UV sets that a vertex stores without an allocation.
#if defined(_MSC_VER)  // Microsoft's layout does not reuse the padding after the hash.
    static constexpr std::size_t InlineTexCoords = 2;
#else
    static constexpr std::size_t InlineTexCoords = 3;
#endif

    /// Creates a vertex with position and normal (0, 0, 0), no texture coordinates and no weights.
    Vertex() : Vertex(D3DXVECTOR3(0, 0, 0)) {}
    /// Creates a vertex with this position, normal (0, 0, 0), no texture coordinates and no weights.
    Vertex(const D3DXVECTOR3& position) : position_(position), normal_(0, 0, 0) {}
    Vertex(float x, float y, float z) : Vertex(D3DXVECTOR3(x, y, z)) {}

    Vertex(const Vertex& other)
        : HashObject(other), position_(other.position_), normal_(other.normal_), inlineCount_(other.inlineCount_),
          attributes_(other.attributes_)
    {
        if (HasBlock())
            CopyBlock(*other.attributes_.block);
    }
    Vertex(Vertex&& other) noexcept
        : HashObject(static_cast<HashObject&&>(other)), position_(other.position_), normal_(other.normal_),
          inlineCount_(other.inlineCount_), attributes_(other.attributes_)
    {
        other.inlineCount_ = 0;
    }
    Vertex& operator=(const Vertex& other);
    Vertex& operator=(Vertex&& other) noexcept;

    ~Vertex() override
    {
        if (HasBlock())
            FreeBlock(attributes_.block);
    }

    virtual D3DXVECTOR3 GetPosition() { return position_; }
#if defined(_MSC_VER)  // Microsoft's virtual tables list overloads of one name in reverse order of declaration.
    virtual void SetPosition(const D3DXVECTOR3& position);
    virtual void SetPosition(const float* position);
#else
    virtual void SetPosition(const float* position);
    virtual void SetPosition(const D3DXVECTOR3& position);
#endif

    virtual D3DXVECTOR3 GetNormal() { return normal_; }
#if defined(_MSC_VER)
    virtual void SetNormal(const D3DXVECTOR3& normal)
    {
        normal_ = normal;
        SetHashInvalid();
    }
    virtual void SetNormal(const float* normal);
#else
    virtual void SetNormal(const float* normal);
    virtual void SetNormal(const D3DXVECTOR3& normal)
    {
        normal_ = normal;
        SetHashInvalid();
    }
#endif

    /// Returns UV set `index`.
    /// @throws std::out_of_range "invalid vector<T> subscript" when the vertex has no such set.
    virtual D3DXVECTOR2 GetTexCoord(int index);
    virtual std::uint64_t GetTexCoordCount() const;
    /// Sets UV set `index`. Missing sets below it are added as (0, 0).
    /// @throws std::length_error "vector<T> too long" when no sequence can be that long.
    virtual void SetTexCoord(const D3DXVECTOR2& texCoord, std::uint64_t index)
    {
        if (index < InlineTexCoords && index < inlineCount_ && !HasBlock())
            attributes_.texCoords[index] = texCoord;
        else
            GrownTexCoord(index) = texCoord;
        SetHashInvalid();
    }

    /// Transforms the position by one matrix and the normal by another. The normal is not renormalised.
    /// Deliberate: the normal is transformed as a point, with translation and division by w. Normal matrices have
    /// neither.
    virtual void Transform(const D3DXMATRIX& positionMatrix, const D3DXMATRIX& normalMatrix)
    {
        D3DXVec3TransformCoord(&position_, &position_, &positionMatrix);
        D3DXVec3TransformCoord(&normal_, &normal_, &normalMatrix);
        SetHashInvalid();
    }
    /// Transforms UV set `index`. Missing sets are added as (0, 0) first.
    /// @throws std::length_error like SetTexCoord.
    virtual void TransformTexCoord(const D3DXMATRIX& matrix, std::uint64_t index);
    /// Multiplies the position by a factor. The normal does not change.
    virtual void Scale(float factor);
    /// Swaps y and z of the position and of the normal.
    virtual void SwapYZ();
    /// Negates z of the position and of the normal. 0 becomes -0.
    virtual void InverseZ();
    /// Negates the normal.
    virtual void InverseNormal();
    /// Normalises the normal. A normal of length 0 becomes (0, 0, 0).
    virtual void NormalizeNormal()
    {
        D3DXVec3Normalize(&normal_, &normal_);
        SetHashInvalid();
    }

    /// Returns the weight at `index`, or (0, 0) when there is none. Deliberate: unlike GetTexCoord it does not throw.
    virtual Weight GetWeight(std::uint64_t index);
    virtual std::uint64_t GetWeightsCount() const;
    /// Sets the weight at `index`. Missing weights below it are added as (0, 0). Entries of the same joint are not
    /// merged, weights are not normalised, and their number is not limited.
    /// @throws std::length_error "vector<T> too long" when no sequence can be that long.
    virtual void SetWeight(std::uint32_t joint, float weight, std::uint64_t index);
    /// Removes all weights. The texture coordinates do not change.
    virtual void ClearWeights();

    /// Appends a weight. Deliberate: an existing entry of the same joint is not looked for.
    void AddWeight(std::uint32_t joint, float weight);

protected:
    void CalculeteHash() override;

private:
    struct Block;

    union Attributes
    {
        D3DXVECTOR2 texCoords[InlineTexCoords];
        Block* block;
    };

    static constexpr std::uint32_t kInBlock = 0xFFFFFFFFU;

    bool HasBlock() const { return inlineCount_ == kInBlock; }
    void CopyBlock(const Block& block);
    static void FreeBlock(Block* block) noexcept;

    const D3DXVECTOR2* TexCoords() const;
    std::uint64_t TexCoordCount() const;
    std::uint64_t WeightCount() const;
    void Reserve(std::uint64_t texCoords, std::uint64_t weights);
    D3DXVECTOR2& GrownTexCoord(std::uint64_t index);

    D3DXVECTOR3 position_;
    D3DXVECTOR3 normal_;
    std::uint32_t inlineCount_ = 0;  ///< number of UV sets stored in the vertex itself, or kInBlock
    Attributes attributes_{};
};

}  // namespace Importing
