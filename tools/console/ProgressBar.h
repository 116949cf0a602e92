#pragma once

#include <cstdint>
#include <string>

namespace oV::Roamscan::tool
{

/// A bar on stderr for work that takes a while. Shows nothing unless stderr is a terminal, and wipes itself
/// away at the end. For one thread.
class ProgressBar
{
public:
    ProgressBar(std::string label, std::uint64_t total);
    ProgressBar(ProgressBar const&) = delete;
    ProgressBar& operator=(ProgressBar const&) = delete;
    ~ProgressBar();

    /// Cheap enough to call for every point: redraws only where a percent is gained.
    void advanceTo(std::uint64_t done)
    {
        if (shown_ && done >= nextRedraw_) {
            redraw(done);
        }
    }

private:
    void redraw(std::uint64_t done);

    std::string label_;
    std::uint64_t total_;
    std::uint64_t nextRedraw_ = 0;
    bool shown_;
};

} // namespace oV::Roamscan::tool
