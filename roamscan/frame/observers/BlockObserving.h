#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// Switches notification off on the calling thread for a scope: attributes neither announce nor report
/// changes. Scopes nest.
class ROAMSCAN_EXPORT BlockObserving
{
public:
    BlockObserving() noexcept;
    BlockObserving(BlockObserving const&) = delete;
    BlockObserving& operator=(BlockObserving const&) = delete;
    ~BlockObserving();
};

} // namespace oV
