#pragma once

#include "tools/console/ProgressBar.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>

namespace oV::Roamscan::tool
{

/// A progress bar for work that cannot tell how far it is: as long as this lives, a thread of its own asks
/// for that, several times a second.
class ProgressWatch
{
public:
    /// `done` says how much of `total` is done. It is called on the other thread and must not throw.
    ProgressWatch(std::string label, std::uint64_t total, std::function<std::uint64_t()> done);
    ProgressWatch(ProgressWatch const&) = delete;
    ProgressWatch& operator=(ProgressWatch const&) = delete;
    ~ProgressWatch();

private:
    void watch();

    ProgressBar bar_;
    std::function<std::uint64_t()> done_;
    std::mutex lock_;
    std::condition_variable ended_;
    bool isOver_ = false; // guarded by lock_
    std::thread thread_;
};

} // namespace oV::Roamscan::tool
