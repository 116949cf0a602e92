#pragma once

#include <roamscan/frame/mapping/TimeStamp.h>
#include <roamscan/frame/mapping/Vector3.h>

namespace mapping
{

/// One sample of an inertial measurement unit (IMU). Immutable.
///
/// The recording software defines the units. This library does not interpret them.
class ImuData
{
public:
    /// A sample without a magnetic field.
    /// @warning The acceleration comes before the angular velocity.
    ImuData(TimeStamp time, Vector3<double> linearAcceleration, Vector3<double> angularVelocity)
        : time_(time), linearAcceleration_(linearAcceleration), angularVelocity_(angularVelocity)
    {}

    /// A sample with a magnetic field.
    ImuData(TimeStamp time,
            Vector3<double> linearAcceleration,
            Vector3<double> angularVelocity,
            Vector3<double> magneticField)
        : time_(time),
          linearAcceleration_(linearAcceleration),
          angularVelocity_(angularVelocity),
          magneticField_(magneticField),
          hasMagneticField_(true)
    {}

    /// The time of the sample.
    [[nodiscard]] TimeStamp const& getTimeStamp() const { return time_; }
    /// The linear acceleration.
    [[nodiscard]] Vector3<double> const& getLinearAcceleration() const { return linearAcceleration_; }
    /// The angular velocity.
    [[nodiscard]] Vector3<double> const& getAngularVelocity() const { return angularVelocity_; }

    /// Whether the sample has a magnetic field.
    [[nodiscard]] bool const& hasMagneticField() const { return hasMagneticField_; }

    /// The magnetic field; zero if the sample has none.
    [[nodiscard]] Vector3<double> const& getMagneticField() const { return magneticField_; }

private:
    TimeStamp time_;
    Vector3<double> linearAcceleration_;
    Vector3<double> angularVelocity_;
    Vector3<double> magneticField_;
    bool hasMagneticField_ = false;
};

} // namespace mapping
