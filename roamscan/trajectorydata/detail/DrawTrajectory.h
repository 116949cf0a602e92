#pragma once

#include <roamscan/frame/bvbase/BaseNode.h>
#include <roamscan/frame/bvbase/SmartPtr.h>
#include <roamscan/frame/bvbase/String.h>
#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/frame/scene/ObjNames.h>
#include <roamscan/frame/scene/Object.h>
#include <roamscan/frame/scene/Sphere.h>
#include <roamscan/time/TimeConversion.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <Eigen/Core>

#include <variant>

/// @file
/// The scene object that shows a trajectory. The classes of the objects are parameters, so that a test can
/// record the calls.

namespace oV::Roamscan::detail
{

/// The place that all children are added with.
inline constexpr int childPlace = 48;

/// The radius of a marker in metres.
inline constexpr double markerSize = 0.01;

/// A new object, set up.
template <typename T>
Bv_1_1::SmartPtr<T> makeSceneObject()
{
    constexpr auto type = Bv_1_1::BaseNode::CreateType::Fresh;
    Bv_1_1::SmartPtr<T> object(new T(type, nullptr));
    object->init(type, nullptr);
    return object;
}

/// Sets an attribute. The object must have one of that type with the index.
template <typename T>
void setAttribute(Object& object, unsigned int index, T const& value)
{
    std::get<ObjectAttribute<T>*>(object.attribute(index))->assignFrom(&value, nullptr, nullptr);
}

/// The image of the origin. A rotation that is not finite makes it NaN, so the rotation counts.
inline Bv_1_1::Vec3d<double> imageOfOrigin(TrafoT<double> const& pose)
{
    Eigen::Vector3d const image =
        pose.rotation().toRotationMatrix() * Eigen::Vector3d::Zero() + pose.translation();
    return {image.x(), image.y(), image.z()};
}

/// Whether a coordinate is above or below 0. NaN is neither.
inline bool isOffOrigin(Bv_1_1::Vec3d<double> const& point)
{
    auto const isOff = [](double coordinate) { return coordinate > 0.0 || coordinate < 0.0; };
    return isOff(point.x) || isOff(point.y) || isOff(point.z);
}

/// A marker named "Node_" and the node's time in seconds.
template <typename Sphere>
Bv_1_1::SmartPtr<Sphere> makeMarker(Bv_1_1::Vec3d<double> const& point, double time)
{
    auto marker = makeSceneObject<Sphere>();
    setAttribute(*marker, oV::Sphere::positionAttribute, point);
    setAttribute(*marker, oV::Sphere::sizeAttribute, markerSize);
    Bv_1_1::String name(L"Node_");
    name += time;
    marker->setName(name, 0);
    return marker;
}

/// TrajectoryData::lineFromTrajectory() with the classes as parameters. The order of the calls on the objects
/// is part of the interface.
template <typename Transform, typename Line, typename Sphere>
Bv_1_1::SmartPtr<Transform>
drawTrajectory(TrajectoryData const& data, bool withNodes, Bv_1_1::String const& name, Device from, Device to)
{
    auto result = makeSceneObject<Transform>();
    setAttribute(*result, Object::nameAttribute, name);
    auto line = makeSceneObject<Line>();
    setAttribute(*line, Object::nameAttribute, name);
    line->setKey(ObjNames::key(ObjNames::line));

    Trajectory const trajectory = data.buildTrajectoryFromTrajectoryNodes(from, to);
    for (TrajectoryNode const& node : data.nodes) {
        IntegerTime const time = TimeConversion::convertToIntegerTime(node.time);
        if (!trajectory.contains(time)) {
            continue; // the rounding to ticks can move the first or the last node out of the range
        }
        auto const point = imageOfOrigin(trajectory.sample(time));
        if (isOffOrigin(point)) {
            line->appendPoint(point);
        }
        if (withNodes) {
            result->addChild(makeMarker<Sphere>(point, node.time).get(), childPlace);
        }
    }
    result->addChild(line.get(), childPlace);
    return result;
}

} // namespace oV::Roamscan::detail
