#include "tools/mounts/MountText.h"

#include "tools/console/Text.h"
#include "tools/console/ToolError.h"
#include "tools/io/NumberText.h"
#include "tools/io/UnitQuaternion.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string_view>

namespace oV::Roamscan::tool
{

namespace
{

constexpr std::int64_t highestDevice = 3;

} // namespace

Mount parseMount(std::string const& text, std::string const& option)
{
    auto const fail = [&](std::string const& why) {
        return ToolError(option + " " + excerpt(text) + ": " + why + "; write " + option +
                         " DEVICE=x,y,z,qw,qx,qy,qz, for example 1=0.1,0,0.25,1,0,0,0");
    };
    std::size_t const sign = text.find('=');
    if (sign == std::string::npos) {
        throw fail("there is no '='");
    }
    std::string_view const whole = text;
    auto const device = parseInteger(trimmed(whole.substr(0, sign)));
    if (!device || *device < 0 || *device > highestDevice) {
        throw fail("the device must be 0, 1, 2 or 3");
    }
    auto const columns = commaColumnsOf(whole.substr(sign + 1));
    std::array<double, 7> v{};
    if (columns.size() != v.size()) {
        throw fail(counted(columns.size(), "number", "numbers") + " instead of 7");
    }
    for (std::size_t i = 0; i < v.size(); ++i) {
        auto const number = parseNumber(columns[i]);
        if (!number) {
            throw fail(excerpt(columns[i]) + " is not a finite number");
        }
        v[i] = *number;
    }
    Eigen::Quaterniond const rotation(v[3], v[4], v[5], v[6]);
    auto const unit = unitQuaternion(rotation);
    if (!unit) {
        throw fail("the norm of the quaternion is " + fixed(rotation.norm(), 4) + " instead of 1");
    }
    return {static_cast<Device>(*device), TrafoT<double>({v[0], v[1], v[2]}, *unit, true)};
}

std::string mountText(Mount const& mount)
{
    std::string text = std::to_string(static_cast<int>(mount.device));
    char separator = '=';
    for (double const number : mount.position.serialize()) {
        text += separator + shortestText(number);
        separator = ',';
    }
    return text;
}

void setMounts(TrajectoryData& data, std::vector<std::string> const& texts, std::string const& option)
{
    std::set<Device> seen;
    for (std::string const& text : texts) {
        Mount const mount = parseMount(text, option);
        if (!seen.insert(mount.device).second) {
            throw ToolError(option + " " + excerpt(text) + ": the device is named twice; name it once");
        }
        data.devicePositions[mount.device] = mount.position;
    }
}

std::vector<Mount> mountsOf(TrajectoryData const& data)
{
    std::vector<Mount> mounts;
    for (auto const& [device, position] : data.devicePositions) {
        mounts.push_back({device, position});
    }
    std::ranges::sort(mounts, {}, &Mount::device);
    return mounts;
}

} // namespace oV::Roamscan::tool
