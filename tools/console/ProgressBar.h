#pragma once

#include <cstdint>
#include <string>

namespace oV::Roamscan::tool
{

/// A progress bar on stderr, erased at the end. Shows nothing unless stderr is a terminal. Not thread safe.
class ProgressBar
{
public:
    ProgressBar(std::string label, std::uint64_t total);
    ProgressBar(ProgressBar const&) = delete;
    ProgressBar& operator=(ProgressBar const&) = delete;
    ~ProgressBar();

    /// Redraws once per percent, so it is cheap enough to be called for every point.
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
