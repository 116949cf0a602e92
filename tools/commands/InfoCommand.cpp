#include "tools/commands/InfoCommand.h"

#include "tools/commands/FileReport.h"
#include "tools/commands/SensorInfo.h"
#include "tools/commands/TrajectoryInfo.h"
#include "tools/console/Text.h"
#include "tools/io/RecordingFile.h"

#include <nlohmann/json.hpp>

#include <ostream>
#include <string>
#include <type_traits>

namespace oV::Roamscan::tool
{

namespace
{

using Json = FileReport::Json;

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
    FileReport report(err);
    for (std::filesystem::path const& path : options.files) {
        report.add(path, [&] {
            RecordingFile const recording = readRecordingFile(path);
            if (!options.json) {
                std::visit([&](auto const& file) { print(path, file, out); }, recording);
                return Json();
            }
            return std::visit([&](auto const& file) { return describe(path, file); }, recording);
        });
    }
    if (options.json) {
        report.print(out);
    }
    return report.allRead();
}

} // namespace oV::Roamscan::tool
