#include <brindle/Vyk_Channel.h>
#include <importing/plugin/SceneContainer.h>
#include <importing/records/Transform.h>
#include <importing/records/VertexWeights.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

// The order of the virtual operations of every exported class is part of the interface: users that were built against
// it call through the tables. These tests read the slot of each operation from pointers to members.

#if !defined(_MSC_VER)  // Microsoft's pointers to members contain code addresses, not slots.

namespace
{

using namespace Importing;

constexpr std::size_t kNotVirtual = static_cast<std::size_t>(-1);

/// Returns the slot of a virtual operation, which the Itanium ABI stores in a pointer to member.
template <typename Member>
std::size_t Slot(Member member)
{
    static_assert(std::is_member_function_pointer_v<Member>);
    struct
    {
        std::size_t function;
        std::ptrdiff_t adjustment;
    } parts;
    static_assert(sizeof(parts) == sizeof(member));
    std::memcpy(&parts, &member, sizeof(parts));
#if defined(__arm__) || defined(__aarch64__)
    const bool isVirtual = (parts.adjustment & 1) != 0;
    return isVirtual ? parts.function / sizeof(void*) : kNotVirtual;
#else
    const bool isVirtual = (parts.function & 1U) != 0;
    return isVirtual ? (parts.function - 1) / sizeof(void*) : kNotVirtual;
#endif
}

struct Operation
{
    std::string name;
    std::size_t slot;
};

/// Represents the destructor, to which no pointer exists. It has two slots.
Operation Destructor() { return {"destructor", kNotVirtual}; }

/// A class with one more virtual operation, which comes after all others.
template <typename Record>
class Extended : public Record
{
public:
    virtual void AfterTheLast() {}
};

/// Expects that every operation is at its slot in the list, and that the list is complete.
template <typename Record>
void ExpectSlotOrder(const std::vector<Operation>& operations)
{
    std::size_t slot = 0;
    std::size_t destructors = 0;
    for (const Operation& operation : operations)
    {
        if (operation.name == Destructor().name)
        {
            slot += 2;
            ++destructors;
            continue;
        }
        EXPECT_EQ(operation.slot, slot) << operation.name;
        ++slot;
    }
    EXPECT_EQ(destructors, std::has_virtual_destructor_v<Record> ? 1U : 0U);
    EXPECT_EQ(Slot(&Extended<Record>::AfterTheLast), slot) << "the list lacks operations";
}

/// Makes the protected members of HashObject public.
template <typename Record>
class Opened : public Record
{
public:
    static std::vector<Operation> HashOperations()
    {
        using Comparison = bool (HashObject::*)(HashObject&);
        constexpr Comparison kEqual = &Record::operator==;
        constexpr Comparison kUnequal = &Record::operator!=;
        return {Destructor(),
                {"operator==", Slot(kEqual)},
                {"operator!=", Slot(kUnequal)},
                {"GetHash", Slot(&Opened::GetHash)},
                {"GetIsHashCodeValid", Slot(&Opened::GetIsHashCodeValid)},
                {"SetHashInvalid", Slot(&Opened::SetHashInvalid)},
                {"CalculeteHash", Slot(&Opened::CalculeteHash)}};
    }
};

/// Lists the seven operations of every hashed record, then its own.
template <typename Record>
void ExpectHashedSlotOrder(const std::vector<Operation>& own)
{
    std::vector<Operation> operations = Opened<Record>::HashOperations();
    operations.insert(operations.end(), own.begin(), own.end());
    ExpectSlotOrder<Record>(operations);
}

#define OPERATION(name)           \
    {                             \
#name, Slot(&Class::name) \
    }

/// The twenty operations of the host's base class.
template <typename Class>
std::vector<Operation> ChannelOperations()
{
    return {Destructor(),
            OPERATION(CallChannel),
            OPERATION(OneTimeInitialize),
            OPERATION(DoEvent),
            OPERATION(GetChannelType),
            OPERATION(SaveChannel),
            OPERATION(LoadChannel),
            OPERATION(SetChannelInterfaceType),
            OPERATION(GetChannelFromChannel),
            OPERATION(GetTimeStamp),
            OPERATION(SetTimeStamp),
            OPERATION(DoDependencyInit),
            OPERATION(CheckIndexNrRemoval),
            OPERATION(GetInternalChild),
            OPERATION(CheckPublicChannelInstanceRemoval),
            OPERATION(AddMetaData),
            OPERATION(SetChannelGroup),
            OPERATION(GetFeedbackClass),
            OPERATION(SetContextRenderCountName),
            OPERATION(GetContextRenderCountName)};
}

TEST(SlotOrder, Vyk_Channel) { ExpectSlotOrder<Vyk_Channel>(ChannelOperations<Vyk_Channel>()); }

TEST(SlotOrder, SceneContainer)
{
    using Class = SceneContainer;
    std::vector<Operation> operations = ChannelOperations<Class>();
    const std::vector<Operation> own = {OPERATION(SetStatus),
                                        OPERATION(GetStatus),
                                        OPERATION(SetName),
                                        OPERATION(GetName),
                                        OPERATION(Clear),
                                        OPERATION(SetRootNodeIndex),
                                        OPERATION(GetRootNodeIndex),
                                        OPERATION(MakeNodeNamesUnambiguous),
                                        OPERATION(MakeGeometryNamesUnambiguous),
                                        OPERATION(MakeMaterialNamesUnambiguous),
                                        OPERATION(MakeSurfaceNamesUnambiguous),
                                        OPERATION(CreateSurfaceNames),
                                        OPERATION(FindNodeByName),
                                        OPERATION(FindParentNode),
                                        OPERATION(CalculateGlobalTM),
                                        OPERATION(MoveSurfaces),
                                        OPERATION(MoveCameras),
                                        OPERATION(MoveLights),
                                        OPERATION(FlatHierarchy),
                                        OPERATION(FlatHierarchyInternal),
                                        OPERATION(MergeSurfaces),
                                        OPERATION(EraseNodeFromLibrary),
                                        OPERATION(AddGeometryToLibrary),
                                        OPERATION(EraseGeometryFromLibrary),
                                        OPERATION(AddMaterialToLibrary),
                                        OPERATION(AddTextureToLibrary),
                                        OPERATION(AddAnimationToLibrary),
                                        OPERATION(AddSurfaceToLibrary),
                                        OPERATION(EraseSurfaceFromLibrary),
                                        OPERATION(GetGeometryInstanceCount),
                                        OPERATION(GetMaterialInstanceCount),
                                        OPERATION(GetBoundingBox),
                                        OPERATION(CheckFacesOrientation),
                                        OPERATION(RemoveNegativeScaleMatricies),
                                        OPERATION(ResolveGeomInstances),
                                        OPERATION(AppendSC),
                                        OPERATION(CalculateSurfaceCollisionOffset)};
    operations.insert(operations.end(), own.begin(), own.end());
    ExpectSlotOrder<Class>(operations);
}

TEST(SlotOrder, CreateNewGeometryInLibraryIsNotVirtual)
{
    EXPECT_EQ(Slot(&SceneContainer::CreateNewGeometryInLibrary), kNotVirtual);
}

TEST(SlotOrder, HashObject) { ExpectHashedSlotOrder<HashObject>({}); }

class OpenedTransform : public Transform
{
public:
    static std::vector<Operation> Conversions()
    {
        return {{"Quaterion2Euler", Slot(&OpenedTransform::Quaterion2Euler)},
                {"Euler2Quaterion", Slot(&OpenedTransform::Euler2Quaterion)}};
    }
};

TEST(SlotOrder, TransformHasItsDestructorAfterTheConversions)
{
    using Class = Transform;
    std::vector<Operation> operations = OpenedTransform::Conversions();
    const std::vector<Operation> rest = {
        Destructor(),        OPERATION(GetType),  OPERATION(GetMatrix),    OPERATION(SetMatrix),
        OPERATION(GetEuler), OPERATION(SetEuler), OPERATION(GetQuaterion), OPERATION(SetQuaterion)};
    operations.insert(operations.end(), rest.begin(), rest.end());
    ExpectSlotOrder<Class>(operations);
}

TEST(SlotOrder, Vertex)
{
    using Class = Vertex;
    using FromFloats = void (Class::*)(const float*);
    using FromVector = void (Class::*)(const D3DXVECTOR3&);
    ExpectHashedSlotOrder<Class>(
        {OPERATION(GetPosition),
         {"SetPosition(const float*)", Slot(static_cast<FromFloats>(&Class::SetPosition))},
         {"SetPosition(const D3DXVECTOR3&)", Slot(static_cast<FromVector>(&Class::SetPosition))},
         OPERATION(GetNormal),
         {"SetNormal(const float*)", Slot(static_cast<FromFloats>(&Class::SetNormal))},
         {"SetNormal(const D3DXVECTOR3&)", Slot(static_cast<FromVector>(&Class::SetNormal))},
         OPERATION(GetTexCoord),
         OPERATION(GetTexCoordCount),
         OPERATION(SetTexCoord),
         OPERATION(Transform),
         OPERATION(TransformTexCoord),
         OPERATION(Scale),
         OPERATION(SwapYZ),
         OPERATION(InverseZ),
         OPERATION(InverseNormal),
         OPERATION(NormalizeNormal),
         OPERATION(GetWeight),
         OPERATION(GetWeightsCount),
         OPERATION(SetWeight),
         OPERATION(ClearWeights)});
    EXPECT_EQ(Slot(&Class::AddWeight), kNotVirtual);
}

TEST(SlotOrder, VertexWeights)
{
    using Class = VertexWeights;
    ExpectSlotOrder<Class>({Destructor(),
                            {"operator=", Slot(static_cast<Class& (Class::*)(const Class&)>(&Class::operator=))},
                            OPERATION(operator==),
                            OPERATION(operator!=),
                            OPERATION(GetWeight),
                            OPERATION(SetWeight),
                            OPERATION(SetWeights),
                            OPERATION(GetJoint),
                            OPERATION(SetJoint),
                            OPERATION(SetJoints)});
}

TEST(SlotOrder, Material)
{
    using Class = Material;
    ExpectHashedSlotOrder<Class>({OPERATION(GetName), OPERATION(SetName), OPERATION(GetDiffuse), OPERATION(SetDiffuse),
                                  OPERATION(GetEmissive), OPERATION(SetEmissive), OPERATION(GetSpecular),
                                  OPERATION(SetSpecular), OPERATION(GetSpecularPower), OPERATION(SetSpecularPower),
                                  OPERATION(GetOpacity), OPERATION(SetOpacity)});
}

TEST(SlotOrder, Map)
{
    using Class = Map;
    ExpectHashedSlotOrder<Class>({OPERATION(GetTextureID), OPERATION(SetTextureID), OPERATION(GetType),
                                  OPERATION(SetType), OPERATION(GetUVSetIndex), OPERATION(SetUVSetIndex),
                                  OPERATION(GetMatrix), OPERATION(SetMatrix), OPERATION(GetAmount),
                                  OPERATION(SetAmount)});
}

TEST(SlotOrder, Surface)
{
    using Class = Surface;
    ExpectHashedSlotOrder<Class>({OPERATION(GetGeometryID), OPERATION(SetGeometryID), OPERATION(GetMaterialID),
                                  OPERATION(SetMaterialID), OPERATION(GetName), OPERATION(SetName),
                                  OPERATION(GetCollisionOffset), OPERATION(SetCollisionOffset), OPERATION(GetMap),
                                  OPERATION(IsSameMaterialAndMaps)});
    EXPECT_EQ(Slot(&Class::Release), kNotVirtual);
}

TEST(SlotOrder, Camera)
{
    using Class = Camera;
    ExpectHashedSlotOrder<Class>(
        {OPERATION(GetName), OPERATION(SetName), OPERATION(GetOffsetMatrix), OPERATION(SetOffsetMatrix)});
    const std::vector<Operation> others = {OPERATION(GetFovX), OPERATION(SetFovX),  OPERATION(GetFovY),
                                           OPERATION(SetFovY), OPERATION(GetNearZ), OPERATION(SetNearZ),
                                           OPERATION(GetFarZ), OPERATION(SetFarZ)};
    for (const Operation& operation : others)
        EXPECT_EQ(operation.slot, kNotVirtual) << operation.name;
}

TEST(SlotOrder, Light)
{
    using Class = Light;
    ExpectHashedSlotOrder<Class>({OPERATION(GetName),         OPERATION(SetName),        OPERATION(GetOffsetMatrix),
                                  OPERATION(SetOffsetMatrix), OPERATION(GetDiffuse),     OPERATION(SetDiffuse),
                                  OPERATION(GetAmbient),      OPERATION(SetAmbient),     OPERATION(GetSpecular),
                                  OPERATION(SetSpecular),     OPERATION(GetAttenuation), OPERATION(SetAttenuation),
                                  OPERATION(GetRange),        OPERATION(SetRange),       OPERATION(GetTheta),
                                  OPERATION(SetTheta),        OPERATION(GetPhi),         OPERATION(SetPhi),
                                  OPERATION(GetShadowCast),   OPERATION(SetShadowCast),  OPERATION(GetShadowDensity),
                                  OPERATION(SetShadowDensity)});
    EXPECT_EQ(Slot(&Class::GetType), kNotVirtual);
    EXPECT_EQ(Slot(&Class::SetType), kNotVirtual);
}

TEST(SlotOrder, Node)
{
    using Class = Node;
    ExpectSlotOrder<Class>({Destructor(), OPERATION(GetName), OPERATION(SetName), OPERATION(GetNote),
                            OPERATION(SetNote), OPERATION(GetLocalTransform), OPERATION(SetLocalTransform),
                            OPERATION(GetAnimationID), OPERATION(SetAnimationID), OPERATION(Release)});
}

TEST(SlotOrder, Joint)
{
    using Class = Joint;
    ExpectSlotOrder<Class>({Destructor(),
                            {"operator=", Slot(static_cast<Class& (Class::*)(const Class&)>(&Class::operator=))},
                            OPERATION(operator==),
                            OPERATION(operator!=),
                            OPERATION(GetName),
                            OPERATION(SetName),
                            OPERATION(GetBindPoseInverse),
                            OPERATION(SetBindPoseInverse),
                            OPERATION(GetParentID),
                            OPERATION(SetParentID),
                            OPERATION(GetLocalTM),
                            OPERATION(SetLocalTM),
                            OPERATION(GetAnimationID),
                            OPERATION(SetAnimationID)});
}

TEST(SlotOrder, Key)
{
    using Class = Key;
    ExpectSlotOrder<Class>({Destructor(), OPERATION(operator==), OPERATION(operator!=), OPERATION(GetTime),
                            OPERATION(SetTime), OPERATION(GetPosition), OPERATION(SetPosition), OPERATION(GetScale),
                            OPERATION(SetScale), OPERATION(GetRotation), OPERATION(SetRotation), OPERATION(GetMatrix)});
}

TEST(SlotOrder, Geometry)
{
    using Class = Geometry;
    using Plain = int (Class::*)(const Class&);
    using Carried = int (Class::*)(const Class&, const D3DXMATRIX&);
    ExpectHashedSlotOrder<Class>({OPERATION(GetName),
                                  OPERATION(SetName),
                                  OPERATION(GetPolySize),
                                  OPERATION(SetPolySize),
                                  {"Append", Slot(static_cast<Plain>(&Class::Append))},
                                  {"Append with a matrix", Slot(static_cast<Carried>(&Class::Append))},
                                  OPERATION(Transform),
                                  OPERATION(TransformUVs),
                                  OPERATION(Optimize),
                                  OPERATION(Release),
                                  OPERATION(GetBoundingBox),
                                  OPERATION(FlipNormals),
                                  OPERATION(FlipFaces),
                                  OPERATION(ComputeNormals),
                                  OPERATION(UnifyNormals),
                                  OPERATION(FixFaceCulling),
                                  OPERATION(GenerateUVsPlanarX),
                                  OPERATION(GenerateUVsPlanarY),
                                  OPERATION(GenerateUVsPlanarZ),
                                  OPERATION(GenerateUVsCubic),
                                  OPERATION(GenerateUVsCylindrical),
                                  OPERATION(GenerateUVsSpherical),
                                  OPERATION(GetBindShapeTransform),
                                  OPERATION(SetBindShapeTransform),
                                  OPERATION(ComputePointCacheNormals)});
}

#undef OPERATION

}  // namespace

#endif
