#pragma once

#include "tools/console/ProgressBar.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <future>
#include <string>
#include <thread>
#include <utility>

namespace oV::Roamscan::tool
{

/// A progress bar for work that cannot report its progress itself: a thread polls the progress ten times per
/// second until the destructor.
class ProgressWatch
{
public:
    /// @param done returns how much of `total` is done; is called on another thread and must not throw
    ProgressWatch(std::string label, std::uint64_t total, std::function<std::uint64_t()> done)
        : bar_(std::move(label), total), thread_([this, done = std::move(done), ended = ended_.get_future()] {
              while (ended.wait_for(std::chrono::milliseconds(100)) == std::future_status::timeout) {
                  bar_.advanceTo(done());
              }
          })
    {}
    ProgressWatch(ProgressWatch const&) = delete;
    ProgressWatch& operator=(ProgressWatch const&) = delete;
    ~ProgressWatch()
    {
        ended_.set_value();
        thread_.join();
    }

private:
    ProgressBar bar_;
    std::promise<void> ended_;
    std::thread thread_;
};

} // namespace oV::Roamscan::tool
