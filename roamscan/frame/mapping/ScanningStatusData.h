#pragma once

#include <roamscan/frame/mapping/TimeStamp.h>

namespace mapping
{

/// A change of the scanner's state. Immutable.
class ScanningStatusData
{
public:
    /// @param time the time of the change
    /// @param stationary whether the scanner stands still
    /// @param startNewSubmap whether a new submap starts
    ScanningStatusData(TimeStamp time, bool stationary, bool startNewSubmap)
        : time_(time), stationary_(stationary), startNewSubmap_(startNewSubmap)
    {}

    /// The time of the change.
    [[nodiscard]] TimeStamp const& getTimeStamp() const { return time_; }

    /// Whether the scanner stands still.
    [[nodiscard]] bool const& getStationary() const { return stationary_; }

    /// Whether a new submap starts.
    [[nodiscard]] bool const& getStartNewSubmap() const { return startNewSubmap_; }

private:
    TimeStamp time_;
    bool stationary_;
    bool startNewSubmap_;
};

} // namespace mapping
