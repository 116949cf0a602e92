#pragma once

#include "tools/io/PoseFormat.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace oV::Roamscan::tool
{

/// Adds the option --format with the names of the formats of poses.
inline CLI::Option* addPoseFormat(CLI::App& command, PoseFormat& format, std::string const& help)
{
    std::vector<std::string> names;
    for (auto const& [name, value] : poseFormatNames) {
        names.emplace_back(name);
    }
    auto const assign = [&format](std::string const& text) {
        for (auto const& [name, value] : poseFormatNames) {
            if (name == text) {
                format = value;
            }
        }
    };
    return command.add_option_function<std::string>("--format", assign, help)->check(CLI::IsMember(names));
}

} // namespace oV::Roamscan::tool
