#include "tools/console/ProgressWatch.h"

#include <chrono>
#include <utility>

namespace oV::Roamscan::tool
{

ProgressWatch::ProgressWatch(std::string label, std::uint64_t total, std::function<std::uint64_t()> done)
    : bar_(std::move(label), total), done_(std::move(done)), thread_([this] { watch(); })
{}

ProgressWatch::~ProgressWatch()
{
    {
        std::lock_guard const guard(lock_);
        isOver_ = true;
    }
    ended_.notify_one();
    thread_.join();
}

void ProgressWatch::watch()
{
    constexpr std::chrono::milliseconds pause(100);
    std::unique_lock guard(lock_);
    while (!ended_.wait_for(guard, pause, [this] { return isOver_; })) {
        bar_.advanceTo(done_());
    }
}

} // namespace oV::Roamscan::tool
