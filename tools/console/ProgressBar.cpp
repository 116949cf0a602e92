#include "tools/console/ProgressBar.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <utility>

#if defined(_WIN32)
#include <io.h>
#else
#include <unistd.h>
#endif

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::uint64_t barWidth = 40;

bool stderrIsTerminal()
{
#if defined(_WIN32)
    return _isatty(_fileno(stderr)) != 0;
#else
    return isatty(STDERR_FILENO) != 0;
#endif
}

} // namespace

ProgressBar::ProgressBar(std::string label, std::uint64_t total)
    : label_(std::move(label)), total_(std::max<std::uint64_t>(total, 1)), shown_(stderrIsTerminal())
{}

ProgressBar::~ProgressBar()
{
    if (shown_) {
        // Blanks instead of an escape sequence, which not every console knows.
        constexpr std::size_t rest = sizeof(" [] 100 %") - 1;
        std::fprintf(stderr, "\r%s\r", std::string(label_.size() + barWidth + rest, ' ').c_str());
        std::fflush(stderr);
    }
}

void ProgressBar::redraw(std::uint64_t done)
{
    std::uint64_t const step = total_ / 100 + 1;
    nextRedraw_ = (done / step + 1) * step;
    double const fraction = std::min(static_cast<double>(done) / static_cast<double>(total_), 1.0);
    auto const filled = static_cast<std::size_t>(fraction * static_cast<double>(barWidth));
    std::string const bar = std::string(filled, '#') + std::string(barWidth - filled, '.');
    std::fprintf(stderr, "\r%s [%s] %3d %%", label_.c_str(), bar.c_str(), static_cast<int>(fraction * 100.0));
    std::fflush(stderr);
}

} // namespace oV::Roamscan::tool
