#include "tools/commands/GapOptions.h"

#include "tools/commands/PositiveNumber.h"
#include "tools/console/Text.h"
#include "tools/motion/TrajectoryGaps.h"

#include <CLI/CLI.hpp>

namespace oV::Roamscan::tool
{

double GapOptions::longest(std::span<double const> times) const
{
    return maxGap ? *maxGap : defaultLongestGap(times);
}

void addGapOptions(CLI::App& command, GapOptions& options, std::string const& items, std::string const& verb)
{
    command
        .add_option("--max-gap",
                    options.maxGap,
                    "Leave out " + items + " between two poses that are more seconds apart (ten usual steps)")
        ->check(positiveNumber());
    command.add_flag("--across-gaps", options.acrossGaps, verb + " the " + items + " in longer gaps too");
}

std::string gapText(double longestGap, bool isDefault)
{
    return "longer than " + fixed(longestGap, 6) + " s" + (isDefault ? " (ten usual steps)" : "");
}

} // namespace oV::Roamscan::tool
