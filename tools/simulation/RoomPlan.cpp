#include "tools/simulation/RoomPlan.h"

#include <string>

namespace oV::Roamscan::tool
{

namespace
{

using Eigen::Vector2d;

constexpr double buildingLength = 24.0;
constexpr double buildingWidth = 14.0;
constexpr double roomHeight = 2.8;
constexpr double doorWidth = 1.1;
constexpr double doorHeight = 2.1;
constexpr double wallThickness = 0.15;
constexpr double wallReflectance = 0.75;

/// A piece of a wall; with `bottom` above 0, there is a passage below it.
void addPiece(Building& building, std::string const& name, Vector2d from, Vector2d to, double bottom)
{
    bool const alongX = from.y() == to.y();
    double const stretch = (to - from).norm();
    UprightBox const box{(from + to) / 2.0,
                         alongX ? Vector2d(stretch, wallThickness) : Vector2d(wallThickness, stretch),
                         0.0,
                         bottom,
                         roomHeight};
    addBox(building, name, box, bottom > 0.0 ? std::optional(bottom) : std::nullopt, wallReflectance);
}

/// A wall along x or y with doors in it, given by their distances from the wall's start in rising order.
void addWall(
    Building& building, std::string const& name, Vector2d from, Vector2d to, std::vector<double> const& doors)
{
    Vector2d const direction = (to - from).normalized();
    Vector2d pieceStart = from;
    for (double const door : doors) {
        Vector2d const left = from + direction * (door - doorWidth / 2.0);
        Vector2d const right = from + direction * (door + doorWidth / 2.0);
        addPiece(building, name, pieceStart, left, 0.0);
        addPiece(building, name + ", above a door", left, right, doorHeight);
        pieceStart = right;
    }
    addPiece(building, name, pieceStart, to, 0.0);
}

void addWalls(Building& building)
{
    constexpr double south = 5.9; // the corridor's two walls
    constexpr double north = 8.1;
    addWall(
        building, "corridor wall, south", {0.0, south}, {buildingLength, south}, {2.55, 5.5, 10.75, 20.55});
    addWall(
        building, "corridor wall, north", {0.0, north}, {buildingLength, north}, {2.55, 13.5, 17.6, 20.55});
    addWall(building, "wall between the south-west rooms", {8.0, 0.0}, {8.0, south}, {});
    addWall(building, "wall between the south-east rooms", {15.5, 0.0}, {15.5, south}, {2.55});
    addWall(building, "wall between the north-west rooms", {7.0, north}, {7.0, buildingWidth}, {2.95});
    addWall(building, "wall between the north-east rooms", {16.0, north}, {16.0, buildingWidth}, {});
}

void addFurniture(Building& building)
{
    constexpr double quarter = 0.7853981633974483; // 45 degrees in radians
    auto const pillar = [&](Vector2d centre, double angle) {
        addBox(building, "pillar", {centre, {0.4, 0.4}, angle, 0.0, roomHeight}, std::nullopt, 0.6);
    };
    pillar({18.6, 4.1}, quarter);
    pillar({11.3, 9.9}, 0.0);
    pillar({20.0, 11.3}, 0.0);
    pillar({4.3, 10.0}, 0.4);

    auto const cupboard = [&](Vector2d centre, Vector2d size, double height) {
        addBox(building, "cupboard", {centre, size, 0.0, 0.0, height}, height, 0.45);
    };
    cupboard({0.25, 4.0}, {0.5, 2.0}, 2.0);
    cupboard({9.2, 0.3}, {1.8, 0.6}, 1.9);
    cupboard({13.4, 5.55}, {1.6, 0.5}, 2.0);
    cupboard({23.7, 3.0}, {0.6, 2.4}, 2.0);
    cupboard({15.65, 12.0}, {0.5, 1.8}, 2.0);
    cupboard({22.5, 13.75}, {2.0, 0.5}, 1.6);
    cupboard({6.0, 13.7}, {1.2, 0.6}, 2.0);
    cupboard({3.9, 3.3}, {1.4, 0.8}, 0.75); // a table to walk around
}

} // namespace

Building roomPlan()
{
    Building building;
    addShell(building, {0.0, 0.0, 0.0}, {buildingLength, buildingWidth, roomHeight});
    addWalls(building);
    addFurniture(building);
    return building;
}

std::vector<Vector2d> roundWalk()
{
    return {
        {8.0, 7.0},   {10.75, 7.0},                             // the corridor, eastwards
        {10.75, 3.5}, {13.5, 2.55},                             // the southern room in the middle
        {18.0, 2.55}, {21.2, 2.0},  {22.2, 3.8},  {20.55, 4.8}, // the south-eastern one, through its door
        {20.55, 9.6}, {22.4, 11.4}, {20.8, 12.8}, {18.6, 12.4},
        {17.6, 11.0},                                          // across the corridor, north-east
        {17.6, 7.0},  {13.5, 7.0},                             // the corridor, westwards
        {13.5, 10.0}, {12.0, 12.2}, {9.5, 11.05},              // the northern room in the middle
        {5.0, 11.05}, {3.4, 12.4},  {1.6, 11.4},  {2.55, 9.4}, // the north-western one, through its door
        {2.55, 4.6},  {1.6, 2.2},   {4.0, 1.4},   {6.4, 2.6},
        {5.5, 4.6}, // across the corridor, south-west
        {5.5, 7.0},
    };
}

} // namespace oV::Roamscan::tool
