#pragma once

#include <roamscan/sensors/SensorData.h>
#include <roamscan/trajectorydata/TrajectoryData.h>

#include <string>
#include <vector>

/// Which device of a trajectory is a rangefinder of a sensor stream? The stream has the pose of the
/// rangefinder on the instrument; the trajectory has the positions of the devices. They are equal if the
/// origins are within a millimetre and the rotations within a milliradian, because the poses in a sensor
/// stream are floats and either may come from a calibration sheet.
namespace oV::Roamscan::tool
{

/// The devices whose position equals the pose of the rangefinder, in order; none if the stream has no pose of
/// the rangefinder.
[[nodiscard]] std::vector<Device> devicesOfRangefinder(TrajectoryData const& trajectory,
                                                       SensorData const& sensors,
                                                       std::string const& rangefinder);

/// "device 1", "devices 1 and 2"
[[nodiscard]] std::string namesOf(std::vector<Device> const& devices);

/// A warning, in one line, that the points of the rangefinder are placed with the position of another device;
/// empty if the position of `device` equals the pose of the rangefinder, or either is unknown.
[[nodiscard]] std::string mountWarning(TrajectoryData const& trajectory,
                                       Device device,
                                       SensorData const& sensors,
                                       std::string const& rangefinder);

} // namespace oV::Roamscan::tool
