// A mesh holds many vertices, so a vertex has to be small and cheap to copy: two std::vector members would add 48 bytes
// and an allocation each. Instead up to InlineTexCoords UV sets, the usual case, share their bytes with a pointer. More
// UV sets, or weights, move both sequences into one heap block: a header, the UV sets, then the weights. Both grow by
// halves of their capacity. A copy of a block has no spare capacity, and returns to the inline form where it fits.

#include <importing/records/Vertex.h>

#include <importing/base/CheckedAccess.h>
#include <importing/records/ContentHash.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>

namespace Importing
{
namespace
{

/// The largest length of a sequence of a vertex. It keeps sizes in bytes from overflowing.
constexpr std::uint64_t kMaxCount = std::numeric_limits<std::uint64_t>::max() / 64;

void CheckLength(std::uint64_t index)
{
    if (index >= kMaxCount)
        throw std::length_error("vector<T> too long");
}

/// Returns a capacity for count elements. It grows by at least half, so that appending is amortised constant.
std::uint64_t GrownCapacity(std::uint64_t count, std::uint64_t capacity)
{
    return count <= capacity ? capacity : std::max(count, capacity + capacity / 2);
}

}  // namespace

// The value is in the header. This definition lets users take the address of the constant.
const int Vertex::MAX_NUM_MAP;

/// The heap block of a vertex: this header, then the texture coordinates, then the weights.
struct Vertex::Block
{
    std::uint64_t texCoordCount;
    std::uint64_t texCoordCapacity;
    std::uint64_t weightCount;
    std::uint64_t weightCapacity;

    D3DXVECTOR2* TexCoords() { return reinterpret_cast<D3DXVECTOR2*>(this + 1); }
    const D3DXVECTOR2* TexCoords() const { return reinterpret_cast<const D3DXVECTOR2*>(this + 1); }
    Weight* Weights() { return reinterpret_cast<Weight*>(TexCoords() + texCoordCapacity); }
    const Weight* Weights() const { return reinterpret_cast<const Weight*>(TexCoords() + texCoordCapacity); }

    static Block* Allocate(std::uint64_t texCoordCapacity, std::uint64_t weightCapacity)
    {
        const std::size_t size =
            sizeof(Block) + texCoordCapacity * sizeof(D3DXVECTOR2) + weightCapacity * sizeof(Weight);
        return new (::operator new(size)) Block{0, texCoordCapacity, 0, weightCapacity};
    }

