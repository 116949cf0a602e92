#include "tools/io/BuildingFile.h"

#include "tests/tools/support/ToolFixture.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace
{

using namespace oV::Roamscan;
using namespace oV::Roamscan::tool;
using support::failureOf;
using support::ToolFixture;

class BuildingFileTest : public ToolFixture
{
protected:
    [[nodiscard]] std::string refusal(std::string const& json) const
    {
        auto const path = write("building.json", json);
        return failureOf([&] { static_cast<void>(readBuildingFile(path)); });
    }
};

std::string document(std::string const& surfaces)
{
    return R"({"format": "roamscan building", "version": 1, "surfaces": )" + surfaces + "}";
}

std::string surface(std::string const& corner, std::string const& edges)
{
    return document(R"([{"corner": )" + corner + R"(, "edges": )" + edges + "}]");
}

} // namespace

TEST_F(BuildingFileTest, WrittenDataIsReadBack)
{
    Building building;
    building.surfaces.push_back({"wall", Rectangle({0.1, 0.2, 0.3}, {3.0, 4.0, 0.0}, {0.0, 0.0, 2.5}), 0.7});
    building.surfaces.push_back({"floor", Rectangle({0, 0, 0}, {1, 0, 0}, {0, 1, 0}), 0.25});
    std::ostringstream stream;
    writeBuilding(building, stream);
    Building const back = readBuildingFile(write("building.json", stream.str()));
    ASSERT_EQ(back.surfaces.size(), 2U);
    EXPECT_EQ(back.surfaces[0].name, "wall");
    EXPECT_EQ(back.surfaces[0].reflectance, 0.7);
    EXPECT_EQ(back.surfaces[0].rectangle.corner(), Eigen::Vector3d(0.1, 0.2, 0.3));
    EXPECT_LT((back.surfaces[0].rectangle.edgeA() - Eigen::Vector3d(3, 4, 0)).norm(), 1e-12);
    EXPECT_LT((back.surfaces[0].rectangle.edgeB() - Eigen::Vector3d(0, 0, 2.5)).norm(), 1e-12);
    EXPECT_EQ(back.surfaces[1].name, "floor");
}

TEST_F(BuildingFileTest, NameAndReflectanceMayBeLeftOut)
{
    Building const building =
        readBuildingFile(write("building.json", surface("[0,0,0]", "[[1,0,0],[0,2,0]]")));
    ASSERT_EQ(building.surfaces.size(), 1U);
    EXPECT_EQ(building.surfaces[0].reflectance, 0.5);
}

TEST_F(BuildingFileTest, AnInvalidBuildingIsRefused)
{
    for (std::string const& json : {std::string(),
                                    std::string("{"),
                                    std::string("[]"),
                                    std::string("{}"),
                                    std::string(R"({"format": "other", "version": 1, "surfaces": []})"),
                                    std::string(R"({"format": "roamscan building", "version": 2})"),
                                    std::string(R"({"format": "roamscan building", "version": 1})"),
                                    document("[]"),
                                    document("{}"),
                                    document("[1]"),
                                    surface("[0,0]", "[[1,0,0],[0,2,0]]"),
                                    surface("[0,0,\"x\"]", "[[1,0,0],[0,2,0]]"),
                                    surface("[0,0,1e8]", "[[1,0,0],[0,2,0]]"),
                                    surface("[0,0,1e999]", "[[1,0,0],[0,2,0]]"),
                                    surface("[0,0,0]", "[[1,0,0]]"),
                                    surface("[0,0,0]", "[[0,0,0],[0,2,0]]"),
                                    surface("[0,0,0]", "[[1,0,0],[1,1,0]]")})
    {
        std::string const why = refusal(json);
        EXPECT_NE(why.find("building.json: is no building: "), std::string::npos) << json << ": " << why;
    }
}

TEST_F(BuildingFileTest, DeepNestingIsRefusedWithoutACrash)
{
    EXPECT_NE(refusal(std::string(1'000'000, '[')), "");
    EXPECT_NE(refusal(std::string(1'000'000, '[') + std::string(1'000'000, ']')), "");
}

TEST_F(BuildingFileTest, TheSurfaceAtFaultIsNamed)
{
    std::string const good = R"({"corner": [0,0,0], "edges": [[1,0,0],[0,1,0]]})";
    EXPECT_NE(refusal(document("[" + good + ", {}]")).find("surface 1: "), std::string::npos);
}
