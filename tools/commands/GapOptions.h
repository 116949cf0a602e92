#pragma once

#include <optional>
#include <span>
#include <string>

namespace CLI
{
class App;
}

namespace oV::Roamscan::tool
{

/// What a command does between two poses that are far apart in time.
struct GapOptions
{
    std::optional<double> maxGap; ///< The longest step that is interpolated, in seconds.
    bool acrossGaps = false;      ///< Interpolate longer steps too.

    /// The longest step in seconds; by default ten usual steps of these ascending times of poses.
    [[nodiscard]] double longest(std::span<double const> times) const;
};

/// Adds the options --max-gap and --across-gaps.
/// @param items what is left out in gaps: "points"
/// @param verb what is done with them otherwise: "Place"
void addGapOptions(CLI::App& command, GapOptions& options, std::string const& items, std::string const& verb);

/// "longer than 0.100000 s (ten usual steps)"
/// @param isDefault whether the user left the longest gap open
[[nodiscard]] std::string gapText(double longestGap, bool isDefault);

} // namespace oV::Roamscan::tool
