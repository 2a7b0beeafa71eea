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
/// Layout: 64 bytes where pointers have 8. Up to InlineTexCoords UV sets lie in the vertex itself; a vertex with more
/// of them, or with weights, keeps both sequences in one block on the heap, so it owns at most one allocation.
///
/// Every operation that changes a field invalidates the content hash; getters never do. The hash covers, in this
/// order, the texture coordinates, the weights (unmasked), the normal and the position.
class IMPORTING_API Vertex : public HashObject
{
public:
    /// A weight: joint index and share.
    using Weight = std::pair<std::uint32_t, float>;

    /// The number of UV sets that users are expected to fill, as a compile-time constant. A vertex may hold more.
    static const int MAX_NUM_MAP = 3;

#if defined(_MSC_VER)  // its layout does not fill the padding behind the hash
    static constexpr std::size_t InlineTexCoords = 2;
#else
    static constexpr std::size_t InlineTexCoords = 3;
#endif

    /// Position and normal (0, 0, 0), no texture coordinates, no weights.
    Vertex() : Vertex(D3DXVECTOR3(0, 0, 0)) {}
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
#if defined(_MSC_VER)  // its tables list overloads of one name last declared first
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

    /// @throws std::out_of_range when there is no UV set at index.
    virtual D3DXVECTOR2 GetTexCoord(int index);
    virtual std::uint64_t GetTexCoordCount() const;
    /// Sets UV set index; sets that are missing below it are added as (0, 0).
    /// @throws std::length_error "vector<T> too long", with nothing changed, when no sequence can be that long.
    virtual void SetTexCoord(const D3DXVECTOR2& texCoord, std::uint64_t index)
    {
        if (index < InlineTexCoords && index < inlineCount_ && !HasBlock())
            attributes_.texCoords[index] = texCoord;
        else
            GrownTexCoord(index) = texCoord;
        SetHashInvalid();
    }

    /// Carries the position by one matrix and the normal by another, both as points: with translation and division by
    /// w (deliberate; a normal matrix has neither). The normal is not renormalised.
    virtual void Transform(const D3DXMATRIX& positionMatrix, const D3DXMATRIX& normalMatrix)
    {
        D3DXVec3TransformCoord(&position_, &position_, &positionMatrix);
        D3DXVec3TransformCoord(&normal_, &normal_, &normalMatrix);
        SetHashInvalid();
    }
    /// Carries UV set index; missing sets are added as (0, 0) first.
    /// @throws std::length_error like SetTexCoord.
    virtual void TransformTexCoord(const D3DXMATRIX& matrix, std::uint64_t index);
    /// Multiplies the position; the normal stays.
    virtual void Scale(float factor);
    /// Exchanges y and z of position and normal.
    virtual void SwapYZ();
    /// Negates z of position and normal; 0 becomes -0.
    virtual void InverseZ();
    virtual void InverseNormal();
    virtual void NormalizeNormal()
    {
        D3DXVec3Normalize(&normal_, &normal_);
        SetHashInvalid();
    }

    /// @return the weight at index, or (0, 0) when there is none: unlike GetTexCoord it does not throw.
    virtual Weight GetWeight(std::uint64_t index);
    virtual std::uint64_t GetWeightsCount() const;
    /// Sets the weight at index; missing ones below it are added as (0, 0). Entries of the same joint are not joined,
    /// nothing is normalised, the count is not limited.
    /// @throws std::length_error "vector<T> too long", with nothing changed, when no sequence can be that long.
    virtual void SetWeight(std::uint32_t joint, float weight, std::uint64_t index);
    virtual void ClearWeights();

    /// Appends a weight, also when the joint has one already.
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
    std::uint32_t inlineCount_ = 0;  ///< number of UV sets in the vertex itself, or kInBlock
    Attributes attributes_{};
};

}  // namespace Importing
