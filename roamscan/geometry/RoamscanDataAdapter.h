#pragma once

#include <roamscan/frame/platform/Export.h>
#include <roamscan/geometry/IRoamscanData.h>

namespace oV::Roamscan
{

/// A data set that implements the reserved operations of IRoamscanData with nothing, so that a plug-in writes
/// getScanPtTime() and getLocalScanPt() alone.
class ROAMSCAN_EXPORT RoamscanDataAdapter : public IRoamscanData
{
public:
    RoamscanDataAdapter();
    RoamscanDataAdapter(RoamscanDataAdapter const& other);
    RoamscanDataAdapter(RoamscanDataAdapter&& other) noexcept;
    RoamscanDataAdapter& operator=(RoamscanDataAdapter const& other);
    RoamscanDataAdapter& operator=(RoamscanDataAdapter&& other) noexcept;
    virtual ~RoamscanDataAdapter();

    void reserved1() override;
    void reserved2() override;
    void reserved3() override;
    void reserved4() override;
    void reserved5() override;
    void reserved6() override;
    void reserved7() override;
    void reserved8() override;
    void reserved9() override;
    void reserved10() override;
    void reserved11() override;
    void reserved12() override;
    void reserved13() override;
    void reserved14() override;
    void reserved15() override;
    void reserved16() override;
    void reserved17() override;
    void reserved18() override;
    void reserved19() override;
    void reserved20() override;
    void reserved21() override;
};

} // namespace oV::Roamscan
