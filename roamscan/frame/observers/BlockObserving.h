#pragma once

#include <roamscan/frame/platform/Export.h>

namespace oV
{

/// A scope guard that switches notification off on the calling thread: attributes notify observers neither
/// before nor after a change. Scopes may be nested.
class ROAMSCAN_EXPORT BlockObserving
{
public:
    BlockObserving() noexcept;
    BlockObserving(BlockObserving const&) = delete;
    BlockObserving& operator=(BlockObserving const&) = delete;
    ~BlockObserving();
};

} // namespace oV
