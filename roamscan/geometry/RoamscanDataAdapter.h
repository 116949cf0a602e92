#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/geometry/IRoamscanData.h>

namespace oV::Roamscan
{

/// Base class for data sets. It implements the reserved operations of IRoamscanData, so a plug-in only
/// implements getScanPtTime() and getLocalScanPt().
class ROAMSCAN_EXPORT RoamscanDataAdapter : public IRoamscanData
{
public:
    RoamscanDataAdapter();
    RoamscanDataAdapter(RoamscanDataAdapter const& other);
    RoamscanDataAdapter(RoamscanDataAdapter&& other) noexcept;
    RoamscanDataAdapter& operator=(RoamscanDataAdapter const& other);
    RoamscanDataAdapter& operator=(RoamscanDataAdapter&& other) noexcept;
    virtual ~RoamscanDataAdapter();

    void reserved1() override;  ///< Does nothing.
    void reserved2() override;  ///< Does nothing.
    void reserved3() override;  ///< Does nothing.
    void reserved4() override;  ///< Does nothing.
    void reserved5() override;  ///< Does nothing.
    void reserved6() override;  ///< Does nothing.
    void reserved7() override;  ///< Does nothing.
    void reserved8() override;  ///< Does nothing.
    void reserved9() override;  ///< Does nothing.
    void reserved10() override; ///< Does nothing.
    void reserved11() override; ///< Does nothing.
    void reserved12() override; ///< Does nothing.
    void reserved13() override; ///< Does nothing.
    void reserved14() override; ///< Does nothing.
    void reserved15() override; ///< Does nothing.
    void reserved16() override; ///< Does nothing.
    void reserved17() override; ///< Does nothing.
    void reserved18() override; ///< Does nothing.
    void reserved19() override; ///< Does nothing.
    void reserved20() override; ///< Does nothing.
    void reserved21() override; ///< Does nothing.
};

} // namespace oV::Roamscan
