#include <importing/records/Node.h>

namespace Importing
{

Node::Node() = default;
Node::Node(const Node&) = default;
Node::Node(Node&&) noexcept = default;
Node& Node::operator=(const Node&) = default;
Node& Node::operator=(Node&&) noexcept = default;
Node::~Node() = default;

std::string Node::GetName() { return name_; }

void Node::SetName(const std::string& name) { name_ = name; }

std::string Node::GetNote() { return note_; }

void Node::SetNote(const std::string& note) { note_ = note; }

Transform Node::GetLocalTransform() { return localTransform_; }

void Node::SetLocalTransform(const Transform& transform) { localTransform_ = transform; }

int Node::GetAnimationID() const { return animationID_; }

void Node::SetAnimationID(int animation) { animationID_ = animation; }

void Node::Release()
{
    name_.clear();
    note_.clear();
    SurfaceList.clear();
    ChildList.clear();
    CameraList.clear();
    LightList.clear();
}

}  // namespace Importing
