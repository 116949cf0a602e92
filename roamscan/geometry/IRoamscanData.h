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

/// One recorded data set, as a plug-in presents it. A point of the set is named by two indices, whose meaning
/// is the implementation's.
///
/// The order of the virtual operations is part of the binary interface; the reserved ones are never called by
/// this library. Derive from RoamscanDataAdapter to implement the two that matter.
///
/// Nothing here keeps state or locks: getGlobalScanPt() may run on many threads at once if the implementation
/// of getScanPtTime() and getLocalScanPt() allows it.
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

    /// The time of a point in ticks of 10 ns, written through `time`. False, and `time` untouched, if it has
    /// none.
    [[nodiscard]] virtual bool getScanPtTime(int first, int second, int64* time) = 0;

    /// A point in the scanner's own frame, in metres. `parameters` are the caller's, handed on untouched;
    /// they may be null.
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

    /// The direction of gravity in each anchor section: by device, then by integer time. Empty unless
    /// overridden.
    [[nodiscard]] virtual std::map<Device, std::map<int64, Eigen::Matrix<double, 3, 1>>>
    getGravityAxisOfAnchorSections() const;

    /// A place in the table of virtual operations that this library never calls.
    virtual void reserved21() = 0;

    /// A point in the global frame: the local point, moved by the trajectory's pose at the point's time.
    /// Intensity and colour are those of the local point.
    ///
    /// All zero if the point has no time, or if the trajectory does not contain it; the local point is not
    /// asked for then. Callers may rely on a local position of exactly zero, which marks a point without a
    /// measurement, coming back as zero with its intensity and colour: it is not moved and the trajectory is
    /// not sampled.
    ///
    /// What the trajectory's pose function throws passes through.
    [[nodiscard]] ScanPoint
    getGlobalScanPt(int first, int second, Trajectory const& trajectory, double const* parameters);

protected:
    // Not virtual: the table has its 24 entries and no more. Nothing is deleted through this interface.
    ~IRoamscanData();
};

} // namespace oV::Roamscan
