#include <pipeline/scene/Hierarchy.h>

#include <gtest/gtest.h>
#include <support/SceneText.h>

#include <stdexcept>

namespace
{

using Importing::SceneContainer;
using namespace Pipeline;
using Support::Scene;

TEST(Hierarchy, ParentsPrecedeChildrenAndSiblingsKeepTheirOrder)
{
    SceneContainer scene = Scene("Root( A( B C ) D ) | Lost");
    const NodeWalk walk = Pipeline::WalkFromRoot(scene);
    EXPECT_EQ(walk.order, (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(walk.parent, (std::vector<int>{-1, 0, 1, 1, 0, -1}));
}

TEST(Hierarchy, WithoutARootNothingIsReached)
{
    SceneContainer scene = Scene("Root( A )");
    scene.SetRootNodeIndex(-1);
    EXPECT_TRUE(Pipeline::WalkFromRoot(scene).order.empty());
    scene.SetRootNodeIndex(2);
    EXPECT_TRUE(Pipeline::WalkFromRoot(scene).order.empty());
}

TEST(Hierarchy, ACycleEndsTheWalk)
{
    SceneContainer scene = Scene("Root( A( B( &A ) ) )");
    EXPECT_EQ(Pipeline::WalkFromRoot(scene).order, (std::vector<int>{0, 1, 2}));
}

TEST(Hierarchy, ABadChildIndexThrows)
{
    SceneContainer scene = Scene("Root( A )");
    scene.NodeLibrary[1].ChildList.push_back(2);
    EXPECT_THROW(Pipeline::WalkFromRoot(scene), std::out_of_range);
}

TEST(Hierarchy, DepthDoesNotMatter)
{
    SceneContainer scene;
    scene.NodeLibrary.resize(200000);
    for (int i = 0; i + 1 < 200000; ++i)
        scene.NodeLibrary[static_cast<std::size_t>(i)].ChildList.push_back(i + 1);
    scene.SetRootNodeIndex(0);
    EXPECT_EQ(Pipeline::WalkFromRoot(scene).order.size(), 200000U);
}

TEST(Hierarchy, MatricesAreInTheSpaceOfTheRoot)
{
    SceneContainer scene = Scene("Root@9,9,9( A@1,0,0( B@0,2,0 ) )");
    const std::vector<D3DXMATRIX> matrices = Pipeline::MatricesInRootFrame(scene, Pipeline::WalkFromRoot(scene));
    EXPECT_EQ(matrices[0]._41, 0);
    EXPECT_EQ(matrices[1]._41, 1);
    EXPECT_EQ(matrices[2]._41, 1);
    EXPECT_EQ(matrices[2]._42, 2);
}

TEST(Hierarchy, MirroringIsAnOddNumberOfNegativeScales)
{
    EXPECT_FALSE(Pipeline::IsMirroring(Support::Scaling(1, 2, 3)));
    EXPECT_TRUE(Pipeline::IsMirroring(Support::Scaling(1, -2, 3)));
    EXPECT_FALSE(Pipeline::IsMirroring(Support::Scaling(-1, -2, 3)));
    EXPECT_TRUE(Pipeline::IsMirroring(Support::Scaling(-1, -2, -3)));
    EXPECT_TRUE(Pipeline::IsMirroring(Support::Scaling(1e-15F, -1e-15F, 1e-15F)));
}

TEST(Hierarchy, ASingularMatrixDoesNotMirror)
{
    D3DXMATRIX flat = {1, 2, 3, 0, 4, 5, 6, 0,
                       7, 8, 9, 0, 0, 0, 0, 1};  // the third row is twice the second less the first
    EXPECT_FALSE(IsMirroring(flat));
    flat._33 -= 1e-6F;
    EXPECT_FALSE(IsMirroring(flat));
    flat._33 += 0.01F;
    EXPECT_TRUE(IsMirroring(flat));
}

TEST(Hierarchy, WorldMatricesIncludeThatOfTheRoot)
{
    SceneContainer scene = Scene("Root@5,0,0( A@0,1,0( B@0,0,2 ) )");
    const std::vector<D3DXMATRIX> world = WorldMatricesOf(scene, WalkFromRoot(scene));
    EXPECT_EQ(world[0]._41, 5);
    EXPECT_EQ(world[2]._41, 5);
    EXPECT_EQ(world[2]._42, 1);
    EXPECT_EQ(world[2]._43, 2);
    SceneContainer empty;
    EXPECT_TRUE(WorldMatricesOf(empty, WalkFromRoot(empty)).empty());
}

TEST(Hierarchy, ScaleRotationAndMirroringDoNotShear)
{
    EXPECT_TRUE(IsShearFree(Support::Scaling(-1, 2, 3)));
    const D3DXMATRIX turn = {1, 0, 0, 0, 0, 0.8F, 0.6F, 0, 0, -0.6F, 0.8F, 0, 0, 0, 0, 1};
    EXPECT_TRUE(IsShearFree(Product(Support::Scaling(1, 5, 1), turn)));
    EXPECT_FALSE(IsShearFree(Product(turn, Support::Scaling(1, 5, 1))));
    EXPECT_FALSE(IsShearFree(Support::Scaling(0, 1, 1)));
}

TEST(Hierarchy, RecognizesTheIdentity)
{
    EXPECT_TRUE(IsIdentity(Support::Translation(0, 0, 0)));
    EXPECT_FALSE(IsIdentity(Support::Translation(0, 1e-30F, 0)));
}

TEST(Hierarchy, AMatrixTimesItsInverseIsTheIdentity)
{
    const D3DXMATRIX matrix = {0, 2, 0, 0, -1, 0, 0, 0, 0, 0.5F, -4, 0, 3, 5, 7, 1};
    const std::optional<D3DXMATRIX> inverse = InverseOf(matrix);
    ASSERT_TRUE(inverse);
    const D3DXMATRIX product = Product(matrix, *inverse);
    for (unsigned row = 0; row < 4; ++row)
    {
        for (unsigned column = 0; column < 4; ++column)
            EXPECT_FLOAT_EQ(product(row, column), row == column ? 1 : 0);
    }
    EXPECT_FALSE(InverseOf(Support::Scaling(1, 0, 1)));
}

}  // namespace
