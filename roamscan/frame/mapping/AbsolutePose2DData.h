#pragma once

#include <roamscan/frame/mapping/Rigid3.h>
#include <roamscan/frame/mapping/TimeStamp.h>
#include <roamscan/frame/mapping/Vector3.h>

#include <array>

namespace mapping
{

/// A pose of the scanner from an absolute source, such as a positioning system. Immutable.
///
/// The recording software defines the frame and the units. This library does not interpret them.
class AbsolutePose2DData
{
public:
    /// @param time the time of the sample
    /// @param pose the pose
    /// @param translationUncertainty the three rows of a 3x3 matrix
    /// @param rotationUncertainty the three rows of a 3x3 matrix
    AbsolutePose2DData(TimeStamp time,
                       Rigid3<double> pose,
                       std::array<Vector3<double>, 3> translationUncertainty,
                       std::array<Vector3<double>, 3> rotationUncertainty)
        : time_(time),
          pose_(pose),
          translationUncertainty_(translationUncertainty),
          rotationUncertainty_(rotationUncertainty)
    {}

    /// The time of the sample.
    [[nodiscard]] TimeStamp const& getTimeStamp() const { return time_; }
    /// The pose.
    [[nodiscard]] Rigid3<double> const& getPose() const { return pose_; }
    /// The uncertainty of the translation: the three rows of a 3x3 matrix.
    [[nodiscard]] std::array<Vector3<double>, 3> const& getTranslationUncertainty() const
    {
        return translationUncertainty_;
    }
    /// The uncertainty of the rotation: the three rows of a 3x3 matrix.
    [[nodiscard]] std::array<Vector3<double>, 3> const& getRotationUncertainty() const
    {
        return rotationUncertainty_;
    }

private:
    TimeStamp time_;
    Rigid3<double> pose_;
    std::array<Vector3<double>, 3> translationUncertainty_;
    std::array<Vector3<double>, 3> rotationUncertainty_;
};

} // namespace mapping
