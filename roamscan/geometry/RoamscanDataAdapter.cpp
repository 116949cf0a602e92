#include <roamscan/geometry/RoamscanDataAdapter.h>

namespace oV::Roamscan
{

RoamscanDataAdapter::RoamscanDataAdapter() = default;
RoamscanDataAdapter::RoamscanDataAdapter(RoamscanDataAdapter const& other) = default;
RoamscanDataAdapter::RoamscanDataAdapter(RoamscanDataAdapter&& other) noexcept = default;
RoamscanDataAdapter& RoamscanDataAdapter::operator=(RoamscanDataAdapter const& other) = default;
RoamscanDataAdapter& RoamscanDataAdapter::operator=(RoamscanDataAdapter&& other) noexcept = default;
RoamscanDataAdapter::~RoamscanDataAdapter() = default;

void RoamscanDataAdapter::reserved1() {}
void RoamscanDataAdapter::reserved2() {}
void RoamscanDataAdapter::reserved3() {}
void RoamscanDataAdapter::reserved4() {}
void RoamscanDataAdapter::reserved5() {}
void RoamscanDataAdapter::reserved6() {}
void RoamscanDataAdapter::reserved7() {}
void RoamscanDataAdapter::reserved8() {}
void RoamscanDataAdapter::reserved9() {}
void RoamscanDataAdapter::reserved10() {}
void RoamscanDataAdapter::reserved11() {}
void RoamscanDataAdapter::reserved12() {}
void RoamscanDataAdapter::reserved13() {}
void RoamscanDataAdapter::reserved14() {}
void RoamscanDataAdapter::reserved15() {}
void RoamscanDataAdapter::reserved16() {}
void RoamscanDataAdapter::reserved17() {}
void RoamscanDataAdapter::reserved18() {}
void RoamscanDataAdapter::reserved19() {}
void RoamscanDataAdapter::reserved20() {}
void RoamscanDataAdapter::reserved21() {}

} // namespace oV::Roamscan