    void CopySequences(const D3DXVECTOR2* texCoords, std::uint64_t texCoordsToCopy, const Weight* weights,
                       std::uint64_t weightsToCopy)
    {
        std::uninitialized_copy_n(texCoords, texCoordsToCopy, TexCoords());
        std::uninitialized_copy_n(weights, weightsToCopy, Weights());
        texCoordCount = texCoordsToCopy;
        weightCount = weightsToCopy;
    }
};

/// Copies the sequences of a block into a new block, or into the vertex itself where they fit.
void Vertex::CopyBlock(const Block& block)
{
    if (block.weightCount == 0 && block.texCoordCount <= InlineTexCoords)
    {
        std::uninitialized_copy_n(block.TexCoords(), block.texCoordCount, attributes_.texCoords);
        inlineCount_ = static_cast<std::uint32_t>(block.texCoordCount);
        return;
    }
    Block* copy = Block::Allocate(block.texCoordCount, block.weightCount);
    copy->CopySequences(block.TexCoords(), block.texCoordCount, block.Weights(), block.weightCount);
    attributes_.block = copy;
}

void Vertex::FreeBlock(Block* block) noexcept { ::operator delete(block); }

Vertex& Vertex::operator=(const Vertex& other)
{
    if (this != &other)
        *this = Vertex(other);
    return *this;
}

Vertex& Vertex::operator=(Vertex&& other) noexcept
{
    HashObject::operator=(static_cast<HashObject&&>(other));
    position_ = other.position_;
    normal_ = other.normal_;
    // After the swap the other vertex owns the old block and frees it.
    std::swap(inlineCount_, other.inlineCount_);
    std::swap(attributes_, other.attributes_);
    return *this;
}

const D3DXVECTOR2* Vertex::TexCoords() const
{
    return HasBlock() ? attributes_.block->TexCoords() : attributes_.texCoords;
}

std::uint64_t Vertex::TexCoordCount() const { return HasBlock() ? attributes_.block->texCoordCount : inlineCount_; }

std::uint64_t Vertex::WeightCount() const { return HasBlock() ? attributes_.block->weightCount : 0; }

/// Reserves capacity for that many entries. Sequences that fit into the vertex remain there.
void Vertex::Reserve(std::uint64_t texCoords, std::uint64_t weights)
{
    if (!HasBlock())
    {
        if (texCoords <= InlineTexCoords && weights == 0)
            return;
        Block* block = Block::Allocate(std::max<std::uint64_t>(texCoords, inlineCount_), weights);
        block->CopySequences(attributes_.texCoords, inlineCount_, nullptr, 0);
        attributes_.block = block;
        inlineCount_ = kInBlock;
        return;
    }

    Block* old = attributes_.block;
    if (texCoords <= old->texCoordCapacity && weights <= old->weightCapacity)
        return;
    Block* block =
        Block::Allocate(GrownCapacity(texCoords, old->texCoordCapacity), GrownCapacity(weights, old->weightCapacity));
    block->CopySequences(old->TexCoords(), old->texCoordCount, old->Weights(), old->weightCount);
    FreeBlock(old);
    attributes_.block = block;
}

/// Returns UV set `index`, after missing sets have been added as (0, 0).
D3DXVECTOR2& Vertex::GrownTexCoord(std::uint64_t index)
{
    CheckLength(index);
    Reserve(index + 1, WeightCount());
    const std::uint64_t count = TexCoordCount();
    D3DXVECTOR2* texCoords = HasBlock() ? attributes_.block->TexCoords() : attributes_.texCoords;
    if (index >= count)
    {
        std::uninitialized_fill(texCoords + count, texCoords + index + 1, D3DXVECTOR2(0, 0));
        if (HasBlock())
            attributes_.block->texCoordCount = index + 1;
        else
            inlineCount_ = static_cast<std::uint32_t>(index + 1);
    }
    return texCoords[index];
}

void Vertex::SetPosition(const float* position)
{
    position_ = D3DXVECTOR3(position);
    SetHashInvalid();
}

void Vertex::SetPosition(const D3DXVECTOR3& position)
{
    position_ = position;
    SetHashInvalid();
}

void Vertex::SetNormal(const float* normal)
{
    normal_ = D3DXVECTOR3(normal);
    SetHashInvalid();
}

D3DXVECTOR2 Vertex::GetTexCoord(int index)
{
    CheckIndex(index, TexCoordCount());
    return TexCoords()[index];
}

std::uint64_t Vertex::GetTexCoordCount() const { return TexCoordCount(); }

void Vertex::TransformTexCoord(const D3DXMATRIX& matrix, std::uint64_t index)
{
    D3DXVECTOR2& texCoord = GrownTexCoord(index);
    D3DXVec2TransformCoord(&texCoord, &texCoord, &matrix);
    SetHashInvalid();
}

void Vertex::Scale(float factor)
{
    position_ = position_ * factor;
    SetHashInvalid();
}

void Vertex::SwapYZ()
{
    std::swap(position_.y, position_.z);
    std::swap(normal_.y, normal_.z);
    SetHashInvalid();
}

void Vertex::InverseZ()
{
    position_.z = -position_.z;
    normal_.z = -normal_.z;
    SetHashInvalid();
}

void Vertex::InverseNormal()
{
    normal_ = -normal_;
    SetHashInvalid();
}

Vertex::Weight Vertex::GetWeight(std::uint64_t index)
{
    return index < WeightCount() ? attributes_.block->Weights()[index] : Weight(0, 0.0F);
}

std::uint64_t Vertex::GetWeightsCount() const { return WeightCount(); }

void Vertex::SetWeight(std::uint32_t joint, float weight, std::uint64_t index)
{
    CheckLength(index);
    Reserve(TexCoordCount(), index + 1);
    Block& block = *attributes_.block;
    Weight* weights = block.Weights();
    if (index >= block.weightCount)
    {
        std::uninitialized_fill(weights + block.weightCount, weights + index + 1, Weight(0, 0.0F));
        block.weightCount = index + 1;
    }
    weights[index] = Weight(joint, weight);
    SetHashInvalid();
}

void Vertex::ClearWeights()
{
    if (HasBlock())
    {
        Block* block = attributes_.block;
        block->weightCount = 0;
        if (block->texCoordCount <= InlineTexCoords)
        {
            CopyBlock(*block);
            FreeBlock(block);
        }
    }
    SetHashInvalid();
}

void Vertex::AddWeight(std::uint32_t joint, float weight)
{
    // Qualified, because this operation is not virtual: an override of SetWeight must not change it.
    Vertex::SetWeight(joint, weight, WeightCount());
}

void Vertex::CalculeteHash()
{
    ContentHash hash;
    const D3DXVECTOR2* texCoords = TexCoords();
    for (std::uint64_t i = 0; i < TexCoordCount(); ++i)
        hash.Add(texCoords[i].x).Add(texCoords[i].y);
    for (std::uint64_t i = 0; i < WeightCount(); ++i)
    {
        const Weight& weight = attributes_.block->Weights()[i];
        static_assert(sizeof(Weight) == 8);
        hash.AddBytes(&weight, sizeof(weight));
    }
    hash.Add(normal_).Add(position_);
    StoreHash(hash.Value());
}

}  // namespace Importing
