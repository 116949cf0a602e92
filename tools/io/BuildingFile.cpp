#include "tools/io/BuildingFile.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/FileKind.h"
#include "tools/io/InputFile.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <ostream>

namespace oV::Roamscan::tool
{

namespace
{

constexpr char const* formatName = "roamscan building";
constexpr int formatVersion = 1;
constexpr std::uint64_t largestFile = 16U << 20; // bytes
constexpr std::size_t mostSurfaces = 10'000;
constexpr double farthest = 1e7; // metres
constexpr double usualReflectance = 0.5;

nlohmann::ordered_json toJson(Eigen::Vector3d const& v)
{
    return {v.x(), v.y(), v.z()};
}

Eigen::Vector3d vectorFrom(nlohmann::json const& json)
{
    if (!json.is_array() || json.size() != 3) {
        throw ToolError("a vector needs three numbers");
    }
    Eigen::Vector3d v(json[0].get<double>(), json[1].get<double>(), json[2].get<double>());
    if (!(v.cwiseAbs().maxCoeff() <= farthest)) {
        throw ToolError("a coordinate is beyond " + fixed(farthest, 0) + " m");
    }
    return v;
}

Surface surfaceFrom(nlohmann::json const& json)
{
    nlohmann::json const& edges = json.at("edges");
    if (!edges.is_array() || edges.size() != 2) {
        throw ToolError("a surface needs two edges");
    }
    Eigen::Vector3d const a = vectorFrom(edges[0]);
    Eigen::Vector3d const b = vectorFrom(edges[1]);
    if (!(a.norm() > 0.0 && b.norm() > 0.0 && std::abs(a.normalized().dot(b.normalized())) < 1e-6)) {
        throw ToolError("the two edges must have a length and be at a right angle");
    }
    return {json.value("name", ""),
            Rectangle(vectorFrom(json.at("corner")), a, b),
            json.value("reflectance", usualReflectance)};
}

Building buildingFrom(nlohmann::json const& json)
{
    if (json.value("format", "") != formatName || json.value("version", 0) != formatVersion) {
        throw ToolError(std::string("\"format\" must be \"") + formatName + "\" and \"version\" " +
                        std::to_string(formatVersion));
    }
    nlohmann::json const& surfaces = json.at("surfaces");
    if (!surfaces.is_array() || surfaces.empty() || surfaces.size() > mostSurfaces) {
        throw ToolError("\"surfaces\" must hold 1 to " + std::to_string(mostSurfaces) + " surfaces");
    }
    Building building;
    for (std::size_t i = 0; i < surfaces.size(); ++i) {
        try {
            building.surfaces.push_back(surfaceFrom(surfaces[i]));
        } catch (std::exception const& failure) {
            throw ToolError("surface " + std::to_string(i) + ": " + failure.what());
        }
    }
    return building;
}

} // namespace

void writeBuilding(Building const& building, std::ostream& stream)
{
    nlohmann::ordered_json document{{"format", formatName},
                                    {"version", formatVersion},
                                    {"unit", "m"},
                                    {"surfaces", nlohmann::ordered_json::array()}};
    for (Surface const& surface : building.surfaces) {
        Rectangle const& r = surface.rectangle;
        document["surfaces"].push_back({{"name", surface.name},
                                        {"corner", toJson(r.corner())},
                                        {"edges", {toJson(r.edgeA()), toJson(r.edgeB())}},
                                        {"reflectance", surface.reflectance}});
    }
    stream << document.dump(1) << '\n';
}

Building readBuildingFile(std::filesystem::path const& path)
{
    InputFile file = openInput(path);
    if (file.size > largestFile) {
        throw fileError(path, "is larger than 16 MiB; name the building.json that `roamscan simulate` wrote");
    }
    try {
        return buildingFrom(nlohmann::json::parse(file.stream));
    } catch (std::exception const& failure) {
        FileKind const kind = kindOfFile(path);
        if (kind != FileKind::Unknown && kind != FileKind::Building && kind != FileKind::JsonText) {
            throw fileError(path, "this is " + describe(kind));
        }
        throw fileError(path,
                        std::string("is no building: ") + failure.what() +
                            "; name the building.json that `roamscan simulate` wrote");
    }
}

} // namespace oV::Roamscan::tool
