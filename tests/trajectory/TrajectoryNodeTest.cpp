#include "tests/support/Bits.h"

#include <roamscan/trajectory/TrajectoryNode.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>
#include <utility>

namespace
{

using oV::Roamscan::TrafoT;
using oV::Roamscan::TrajectoryNode;
using support::sameBits;

using Matrix = Eigen::Matrix3d;

TrajectoryNode numbered(double first)
{
    return TrajectoryNode(first,
                          TrafoT<double>(Eigen::Vector3d(first + 1, first + 2, first + 3),
                                         Eigen::Quaterniond(first + 4, first + 5, first + 6, first + 7),
                                         false),
                          static_cast<TrajectoryNode::Type>(0xFFFFFFFFU),
                          Matrix::Constant(first + 8),
                          Matrix::Constant(first + 9),
                          false);
}

void expectSameNode(TrajectoryNode const& actual, TrajectoryNode const& expected)
{
    EXPECT_TRUE(sameBits(actual.pose, expected.pose));
    EXPECT_EQ(support::bits(actual.time), support::bits(expected.time));
    EXPECT_EQ(actual.type, expected.type);
    EXPECT_EQ(actual.matrixA, expected.matrixA);
    EXPECT_EQ(actual.matrixB, expected.matrixB);
    EXPECT_EQ(actual.flag, expected.flag);
}

TEST(TrajectoryNode, DefaultHasTheIdentityAtZeroWithZeroMatricesAndItsFlagSet)
{
    TrajectoryNode const node;
    EXPECT_EQ(node.time, 0.0);
    EXPECT_TRUE(sameBits(node.pose, TrafoT<double>::Identity()));
    EXPECT_EQ(node.type, TrajectoryNode::Type::Default);
    EXPECT_EQ(static_cast<unsigned>(node.type), 0U);
    EXPECT_EQ(node.matrixA, Matrix::Zero());
    EXPECT_EQ(node.matrixB, Matrix::Zero());
    EXPECT_TRUE(node.flag);
}

TEST(TrajectoryNode, EachTrailingArgumentHasItsDefault)
{
    EXPECT_EQ(TrajectoryNode(5.0).time, 5.0);
    expectSameNode(TrajectoryNode(5.0, TrafoT<double>::Identity()), TrajectoryNode(5.0));
    expectSameNode(
        TrajectoryNode(5.0, {}, TrajectoryNode::Type::Default, Matrix::Zero(), Matrix::Zero(), true),
        TrajectoryNode(5.0));
}

TEST(TrajectoryNode, ArgumentsReachTheirFields)
{
    TrajectoryNode const node = numbered(100);
    EXPECT_EQ(node.time, 100);
    EXPECT_EQ(node.pose.serialize(), (std::array<double, 7>{101, 102, 103, 104, 105, 106, 107}));
    EXPECT_FALSE(node.pose.valid());
    EXPECT_EQ(static_cast<unsigned>(node.type), 0xFFFFFFFFU);
    EXPECT_EQ(node.matrixA, Matrix::Constant(108));
    EXPECT_EQ(node.matrixB, Matrix::Constant(109));
    EXPECT_FALSE(node.flag);
}

TEST(TrajectoryNode, PoseFieldPrecedesTimeField)
{
    TrajectoryNode const node;
    auto const offsetOf = [&node](auto const& field) {
        return reinterpret_cast<std::byte const*>(&field) - reinterpret_cast<std::byte const*>(&node);
    };
    EXPECT_EQ(offsetOf(node.pose), 0);
    EXPECT_LT(offsetOf(node.pose), offsetOf(node.time));
    EXPECT_LT(offsetOf(node.time), offsetOf(node.type));
    EXPECT_LT(offsetOf(node.type), offsetOf(node.matrixA));
    EXPECT_LT(offsetOf(node.matrixA), offsetOf(node.matrixB));
    EXPECT_LT(offsetOf(node.matrixB), offsetOf(node.flag));
    static_assert(alignof(TrajectoryNode) == 16);
    static_assert(std::is_same_v<std::underlying_type_t<TrajectoryNode::Type>, std::uint32_t>);
}

TEST(TrajectoryNode, CopiesAreMemberWise)
{
    TrajectoryNode const source = numbered(100);
    TrajectoryNode const copy(source);
    expectSameNode(copy, source);
    TrajectoryNode assigned;
    assigned = source;
    expectSameNode(assigned, source);
}

// The moved-from state is part of the contract.
// NOLINTBEGIN(bugprone-use-after-move,performance-move-const-arg)
TEST(TrajectoryNode, MoveConstructionLeavesTheSourceUnchanged)
{
    TrajectoryNode source = numbered(100);
    TrajectoryNode const moved(std::move(source));
    expectSameNode(moved, numbered(100));
    expectSameNode(source, numbered(100));
}
// NOLINTEND(bugprone-use-after-move,performance-move-const-arg)

// The moved-from state is part of the contract.
// NOLINTBEGIN(bugprone-use-after-move,performance-move-const-arg)
TEST(TrajectoryNode, MoveAssignmentExchangesTranslationAndMatricesAndCopiesTheRest)
{
    TrajectoryNode a;
    a.pose = TrafoT<double>(Eigen::Vector3d(1, 2, 3), Eigen::Quaterniond(4, 5, 6, 7), true);
    a.matrixA.setConstant(8);
    a.matrixB.setConstant(9);
    TrajectoryNode b = numbered(100);
    a = std::move(b);
    expectSameNode(a, numbered(100));

    TrajectoryNode expected = numbered(100);
    expected.pose.translation() = Eigen::Vector3d(1, 2, 3);
    expected.matrixA.setConstant(8);
    expected.matrixB.setConstant(9);
    expectSameNode(b, expected);
}
// NOLINTEND(bugprone-use-after-move,performance-move-const-arg)

TEST(TrajectoryNode, MoveAssignmentToItselfChangesNothing)
{
    TrajectoryNode node = numbered(100);
    TrajectoryNode& same = node;
    node = std::move(same);
    expectSameNode(node, numbered(100));
}

} // namespace
