#pragma once

#include "tools/console/ProgressBar.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <stop_token>
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
        : bar_(std::move(label), total),
          thread_([this, done = std::move(done)](std::stop_token const& ended) {
              std::mutex mutex;
              std::unique_lock lock(mutex);
              std::condition_variable_any never;
              while (!never.wait_for(
                  lock, ended, std::chrono::milliseconds(100), [&] { return ended.stop_requested(); })) {
                  bar_.advanceTo(done());
              }
          })
    {}

private:
    ProgressBar bar_;
    std::jthread thread_; // is stopped and joined by its destructor
};

} // namespace oV::Roamscan::tool
