#include <roamscan/frame/observers/BlockObserving.h>
#include <roamscan/frame/observers/ThreadLocalStorage.h>

namespace oV
{

BlockObserving::BlockObserving() noexcept
{
    ++ThreadLocalStorage::the().makeData().observingBlocks;
}

BlockObserving::~BlockObserving()
{
    --ThreadLocalStorage::the().makeData().observingBlocks;
}

} // namespace oV
