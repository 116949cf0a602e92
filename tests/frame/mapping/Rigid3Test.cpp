#include <roamscan/frame/mapping/Rigid3.h>

#include <gtest/gtest.h>

#include <cstring>

namespace
{

TEST(Rigid3, IsSevenConsecutiveValuesWithTheScalarPartLast)
{
    static_assert(sizeof(mapping::Rigid3<float>) == 7 * sizeof(float));
    static_assert(sizeof(mapping::Rigid3<double>) == 7 * sizeof(double));
    mapping::Rigid3<float> const rigid{{1, 2, 3}, {4, 5, 6, 7}};
    float values[7];
    std::memcpy(values, &rigid, sizeof(values));
    for (int i = 0; i < 7; ++i) {
        EXPECT_EQ(values[i], static_cast<float>(i + 1));
    }
}

TEST(Rigid3, IsTheIdentityByDefault)
{
    EXPECT_EQ((mapping::Rigid3<double>{}), (mapping::Rigid3<double>{{0, 0, 0}, {0, 0, 0, 1}}));
}

TEST(Vector3, IsThreeConsecutiveValues)
{
    static_assert(sizeof(mapping::Vector3<double>) == 3 * sizeof(double));
    mapping::Vector3<double> const vector{1, 2, 3};
    EXPECT_EQ(vector.x, 1);
    EXPECT_EQ(vector.y, 2);
    EXPECT_EQ(vector.z, 3);
    EXPECT_EQ((mapping::Vector3<double>{}), (mapping::Vector3<double>{0, 0, 0}));
}

} // namespace
