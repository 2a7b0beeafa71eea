#include <importing/records/Joint.h>

#include <importing/base/ForReading.h>
#include <importing/math/SameBits.h>

#include <utility>

namespace Importing
{

Joint::Joint() : Joint(std::string()) {}

Joint::Joint(std::string name) : name_(std::move(name))
{
    D3DXMatrixIdentity(&localTM_);
    D3DXMatrixIdentity(&bindPoseInverse_);
}

Joint::Joint(const Joint&) = default;
Joint::Joint(Joint&&) noexcept = default;
Joint::~Joint() = default;

Joint& Joint::operator=(const Joint& other) = default;

bool Joint::operator==(const Joint& other) const
{
    Joint& that = ForReading(other);
    return name_ == that.GetName() && SameBits(bindPoseInverse_, that.GetBindPoseInverse()) &&
           SameBits(localTM_, that.GetLocalTM()) && animationID_ == that.GetAnimationID();
}

bool Joint::operator!=(const Joint& other) const { return !(*this == other); }

std::string Joint::GetName() { return name_; }

void Joint::SetName(std::string name) { name_ = std::move(name); }

D3DXMATRIX Joint::GetBindPoseInverse() { return bindPoseInverse_; }

void Joint::SetBindPoseInverse(const D3DXMATRIX& matrix) { bindPoseInverse_ = matrix; }

int Joint::GetParentID() const { return parentID_; }

void Joint::SetParentID(int parent) { parentID_ = parent; }

D3DXMATRIX Joint::GetLocalTM() { return localTM_; }

void Joint::SetLocalTM(const D3DXMATRIX& matrix) { localTM_ = matrix; }

int Joint::GetAnimationID() const { return animationID_; }

void Joint::SetAnimationID(int animation) { animationID_ = animation; }

}  // namespace Importing
