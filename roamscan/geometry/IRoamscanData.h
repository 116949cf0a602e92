#pragma once

#include <roamscan/frame/bvbase/ScanPtColor.h>
#include <roamscan/frame/bvbase/Vec3d.h>
#include <roamscan/frame/platform/EigenAlignment.h>
#include <roamscan/frame/platform/Export.h>
#include <roamscan/frame/platform/IntegerTypes.h>
#include <roamscan/trajectory/Trajectory.h>
#include <roamscan/trajectorydata/Device.h>

#include <Eigen/Core>

#include <map>

namespace oV::Roamscan
{

/// Interface to one recorded data set, implemented by plug-ins. Two indices identify a point of the set;
/// their meaning is up to the implementation.
///
/// Derive from RoamscanDataAdapter, which implements the reserved operations. The order of the virtual
/// operations is part of the binary interface. This library never calls the reserved ones.
///
/// Thread safety: getGlobalScanPt() may run concurrently if the plug-in's getScanPtTime() and
/// getLocalScanPt() may.
class ROAMSCAN_EXPORT IRoamscanData
{
public:
    /// A scan point: position in metres, intensity, colour.
    using ScanPoint = Bv_1_1::ScanPtColor<Bv_1_1::Vec3d<float>>;

    IRoamscanData();
    IRoamscanData(IRoamscanData const& other);
    IRoamscanData(IRoamscanData&& other) noexcept;
    IRoamscanData& operator=(IRoamscanData const& other);
    IRoamscanData& operator=(IRoamscanData&& other) noexcept;

    virtual void reserved1() = 0; ///< @copybrief reserved21
    virtual void reserved2() = 0; ///< @copybrief reserved21

    /// The time of a point.
    /// @param first,second the point's two indices
    /// @param time receives the time in ticks of 10 ns; not written if the point has none
    /// @return whether the point has a time
    [[nodiscard]] virtual bool getScanPtTime(int first, int second, int64* time) = 0;

    /// A point in the scanner's frame, in metres.
    /// @param first,second the point's two indices
    /// @param parameters passed on by getGlobalScanPt(); may be null. Their meaning is up to the
    ///     implementation.
    [[nodiscard]] virtual ScanPoint getLocalScanPt(int first, int second, double const* parameters) = 0;

    virtual void reserved3() = 0;  ///< @copybrief reserved21
    virtual void reserved4() = 0;  ///< @copybrief reserved21
    virtual void reserved5() = 0;  ///< @copybrief reserved21
    virtual void reserved6() = 0;  ///< @copybrief reserved21
    virtual void reserved7() = 0;  ///< @copybrief reserved21
    virtual void reserved8() = 0;  ///< @copybrief reserved21
    virtual void reserved9() = 0;  ///< @copybrief reserved21
    virtual void reserved10() = 0; ///< @copybrief reserved21
    virtual void reserved11() = 0; ///< @copybrief reserved21
    virtual void reserved12() = 0; ///< @copybrief reserved21
    virtual void reserved13() = 0; ///< @copybrief reserved21
    virtual void reserved14() = 0; ///< @copybrief reserved21
    virtual void reserved15() = 0; ///< @copybrief reserved21
    virtual void reserved16() = 0; ///< @copybrief reserved21
    virtual void reserved17() = 0; ///< @copybrief reserved21
    virtual void reserved18() = 0; ///< @copybrief reserved21
    virtual void reserved19() = 0; ///< @copybrief reserved21
    virtual void reserved20() = 0; ///< @copybrief reserved21

    /// The direction of gravity in each anchor section, by device, then by integer time. The default
    /// implementation returns an empty map.
    [[nodiscard]] virtual std::map<Device, std::map<int64, Eigen::Matrix<double, 3, 1>>>
    getGravityAxisOfAnchorSections() const;

    /// Reserves an entry of the virtual table. This library never calls it.
    virtual void reserved21() = 0;

    /// A point in the global frame: the local point, transformed by the trajectory's pose at the point's
    /// time. Intensity and colour are those of the local point.
    ///
    /// Exceptions of the trajectory's pose function pass through.
    /// @param first,second the point's two indices
    /// @param trajectory its poses transform from the scanner's frame to the global frame
    /// @param parameters passed on to getLocalScanPt() unchanged; may be null
    /// @return the point; all zero if the point has no time or the trajectory does not contain that time.
    ///     getLocalScanPt() is not called then.
    /// @note A local position of exactly zero marks a point without a measurement. It is returned unchanged,
    /// with its intensity and colour, and the trajectory is not sampled.
    [[nodiscard]] ScanPoint
    getGlobalScanPt(int first, int second, Trajectory const& trajectory, double const* parameters);

protected:
    // Not virtual: the virtual table has exactly 24 entries. Objects are not deleted through this interface.
    ~IRoamscanData();
};

} // namespace oV::Roamscan
