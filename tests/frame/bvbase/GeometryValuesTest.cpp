#include <roamscan/frame/bvbase/Mat4d.h>
#include <roamscan/frame/bvbase/SVec2d.h>
#include <roamscan/frame/bvbase/ScanPtColor.h>
#include <roamscan/frame/bvbase/Vec3d.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <type_traits>

namespace
{

using Bv_1_1::Mat4d;
using Bv_1_1::ScanPtColor;
using Bv_1_1::SVec2d;
using Bv_1_1::Vec3d;

using Point = ScanPtColor<Vec3d<float>>;

// A default-initialized object in memory that is not zero.
template <typename T>
T madeInDirtyMemory()
{
    alignas(T) unsigned char memory[sizeof(T)];
    for (unsigned char& byte : memory) {
        byte = 0xAB;
    }
    return *new (memory) T; // without parentheses, which would zero uninitialized members
}

TEST(Vec3d, IsThreeConsecutiveValues)
{
    EXPECT_EQ(sizeof(Vec3d<double>), 3 * sizeof(double));
    EXPECT_EQ(offsetof(Vec3d<double>, x), 0U);
    EXPECT_EQ(offsetof(Vec3d<double>, y), sizeof(double));
    EXPECT_EQ(offsetof(Vec3d<double>, z), 2 * sizeof(double));
    EXPECT_EQ(sizeof(Vec3d<float>), 12U);
}

TEST(Vec3d, IsZeroByDefault)
{
    EXPECT_EQ(madeInDirtyMemory<Vec3d<double>>(), (Vec3d<double>{0, 0, 0}));
    constexpr Vec3d<double> vector{1, 2, 3};
    EXPECT_EQ(vector.x, 1);
    EXPECT_EQ(vector.y, 2);
    EXPECT_EQ(vector.z, 3);
    EXPECT_NE(vector, (Vec3d<double>{1, 2, 4}));
    EXPECT_TRUE(std::is_trivially_copyable_v<Vec3d<double>>);
}

TEST(SVec2d, IsAPair)
{
    constexpr SVec2d<int> pair{1, 2};
    EXPECT_EQ(pair.x, 1);
    EXPECT_EQ(pair.y, 2);
    EXPECT_EQ(sizeof(pair), 2 * sizeof(int));
    EXPECT_NE(pair, (SVec2d<int>{2, 1}));
    EXPECT_EQ(madeInDirtyMemory<SVec2d<int>>(), (SVec2d<int>{0, 0}));
}

TEST(Mat4d, IsSixteenConsecutiveValues)
{
    EXPECT_EQ(sizeof(Mat4d<double>), 16 * sizeof(double));
    EXPECT_EQ(sizeof(Mat4d<float>), 16 * sizeof(float));
    Mat4d<double> matrix;
    EXPECT_EQ(static_cast<void*>(matrix.data()), static_cast<void*>(&matrix));
    for (std::size_t i = 0; i < 16; ++i) {
        matrix[i] = static_cast<double>(i);
    }
    Mat4d<double> const copy = matrix;
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(copy[i], static_cast<double>(i));
        EXPECT_EQ(copy.data()[i], static_cast<double>(i));
    }
    EXPECT_EQ(copy, matrix);
    matrix[15] = 0;
    EXPECT_NE(copy, matrix);
}

TEST(Mat4d, IsZeroByDefaultAndIndexedInStorageOrder)
{
    EXPECT_EQ(madeInDirtyMemory<Mat4d<double>>(), Mat4d<double>{});
    EXPECT_EQ(Mat4d<double>{}[15], 0.0);
    constexpr Mat4d<double> matrix{{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15}};
    EXPECT_EQ(matrix[12], 12.0);
}

TEST(ScanPtColor, IsAPositionAndSixBytes)
{
    EXPECT_EQ(offsetof(Point, position), 0U);
    EXPECT_EQ(offsetof(Point, intensity), 12U);
    EXPECT_EQ(offsetof(Point, r), 14U);
    EXPECT_EQ(offsetof(Point, g), 15U);
    EXPECT_EQ(offsetof(Point, b), 16U);
    EXPECT_EQ(offsetof(Point, a), 17U);
    EXPECT_EQ(sizeof(Point::intensity), 2U);
    EXPECT_EQ(sizeof(Point::r), 1U);
}

TEST(ScanPtColor, ADefaultPointIsAllZero)
{
    auto const point = madeInDirtyMemory<Point>();
    EXPECT_EQ(point.position, (Vec3d<float>{0, 0, 0}));
    EXPECT_EQ(point.intensity, 0);
    EXPECT_EQ(point.r, 0);
    EXPECT_EQ(point.g, 0);
    EXPECT_EQ(point.b, 0);
    EXPECT_EQ(point.a, 0);
}

TEST(ScanPtColor, IsAValue)
{
    Point const point{{1, 2, 3}, 65535, 1, 2, 3, 255};
    Point copy = point;
    EXPECT_EQ(copy, point);
    copy.a = 254;
    EXPECT_NE(copy, point);
}

} // namespace
