#include "tools/commands/InfoCommand.h"

#include "tools/commands/SensorInfo.h"
#include "tools/commands/TrajectoryInfo.h"
#include "tools/console/Text.h"
#include "tools/io/RecordingFile.h"

#include <nlohmann/json.hpp>

#include <exception>
#include <ostream>
#include <string>
#include <type_traits>

namespace oV::Roamscan::tool
{

namespace
{

using Json = nlohmann::ordered_json;

template <typename Store>
constexpr char const* kindOf(FrameFile<Store> const& /*file*/)
{
    return std::is_same_v<Store, TrajectoryData> ? "trajectory" : "sensor";
}

template <typename Store>
Json describe(std::filesystem::path const& path, FrameFile<Store> const& file)
{
    Json json{{"file", path.string()}, {"kind", kindOf(file)}};
    json.update(toJson(*file.data));
    json["bytesBehind"] = file.bytesBehind;
    return json;
}

template <typename Store>
void print(std::filesystem::path const& path, FrameFile<Store> const& file, std::ostream& out)
{
    out << oneLine(path.string()) << ": " << kindOf(file) << " stream\n";
    printText(*file.data, out);
    if (file.bytesBehind > 0) {
        out << "  " << file.bytesBehind << " bytes follow the first frame\n";
    }
}

} // namespace

bool runInfo(InfoOptions const& options, std::ostream& out, std::ostream& err)
{
    bool allRead = true;
    Json document = Json::array();
    for (std::filesystem::path const& path : options.files) {
        try {
            RecordingFile const recording = readRecordingFile(path);
            if (options.json) {
                document.push_back(
                    std::visit([&](auto const& file) { return describe(path, file); }, recording));
            } else {
                std::visit([&](auto const& file) { print(path, file, out); }, recording);
            }
        } catch (std::exception const& failure) {
            allRead = false;
            err << "roamscan: " << oneLine(failure.what()) << '\n';
            document.push_back({{"file", path.string()}, {"error", failure.what()}});
        }
    }
    if (options.json) {
        // Names need not be UTF-8.
        out << document.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
    }
    return allRead;
}

} // namespace oV::Roamscan::tool
